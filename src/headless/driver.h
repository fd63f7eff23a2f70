// Port of whoever sits in front of a headless toolkit: acts on the windows, answers boxes, menus and host
// dialogs, and is told what a person would see. By default host dialogs are answered as nobody were there.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "embedded/dialogs/host_dialogs.h"
#include "toolkit/toolkit.h"
#include "toolkit/window.h"

namespace tessel {

class HeadlessToolkit;

class Driver : public embedded::UnattendedDialogs {
 public:
  // Performs one user action on the window on top. Called until that window was hidden, so a driver that has
  // nothing more to do closes it with HeadlessToolkit::CloseForShutdown.
  virtual void Act(HeadlessToolkit& toolkit) = 0;
  // One of the answers that the request's buttons offer.
  [[nodiscard]] virtual MessageAnswer Answer(const MessageRequest& request) = 0;
  // Position of the chosen item; -1 closes the menu without a choice.
  [[nodiscard]] virtual int ChooseMenuItem(const Window& window, const PopupMenu& menu);

  virtual void WindowShown(const Window& window);
  virtual void WindowHidden(const Window& window);
  virtual void WindowRedrawn(const Window& window);
  // The program lets window events run in the middle of its work: the chance to act while it is busy.
  virtual void EventsPumped(HeadlessToolkit& toolkit);
  // The program gives the person the time to look; nobody waits for it to pass.
  virtual void Paused(std::chrono::milliseconds atMost);
  // A program was started; id 0 when it could not be.
  virtual void ProcessStarted(const std::string& program, const std::vector<std::string>& arguments,
                              std::int32_t processId);
};

// What a person who wants no harm answers: OK where that is all there is, otherwise No.
[[nodiscard]] MessageAnswer SafeAnswer(const MessageRequest& request);

}  // namespace tessel
