// The keys of a native window and the place of the keyboard in it.
#include "win32/window_view.h"

namespace tessel::win32 {
namespace {

bool IsDown(int key) {
  return GetKeyState(key) < 0;
}

}  // namespace

bool WindowView::Usable(HWND control) const {
  return control != nullptr && IsChild(handle_, control) && IsWindowVisible(control) &&
         IsWindowEnabled(control);
}

// In the order of the controls, at each showing, so that Enter means the same each time.
void WindowView::FocusFirst() {
  for (const auto& control : window_->Controls()) {
    const ControlView& view = *ViewOf(*control);
    if (!view.TakesFocus() || !control->ShownOnWindow() || !IsWindowEnabled(view.Handle())) continue;
    SetFocus(view.Handle());
    return;
  }
}

void WindowView::MoveFocus(bool back) {
  if (const HWND next = GetNextDlgTabItem(handle_, GetFocus(), back)) SetFocus(next);
}

// The control at the keyboard was hidden or disabled: the next one takes its place.
void WindowView::KeepFocusUsable() {
  const HWND focus = GetFocus();
  const bool gone = GetActiveWindow() == handle_ && (focus == nullptr || focus == handle_ || !Usable(focus));
  if (!gone || !IsWindowVisible(handle_)) return;
  const HWND next = focus == nullptr || focus == handle_ ? nullptr : GetNextDlgTabItem(handle_, focus, FALSE);
  if (Usable(next)) {
    SetFocus(next);
  } else {
    FocusFirst();
  }
}

Button* WindowView::ButtonFor(bool Button::*role) const {
  for (const auto& control : window_->Controls()) {
    auto* button = dynamic_cast<Button*>(control.get());
    if (button != nullptr && button->*role && Usable(HandleOf(*button))) return button;
  }
  return nullptr;
}

// Enter presses the button that has the focus, else the default button.
bool WindowView::PressFor(WPARAM key) {
  const HWND focus = GetFocus();
  ControlView* focused = Usable(focus) ? ControlView::Of(focus) : nullptr;
  if (key == VK_RETURN && focused != nullptr && focused->WantsEnter()) return false;
  if (focused != nullptr) focused->KeyOfWindow(static_cast<char32_t>(key));
  auto* button = key == VK_RETURN && focused != nullptr ? dynamic_cast<Button*>(&focused->Model()) : nullptr;
  if (button == nullptr) button = ButtonFor(key == VK_RETURN ? &Button::IsDefault : &Button::IsCancel);
  if (button != nullptr) events_.queue([button] { button->UserClick(); });
  return true;
}

bool WindowView::TakesKey(MSG& message) {
  const bool pressed = message.message == WM_KEYDOWN && !IsDown(VK_CONTROL) && !IsDown(VK_MENU);
  if (pressed && message.wParam == VK_TAB) {
    MoveFocus(IsDown(VK_SHIFT));
    return true;
  }
  if (pressed && (message.wParam == VK_RETURN || message.wParam == VK_ESCAPE))
    return PressFor(message.wParam);
  // Characters typed are the controls'; Windows looks for Alt letters.
  const bool letter = message.message == WM_SYSCHAR;
  return letter && IsDialogMessageW(handle_, &message) != FALSE;
}

}  // namespace tessel::win32
