// Marks that tell which units of work were committed.
#pragma once

#include <string>

#include "embedded/store/database.h"

namespace tessel::embedded {

// Databases that were made before there were marks get their table with the first one.
inline constexpr const char* kMarkTable =
    "CREATE TABLE IF NOT EXISTS TESSEL_MARK (NAME VARCHAR(255) NOT NULL PRIMARY KEY)";

// Inside the write transaction that the mark stands for. Error: DatabaseError for a mark that is there.
void AddMark(Database& database, const std::string& mark);
[[nodiscard]] bool HasMark(Database& database, const std::string& mark);
// Nothing happens when there is no such mark.
void RemoveMark(Database& database, const std::string& mark);

}  // namespace tessel::embedded
