#include "win32/control_view.h"

#include <algorithm>

#include "win32/module.h"

namespace tessel::win32 {
namespace {

// Position among the window's controls, from 1; a dialog's own numbers for OK and Cancel are left out.
INT_PTR NumberOf(const Control& control) {
  constexpr INT_PTR kFirst = 100;
  const auto& all = control.Owner().Controls();
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const auto& one) { return one.get() == &control; });
  return kFirst + (found - all.begin());
}

}  // namespace

ControlView::ControlView(Control& control, const Ground& ground, const wchar_t* windowClass, DWORD style,
                         DWORD extended)
    : control_(control),
      ground_(ground),
      handle_(CreateWindowExW(extended, windowClass, L"", WS_CHILD | style, 0, 0, 0, 0, ground.window,
                              reinterpret_cast<HMENU>(NumberOf(control)), OwnModule(), nullptr)) {
  SetWindowLongPtrW(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

ControlView* ControlView::Of(HWND handle) {
  return reinterpret_cast<ControlView*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
}

void ControlView::SetFont(HFONT font) {
  SendMessageW(handle_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

std::wstring ControlView::ShownText() const {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(handle_)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(handle_, text.data(), static_cast<int>(text.size()))));
  return text;
}

void ControlView::ShowText(const std::wstring& text) {
  if (ShownText() != text) SetWindowTextW(handle_, text.c_str());
}

SIZE ControlView::Measure(const std::wstring& text) const {
  SIZE size{};
  const HDC device = GetDC(handle_);
  const HGDIOBJ before =
      SelectObject(device, reinterpret_cast<HFONT>(SendMessageW(handle_, WM_GETFONT, 0, 0)));
  GetTextExtentPoint32W(device, text.c_str(), static_cast<int>(text.size()), &size);
  SelectObject(device, before);
  ReleaseDC(handle_, device);
  return size;
}

}  // namespace tessel::win32
