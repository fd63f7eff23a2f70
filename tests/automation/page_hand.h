// A hand that works the add-on's pages by what is written on their buttons, in this process or in another.
#pragma once

#include <deque>
#include <string>

#include "win32/api.h"

namespace tessel::test {

// Steps, done one after the other as soon as their page is there:
//   a caption   presses the button or the check box that reads so
//   {ENTER}     the Enter key
//   {BOX}       the first button of a message box
//   {BOXES}     the same for all that come; nothing comes behind it
enum class Reach { kThisThread, kEveryProcess };

class PageHand {
 public:
  PageHand(std::deque<std::wstring> steps, Reach reach) : steps_(std::move(steps)), reach_(reach) {}

  // Does the next step if it can be done now, and again as long as nothing comes of it: a page that works
  // ignores its buttons.
  void Try();
  [[nodiscard]] bool IsDone() const { return steps_.empty(); }
  [[nodiscard]] const std::deque<std::wstring>& Left() const { return steps_; }

 private:
  // Whether what was pressed has had its effect.
  [[nodiscard]] bool HasWorked() const;

  std::deque<std::wstring> steps_;
  Reach reach_;
  HWND pressed_ = nullptr;
  ULONGLONG pressedAt_ = 0;
};

}  // namespace tessel::test
