// Screens: their scale and the room on them.
#pragma once

#include "win32/api.h"

namespace tessel::win32 {

// Dots an inch where the window is, or of the main screen when there is none. What Windows tells the process:
// a process that knows nothing of scales is told 96 everywhere.
[[nodiscard]] UINT DotsPerInch(HWND window);
// The part of the window's screen that the task bar leaves free; that of the main screen when there is none.
[[nodiscard]] RECT WorkAreaAround(HWND window);
// Adds the frame of the window to a client area, in its own scale.
void AdjustFrame(RECT& area, HWND window);

}  // namespace tessel::win32
