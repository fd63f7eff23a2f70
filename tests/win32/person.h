// A person in front of native windows: clicks and types on the real controls, answers boxes and menus.
#pragma once

#include <string>

#include "walks/walk.h"
#include "walks/watcher.h"
#include "win32/hand.h"
#include "win32/win32_toolkit.h"

namespace tessel::test {

class Person : public Watcher {
 public:
  explicit Person(Walk walk);
  ~Person();

  // From here on windows are acted on as soon as they wait for the user.
  void SitDown(win32::Win32Toolkit& toolkit) { toolkit_ = &toolkit; }
  void GetUp() { toolkit_ = nullptr; }
  [[nodiscard]] std::string TakeTranscript() { return std::exchange(seen_, {}) + scribe.TakeTranscript(); }

 private:
  void Tick();
  void ActOnPage(const std::shared_ptr<Window>& window);
  void ActOnBox(HWND box);
  void ActOnMenu();
  void Perform(const Step& step, Window& window);
  void GiveUp(const std::string& reason);

  Walk walk_;
  win32::Win32Toolkit* toolkit_ = nullptr;
  std::string seen_;
  bool gaveUp_ = false;
  Ticks ticks_;
};

// What a window shows otherwise than its model has it, one line a control; empty when all is alike.
[[nodiscard]] std::string DifferencesOf(const win32::Win32Toolkit& toolkit, const Window& window);

}  // namespace tessel::test
