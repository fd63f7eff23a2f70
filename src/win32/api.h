// The Windows API, without the names that it takes from everybody else.
#pragma once

#include <windows.h>
// behind it
#include <commctrl.h>

#undef FindWindow
