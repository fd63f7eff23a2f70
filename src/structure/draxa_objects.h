// CommonXFunctions: which objects are of another Draxa kind.
#pragma once

#include <cstdint>

#include "host/object.h"

namespace tessel::CommonXFunctions {

// 1 when a class mechanism makes the object's class one of another Draxa kind, else 0.
[[nodiscard]] std::int16_t GetIsDraxaObj(const PcObject& object);

}  // namespace tessel::CommonXFunctions
