#include "toolkit/modal_toolkit.h"

#include <algorithm>

#include "host/error.h"

namespace tessel {

// One pending show; when an exception ends it, the window is hidden on the way out.
class ModalToolkit::ShowScope {
 public:
  ShowScope(ModalToolkit& toolkit, const std::shared_ptr<Window>& window)
      : toolkit_(toolkit), show_(toolkit.shows_.insert(toolkit.shows_.end(), Show{window})) {}
  ~ShowScope() {
    const std::shared_ptr<Window> window = show_->window;
    if (!show_->ended) toolkit_.Hide(*window);
    toolkit_.shows_.erase(show_);
    if (window->Unloaded()) toolkit_.ReleaseUnlessPending(*window);
  }
  ShowScope(const ShowScope&) = delete;
  ShowScope& operator=(const ShowScope&) = delete;
  [[nodiscard]] bool Ended() const { return show_->ended; }

 private:
  ModalToolkit& toolkit_;
  std::list<Show>::iterator show_;
};

void ModalToolkit::ShowModal(const std::shared_ptr<Window>& window) {
  if (window->Unloaded()) {
    throw RuntimeError(error_number::kInvalidCall, window->Name() + " was unloaded and cannot be shown");
  }
  if (!CanShowMore()) {
    throw RuntimeError(error_number::kOutOfStackSpace,
                       "Out of stack space: too many windows shown one from another");
  }
  const ShowScope scope(*this, window);
  Prepare(window);
  if (!window->Visible()) {
    window->SetVisible(true);
    BecameVisible(*window);
  }
  if (window->OnActivate) window->OnActivate();
  if (!scope.Ended()) Appear(*window);
  while (!scope.Ended())
    Wait(*window);
}

void ModalToolkit::Hide(Window& window) {
  bool pending = false;
  for (Show& show : shows_) {
    if (show.window.get() != &window) continue;
    show.ended = pending = true;
  }
  if (pending) Wake(window);
  if (!window.Visible()) return;
  window.SetVisible(false);
  Conceal(window);
}

bool ModalToolkit::Unload(Window& window, CloseReason reason) {
  if (window.Unloaded()) return true;
  if (window.OnQueryClose && !window.OnQueryClose(reason)) return false;
  Discard(window);
  return true;
}

// The question may have unloaded the window by itself; OnUnload is raised once.
void ModalToolkit::Discard(Window& window) {
  if (window.Unloaded()) return;
  window.SetUnloaded();
  if (window.OnUnload) window.OnUnload();
  Hide(window);
  ReleaseUnlessPending(window);
}

void ModalToolkit::ReleaseUnlessPending(Window& window) {
  if (std::ranges::none_of(shows_, [&](const Show& show) { return show.window.get() == &window; })) {
    Release(window);
  }
}

std::shared_ptr<Window> ModalToolkit::TopWindow() const {
  const auto top = std::find_if(shows_.rbegin(), shows_.rend(), [](const Show& show) { return !show.ended; });
  return top == shows_.rend() ? nullptr : top->window;
}

std::vector<std::shared_ptr<Window>> ModalToolkit::VisibleWindows() const {
  std::vector<std::shared_ptr<Window>> windows;
  for (const Show& show : shows_) {
    if (show.ended) continue;
    std::erase(windows, show.window);
    windows.push_back(show.window);
  }
  return windows;
}

void ModalToolkit::CloseForShutdown() {
  if (const auto window = TopWindow()) CloseForShutdown(*window);
}

void ModalToolkit::CloseForShutdown(Window& window) {
  if (!Unload(window, CloseReason::kSystemShutdown)) Discard(window);
}

}  // namespace tessel
