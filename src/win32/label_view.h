// Labels; one that is high enough is a headline in large print.
#pragma once

#include "win32/control_view.h"

namespace tessel::win32 {

[[nodiscard]] std::unique_ptr<ControlView> MakeLabelView(Label& label, const Ground& ground);

}  // namespace tessel::win32
