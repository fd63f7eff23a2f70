// What every toolkit shares: the stack of windows shown one from another, the hiding and unloading of
// windows, and the limit of the nesting. An adapter derives from it and draws, waits and conceals. Everything
// happens on the thread of the windows.
#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <vector>

#include "toolkit/toolkit.h"
#include "toolkit/window.h"

namespace tessel {

class ModalToolkit : public Toolkit {
 public:
  void ShowModal(const std::shared_ptr<Window>& window) override;
  [[nodiscard]] bool CanShowMore() const override { return shows_.size() < deepestNesting_; }
  void Hide(Window& window) override;
  bool Unload(Window& window, CloseReason reason) override;

  // The window that a person can use: that of the innermost show still pending. Null when there is none.
  [[nodiscard]] std::shared_ptr<Window> TopWindow() const;
  // Windows with a pending show, each once, the one on top last.
  [[nodiscard]] std::vector<std::shared_ptr<Window>> VisibleWindows() const;
  // Closes the window on top as the system does when it shuts down: the window is asked, but its refusal does
  // not hold it up. Nothing happens when no window is shown.
  void CloseForShutdown();

 protected:
  // Shows that may be pending at a time. Each has its place on the thread's stack, also that of a hidden
  // window which waits for those above it, so all of them count.
  explicit ModalToolkit(std::size_t deepestNesting) : deepestNesting_(deepestNesting) {}

  // The steps of a show, in this order. Before the first: makes what is drawn, and places the window when it
  // has no place yet.
  virtual void Prepare(const std::shared_ptr<Window>& window) = 0;
  // The window became visible in the model, its activation comes next.
  virtual void BecameVisible(Window&) {}
  // It was activated, and is still to be seen.
  virtual void Appear(Window&) {}
  // Lets the person act, once or until Wake is called for the window; called anew until its show has ended.
  // What it throws ends the show.
  virtual void Wait(Window& window) = 0;

  // A show of the window has ended while it waits, or while those above it do.
  virtual void Wake(Window&) {}
  // The window is visible no more.
  virtual void Conceal(Window& window) = 0;
  // An unloaded window has no show any more: what is drawn of it can go.
  virtual void Release(Window&) {}

  // Closes a window that is shown; see the public operation.
  void CloseForShutdown(Window& window);

 private:
  struct Show {
    std::shared_ptr<Window> window;
    bool ended = false;
  };
  class ShowScope;

  void Discard(Window& window);
  void ReleaseUnlessPending(Window& window);

  std::size_t deepestNesting_;
  std::list<Show> shows_;  // outermost first
};

}  // namespace tessel
