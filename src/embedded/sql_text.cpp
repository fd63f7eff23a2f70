#include "embedded/sql_text.h"

#include <algorithm>
#include <string>

#include "embedded/ascii_case.h"
#include "host/error.h"

namespace tessel::embedded {
namespace {

bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

bool IsWordCharacter(char c) {
  return IsLetter(c) || (c >= '0' && c <= '9');
}

[[noreturn]] void Refuse(const char* reason) {
  throw HostError(std::string("Query refused: ") + reason);
}

// Position after the text or name that begins with the quote at `position`; a doubled quote stands for
// itself.
std::size_t SkipQuoted(std::string_view sql, std::size_t position) {
  const char quote = sql[position];
  for (std::size_t i = position + 1; i < sql.size(); ++i) {
    if (sql[i] != quote) continue;
    if (i + 1 < sql.size() && sql[i + 1] == quote) {
      ++i;
      continue;
    }
    return i + 1;
  }
  Refuse("a quotation mark is not closed");
}

void CheckWord(std::string_view word, bool first) {
  if (first && UpperCase(word) != "SELECT") Refuse("only a single select statement is allowed");
  if (word != "MESSAGE_STORE" && IsReservedTable(word)) Refuse("the host's own tables cannot be read");
}

}  // namespace

bool IsIdentifier(std::string_view name) {
  return !name.empty() && IsLetter(name.front()) && std::all_of(name.begin(), name.end(), IsWordCharacter);
}

bool IsReservedTable(std::string_view name) {
  const std::string upper = UpperCase(name);
  return upper.starts_with("TESSEL_") || upper.starts_with("SQLITE_") || upper.starts_with("PRAGMA_") ||
         upper.starts_with("PG_") || upper == "MESSAGE_STORE";
}

void CheckSingleSelect(std::string_view sql) {
  bool first = true;
  for (std::size_t i = 0; i < sql.size();) {
    const char c = sql[i];
    if (IsLetter(c)) {
      const auto end =
          std::find_if_not(sql.begin() + static_cast<std::ptrdiff_t>(i), sql.end(), IsWordCharacter);
      const auto length = static_cast<std::size_t>(end - sql.begin()) - i;
      CheckWord(sql.substr(i, length), first);
      first = false;
      i += length;
      continue;
    }
    if (c == '\'' || c == '"') {
      const std::size_t end = SkipQuoted(sql, i);
      if (c == '"') CheckWord(sql.substr(i + 1, end - i - 2), false);
      if (first) Refuse("only a single select statement is allowed");
      i = end;
      continue;
    }
    const bool comment = sql.substr(i, 2) == "--" || sql.substr(i, 2) == "/*";
    if (comment || std::string_view(";:?@$`[\\").find(c) != std::string_view::npos || c == '\0') {
      Refuse("it contains a character that a single select statement does not need");
    }
    ++i;
  }
  if (first) Refuse("only a single select statement is allowed");
}

}  // namespace tessel::embedded
