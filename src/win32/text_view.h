// Text boxes of one line and of several.
#pragma once

#include "win32/control_view.h"

namespace tessel::win32 {

[[nodiscard]] std::unique_ptr<ControlView> MakeTextView(TextBox& box, const Ground& ground);

}  // namespace tessel::win32
