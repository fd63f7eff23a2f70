// The native windows of all kinds of controls.
#pragma once

#include <memory>

#include "toolkit/control.h"
#include "win32/control_view.h"

namespace tessel::win32 {

[[nodiscard]] std::unique_ptr<ControlView> MakeControlView(Control& control, const Ground& ground);

}  // namespace tessel::win32
