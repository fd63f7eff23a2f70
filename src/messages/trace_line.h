// Trace lines and the data in them.
#pragma once

#include <string>
#include <string_view>

namespace tessel {

// The text as one line: a line break or another control character, which could make data look like a line of
// its own, becomes its hexadecimal code in angle brackets ("<0D><0A>"). A tab stays.
[[nodiscard]] std::string OneLine(std::string_view text);

}  // namespace tessel
