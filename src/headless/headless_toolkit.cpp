#include "headless/headless_toolkit.h"

namespace tessel {

namespace {

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
void Driver::Paused(std::chrono::milliseconds) {}
void Driver::ProcessStarted(const std::string&, const std::vector<std::string>&, std::int32_t) {}

MessageAnswer SafeAnswer(const MessageRequest& request) {
  return request.buttons == MessageButtons::kYesNo ? MessageAnswer::kNo : MessageAnswer::kOk;
}

void HeadlessToolkit::Prepare(const std::shared_ptr<Window>& window) {
  std::erase_if(known_, [&](const auto& known) {
    const auto other = known.lock();
    return !other || other == window;
  });
  known_.push_back(window);
  if (!window->Placed()) CentreOnScreen(*window);
}

void HeadlessToolkit::BecameVisible(Window& window) {
  driver_.WindowShown(window);
}

void HeadlessToolkit::Wait(Window&) {
  driver_.Act(*this);
}

void HeadlessToolkit::Conceal(Window& window) {
  driver_.WindowHidden(window);
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

void HeadlessToolkit::Pause(std::chrono::milliseconds atMost) {
  driver_.Paused(atMost);
}

std::shared_ptr<Window> HeadlessToolkit::FindWindow(std::string_view name) const {
  for (auto known = known_.rbegin(); known != known_.rend(); ++known) {
    const auto window = known->lock();
    if (window && window->Name() == name) return window;
  }
  return nullptr;
}

}  // namespace tessel
