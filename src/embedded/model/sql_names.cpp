#include "embedded/model/sql_names.h"

#include <algorithm>
#include <string>

#include "host/ascii.h"

namespace tessel::embedded {

bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

bool IsWordCharacter(char c) {
  return IsLetter(c) || (c >= '0' && c <= '9');
}

bool IsIdentifier(std::string_view name) {
  return !name.empty() && IsLetter(name.front()) && std::all_of(name.begin(), name.end(), IsWordCharacter);
}

bool IsReservedTable(std::string_view name) {
  const std::string upper = UpperCase(name);
  return upper.starts_with("TESSEL_") || upper.starts_with("SQLITE_") || upper.starts_with("PRAGMA_") ||
         upper.starts_with("PG_") || upper == "INFORMATION_SCHEMA" || upper == "MESSAGE_STORE";
}

}  // namespace tessel::embedded
