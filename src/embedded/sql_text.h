// Checks of texts that become part of a statement.
#pragma once

#include <string_view>

namespace tessel::embedded {

// Letters, digits and "_", not beginning with a digit: a name that needs no quoting.
[[nodiscard]] bool IsIdentifier(std::string_view name);

// Whether a table or attribute name belongs to the host or the database itself.
[[nodiscard]] bool IsReservedTable(std::string_view name);

// Lets a free text pass that is one "select" statement on the tables of classes and sent messages. Error:
// HostError for other statements, several of them, comments, placeholders, and the host's own tables.
void CheckSingleSelect(std::string_view sql);

}  // namespace tessel::embedded
