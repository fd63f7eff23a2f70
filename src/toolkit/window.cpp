#include "toolkit/window.h"

#include <algorithm>

namespace tessel {

Window::Window(std::string name, std::string title, const Size& clientArea)
    : name_(std::move(name)),
      title_(std::move(title)),
      rect_{0, 0, clientArea.width + kBorderWidth, clientArea.height + kBorderHeight} {}

Control* Window::Find(std::string_view name, int index) const {
  for (const auto& control : controls_) {
    if (control->Index() == index && control->Name() == name) return control.get();
  }
  return nullptr;
}

Control* Window::FindById(std::string_view id) const {
  for (const auto& control : controls_) {
    if (control->Id() == id) return control.get();
  }
  return nullptr;
}

void Window::SetBounds(const Rect& rect) {
  ApplyBounds(rect, true);
}

void Window::MoveTo(double left, double top) {
  SetBounds({left, top, rect_.width, rect_.height});
}

void Window::UserSetBounds(const Rect& rect) {
  ApplyBounds(rect, false);
}

// A window never gets smaller than its border and title bar.
void Window::ApplyBounds(const Rect& rect, bool tellListener) {
  const Rect before = rect_;
  rect_ = {rect.left, rect.top, std::max(rect.width, kBorderWidth), std::max(rect.height, kBorderHeight)};
  placed_ = true;
  if (tellListener && listener_ != nullptr && rect_ != before) listener_->GeometryChanged();
  const bool resized = rect_.width != before.width || rect_.height != before.height;
  if (resized && OnResize) OnResize();
}

void Window::Adopt(std::unique_ptr<Control> control) {
  controls_.push_back(std::move(control));
  if (listener_ != nullptr) listener_->ControlAdded(*controls_.back());
}

void Window::ControlChanged(Control& control, Change change) {
  if (listener_ != nullptr) listener_->ControlChanged(control, change);
}

}  // namespace tessel
