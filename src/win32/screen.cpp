#include "win32/screen.h"

namespace tessel::win32 {
namespace {

// Functions that older versions of Windows lack.
template <class Function>
Function FromUser32(const char* name) {
  const HMODULE library = GetModuleHandleW(L"user32.dll");
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

}  // namespace

UINT DotsPerInch(HWND window) {
  using GetDpi = UINT(WINAPI*)(HWND);
  const auto ofWindow = FromUser32<GetDpi>("GetDpiForWindow");
  const UINT dots = window != nullptr && ofWindow != nullptr ? ofWindow(window) : 0;
  if (dots != 0) return dots;
  const HDC screen = GetDC(nullptr);
  const int all = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return static_cast<UINT>(all);
}

RECT WorkAreaAround(HWND window) {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  constexpr POINT kMain{0, 0};
  const HMONITOR monitor = window != nullptr ? MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY)
                                             : MonitorFromPoint(kMain, MONITOR_DEFAULTTOPRIMARY);
  GetMonitorInfoW(monitor, &info);
  return info.rcWork;
}

void AdjustFrame(RECT& area, HWND window) {
  using Adjust = BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT);
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
  const auto extended = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE));
  const auto forScale = FromUser32<Adjust>("AdjustWindowRectExForDpi");
  if (forScale != nullptr && forScale(&area, style, FALSE, extended, DotsPerInch(window)) != FALSE) return;
  AdjustWindowRectEx(&area, style, FALSE, extended);
}

}  // namespace tessel::win32
