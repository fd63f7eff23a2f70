// Names that become part of a statement.
#pragma once

#include <string_view>

namespace tessel::embedded {

[[nodiscard]] bool IsLetter(char c);
[[nodiscard]] bool IsWordCharacter(char c);

// Letters, digits and "_", not beginning with a digit: a name that needs no quoting.
[[nodiscard]] bool IsIdentifier(std::string_view name);

// Whether a table or attribute name belongs to the host or the database itself.
[[nodiscard]] bool IsReservedTable(std::string_view name);

}  // namespace tessel::embedded
