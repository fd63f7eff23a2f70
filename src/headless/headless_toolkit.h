// The toolkit without a screen: a driver takes the place of the person.
#pragma once

#include <list>
#include <memory>
#include <string_view>
#include <vector>

#include "headless/driver.h"
#include "toolkit/toolkit.h"
#include "toolkit/window.h"

namespace tessel {

class HeadlessToolkit : public Toolkit {
 public:
  // The screen that windows are centred on, in twips.
  static constexpr Size kScreen{28800, 16200};
  // Modal shows that may nest before the next is refused with error 28 (out of stack space).
  static constexpr std::size_t kDeepestNesting = 500;

  explicit HeadlessToolkit(Driver& driver) : driver_(driver) {}

  // Error 5 for a window that was unloaded. An exception from an event of the window ends this show, hides
  // the window and goes to the caller.
  void ShowModal(const std::shared_ptr<Window>& window) override;
  void Hide(Window& window) override;
  bool Unload(Window& window, CloseReason reason) override;
  void BringToTop(Window& window) override;
  void OpenPopupMenu(Window& window, const PopupMenu& menu) override;
  MessageAnswer ShowMessage(const MessageRequest& request) override;
  void PumpEvents() override;
  void Redraw(Window& window) override;

  // The window that a person can use: that of the innermost show still pending. Null when there is none.
  [[nodiscard]] std::shared_ptr<Window> TopWindow() const;
  // The newest window of a name among those that were shown and still live; null when there is none.
  [[nodiscard]] std::shared_ptr<Window> FindWindow(std::string_view name) const;
  // Visible windows, the one on top last.
  [[nodiscard]] std::vector<std::shared_ptr<Window>> VisibleWindows() const;

  // Closes the window on top as the system does when it shuts down; a refusal does not hold it up.
  void CloseForShutdown();

 private:
  struct Show {
    std::shared_ptr<Window> window;
    bool ended = false;
  };
  class ShowScope;

  void Remember(const std::shared_ptr<Window>& window);
  void Discard(Window& window);

  Driver& driver_;
  std::list<Show> shows_;  // outermost first
  std::vector<std::weak_ptr<Window>> known_;
};

}  // namespace tessel
