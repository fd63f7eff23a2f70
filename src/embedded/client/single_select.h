// The check of free query texts.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/value.h"

namespace tessel::embedded {

// Lets a free text pass that is one "select" statement on the tables of classes and sent messages. Error:
// HostError for other statements, several of them, comments, placeholders, and the host's own tables.
void CheckSingleSelect(std::string_view sql);

// A select statement whose texts were taken out and stand as values behind placeholders.
struct BoundSelect {
  std::string table;
  std::string sql;
  std::vector<Value> values;
};

// The bound form of "select * from TABLE where NAME='text' and NAME='text' ...", as links are looked for, so
// that one prepared statement serves for all of them. Nothing for a text of another form.
[[nodiscard]] std::optional<BoundSelect> BoundForm(std::string_view sql);

}  // namespace tessel::embedded
