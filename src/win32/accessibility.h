// What screen readers and test programs are told of a native control.
#pragma once

#include <string>

#include "win32/api.h"

namespace tessel::win32 {

// `id` is the control's name for programs (the automation id), `spoken` what a person hears.
void Announce(HWND control, const std::string& id, const std::string& spoken);

}  // namespace tessel::win32
