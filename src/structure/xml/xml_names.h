// The characters that XML 1.0 (fourth edition) allows in names; stricter than the fifth, and old parsers read
// it.
#pragma once

#include <string_view>

namespace tessel {

// The first character of a UTF-8 name that XML does not accept where it stands, a malformed byte included;
// empty when all are accepted. An empty name has none and is no name either.
[[nodiscard]] std::string_view FindNameOffence(std::string_view name);

}  // namespace tessel
