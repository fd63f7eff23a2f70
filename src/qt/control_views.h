// The widgets of all kinds of controls.
#pragma once

#include <memory>

#include "qt/control_view.h"
#include "qt/units.h"
#include "toolkit/control.h"

namespace tessel::qt {

// Draws the control on the parent widget.
[[nodiscard]] std::unique_ptr<ControlView> MakeControlView(Control& control, QWidget& parent,
                                                           const Units& units, const EventRunner& run);

}  // namespace tessel::qt
