// Port of the window toolkit: shows windows modally, shows message boxes, pumps events.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "toolkit/geometry.h"

namespace tessel {

class Window;
struct PopupMenu;
enum class CloseReason;

enum class MessageIcon { kNone, kInformation, kExclamation, kCritical };
enum class MessageButtons { kOk, kYesNo };
enum class MessageAnswer { kOk, kYes, kNo };

struct MessageRequest {
  std::string text;
  std::string title;  // empty: the toolkit shows the program's title
  MessageIcon icon = MessageIcon::kNone;
  MessageButtons buttons = MessageButtons::kOk;
};

// Title of boxes that have none of their own.
inline constexpr const char* kDefaultMessageTitle = "prjTessel";

// Positions and sizes are twips (geometry.h), texts UTF-8. Every call comes on the thread of the windows, and
// the events of the models are raised on it, too. Events may call the toolkit, so calls nest. What an event
// throws goes to whoever runs the events: ShowModal or PumpEvents.
class Toolkit {
 public:
  virtual ~Toolkit() = default;

  // Shows a window modally: places it when it has no position yet, makes it visible, raises OnActivate, and
  // returns when it was hidden or unloaded. Shows nest; hiding a window ends every pending show of it, each
  // returning in its turn. The toolkit keeps the window alive until its last show has returned. An exception
  // from an event of the window ends this show, hides the window and goes to the caller. Nothing is shown and
  // an error thrown: 5 for a window that was unloaded, 28 when too many shows are pending.
  virtual void ShowModal(const std::shared_ptr<Window>& window) = 0;
  // False when the next ShowModal would be refused with error 28, since the thread's stack would not bear it.
  // Whoever hides a window to show another asks this first and stays where he is.
  [[nodiscard]] virtual bool CanShowMore() const = 0;
  // Nothing happens to a window that is not shown.
  virtual void Hide(Window& window) = 0;
  // Asks OnQueryClose; when it is not refused, raises OnUnload, hides the window for good and returns true.
  // False: refused, the window is as it was. True at once for a window that is already unloaded.
  virtual bool Unload(Window& window, CloseReason reason) = 0;
  // Puts a visible window above all others.
  virtual void BringToTop(Window& window) = 0;
  // Shows a popup menu at the pointer and runs the chosen item; returns after that, or when the menu was
  // closed without a choice.
  virtual void OpenPopupMenu(Window& window, const PopupMenu& menu) = 0;

  // Shows a box above the window that is on top. What was answered; a box closed without an answer counts as
  // OK, or as No where that is offered.
  virtual MessageAnswer ShowMessage(const MessageRequest& request) = 0;

  // Lets the window events run that wait, without waiting for others.
  virtual void PumpEvents() = 0;
  // Draws at once what has changed about a visible window.
  virtual void Redraw(Window& window) = 0;
  // Gives the person the time to see what has changed. Ends after the given time, or as soon as everything is
  // drawn. Windows are drawn and moved meanwhile, clicks and keys wait: whoever pauses is in the middle of
  // work.
  virtual void Pause(std::chrono::milliseconds atMost) = 0;
};

}  // namespace tessel
