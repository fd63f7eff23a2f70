// Port of the window toolkit: shows windows modally, shows message boxes, pumps events.
#pragma once

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

class Toolkit {
 public:
  virtual ~Toolkit() = default;

  // Shows a window modally: places it when it has no position yet, makes it visible, raises OnActivate, and
  // returns when it was hidden or unloaded. Shows nest; hiding a window ends every pending show of it, each
  // returning in its turn. The toolkit keeps the window alive until its last show has returned.
  virtual void ShowModal(const std::shared_ptr<Window>& window) = 0;
  virtual void Hide(Window& window) = 0;
  // Asks OnQueryClose; when it is not refused, raises OnUnload, hides the window for good and returns true.
  virtual bool Unload(Window& window, CloseReason reason) = 0;
  virtual void BringToTop(Window& window) = 0;
  // Shows a popup menu at the pointer and runs the chosen item.
  virtual void OpenPopupMenu(Window& window, const PopupMenu& menu) = 0;

  virtual MessageAnswer ShowMessage(const MessageRequest& request) = 0;

  // Lets waiting window events run.
  virtual void PumpEvents() = 0;
  virtual void Redraw(Window& window) = 0;
};

}  // namespace tessel
