#include "headless/headless_toolkit.h"

#include <algorithm>

#include "host/error.h"

namespace tessel {

namespace {

constexpr int kOutOfStackSpace = 28;

void CentreOnScreen(Window& window) {
  const Rect& bounds = window.Bounds();
  window.MoveTo((HeadlessToolkit::kScreen.width - bounds.width) / 2,
                (HeadlessToolkit::kScreen.height - bounds.height) / 2);
}

}  // namespace

int Driver::ChooseMenuItem(const Window&, const PopupMenu&) {
  return -1;
}
void Driver::WindowShown(const Window&) {}
void Driver::WindowHidden(const Window&) {}
void Driver::WindowRedrawn(const Window&) {}
void Driver::EventsPumped(HeadlessToolkit&) {}
void Driver::ProcessStarted(const std::string&, const std::vector<std::string>&, std::int32_t) {}

MessageAnswer SafeAnswer(const MessageRequest& request) {
  return request.buttons == MessageButtons::kYesNo ? MessageAnswer::kNo : MessageAnswer::kOk;
}

// One pending show; when an exception ends it, the window is hidden on the way out.
class HeadlessToolkit::ShowScope {
 public:
  ShowScope(HeadlessToolkit& toolkit, const std::shared_ptr<Window>& window)
      : toolkit_(toolkit), show_(toolkit.shows_.insert(toolkit.shows_.end(), Show{window})) {}
  ~ShowScope() {
    if (!show_->ended) toolkit_.Hide(*show_->window);
    toolkit_.shows_.erase(show_);
  }
  ShowScope(const ShowScope&) = delete;
  ShowScope& operator=(const ShowScope&) = delete;
  [[nodiscard]] bool Ended() const { return show_->ended; }

 private:
  HeadlessToolkit& toolkit_;
  std::list<Show>::iterator show_;
};

void HeadlessToolkit::ShowModal(const std::shared_ptr<Window>& window) {
  if (window->Unloaded()) {
    throw RuntimeError(error_number::kInvalidCall, window->Name() + " was unloaded and cannot be shown");
  }
  if (shows_.size() >= kDeepestNesting) {
    throw RuntimeError(kOutOfStackSpace, "Out of stack space: too many windows shown one from another");
  }
  const ShowScope scope(*this, window);
  Remember(window);
  if (!window->Placed()) CentreOnScreen(*window);
  if (!window->Visible()) {
    window->SetVisible(true);
    driver_.WindowShown(*window);
  }
  if (window->OnActivate) window->OnActivate();
  while (!scope.Ended())
    driver_.Act(*this);
}

void HeadlessToolkit::Hide(Window& window) {
  for (Show& show : shows_) {
    if (show.window.get() == &window) show.ended = true;
  }
  if (!window.Visible()) return;
  window.SetVisible(false);
  driver_.WindowHidden(window);
}

bool HeadlessToolkit::Unload(Window& window, CloseReason reason) {
  if (window.Unloaded()) return true;
  if (window.OnQueryClose && !window.OnQueryClose(reason)) return false;
  Discard(window);
  return true;
}

// The question may have unloaded the window by itself; OnUnload is raised once.
void HeadlessToolkit::Discard(Window& window) {
  if (window.Unloaded()) return;
  window.SetUnloaded();
  if (window.OnUnload) window.OnUnload();
  Hide(window);
}

// Only one window can be used at a time, so there is no other that could cover it.
void HeadlessToolkit::BringToTop(Window&) {}

void HeadlessToolkit::OpenPopupMenu(Window& window, const PopupMenu& menu) {
  const int choice = driver_.ChooseMenuItem(window, menu);
  if (choice < 0 || static_cast<std::size_t>(choice) >= menu.items.size()) return;
  const MenuItem& item = menu.items[static_cast<std::size_t>(choice)];
  if (item.OnClick) item.OnClick();
}

MessageAnswer HeadlessToolkit::ShowMessage(const MessageRequest& request) {
  return driver_.Answer(request);
}

void HeadlessToolkit::PumpEvents() {
  driver_.EventsPumped(*this);
}

void HeadlessToolkit::Redraw(Window& window) {
  if (window.Visible()) driver_.WindowRedrawn(window);
}

std::shared_ptr<Window> HeadlessToolkit::TopWindow() const {
  const auto top = std::find_if(shows_.rbegin(), shows_.rend(), [](const Show& show) { return !show.ended; });
  return top == shows_.rend() ? nullptr : top->window;
}

std::shared_ptr<Window> HeadlessToolkit::FindWindow(std::string_view name) const {
  for (auto known = known_.rbegin(); known != known_.rend(); ++known) {
    const auto window = known->lock();
    if (window && window->Name() == name) return window;
  }
  return nullptr;
}

std::vector<std::shared_ptr<Window>> HeadlessToolkit::VisibleWindows() const {
  std::vector<std::shared_ptr<Window>> windows;
  for (const Show& show : shows_) {
    if (show.ended) continue;
    std::erase(windows, show.window);
    windows.push_back(show.window);
  }
  return windows;
}

void HeadlessToolkit::CloseForShutdown() {
  const auto window = TopWindow();
  if (window && !Unload(*window, CloseReason::kSystemShutdown)) Discard(*window);
}

void HeadlessToolkit::Remember(const std::shared_ptr<Window>& window) {
  std::erase_if(known_, [&](const auto& known) {
    const auto other = known.lock();
    return !other || other == window;
  });
  known_.push_back(window);
}

}  // namespace tessel
