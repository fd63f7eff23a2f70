// The Windows headers without the macros that rename our own procedures. Included in place of windows.h.
#pragma once

// The order counts: the others need the first.
// clang-format off
#include <windows.h>
#include <io.h>
#include <shellapi.h>
#include <shlwapi.h>
// clang-format on

#undef CopyFile
#undef CreateWindow
#undef DeleteFile
#undef GetClassName
#undef GetMessage
#undef GetObject
#undef LoadString
#undef MessageBox
#undef MoveFile
#undef SendMessage
#undef Yield
