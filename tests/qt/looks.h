// Compares widgets with the controls that they draw.
#pragma once

#include <string>

#include "qt/qt_toolkit.h"

namespace tessel::test {

// What a window's widgets show otherwise than its controls say; empty when all is as it should be.
[[nodiscard]] std::string DifferencesOf(const qt::QtToolkit& toolkit, const Window& window);

}  // namespace tessel::test
