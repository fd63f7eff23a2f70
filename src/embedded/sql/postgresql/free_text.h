// The check of query texts of unknown origin.
#pragma once

#include <string>

#include "embedded/sql/postgresql/server_link.h"
#include "embedded/sql/sql_connection.h"

namespace tessel::embedded {

// Error: DatabaseError kCodeNotAllowed when the text calls a function that does more than compute; some read
// files, other tables by a name in a text, or change settings.
void CheckFunctions(const std::string& sql);

// Asks the server which tables it would read, in a transaction that cannot write. Error: DatabaseError
// kCodeNotAllowed for one that is refused, or that is none of the schema's.
void CheckTables(ServerLink& link, const std::string& sql, const TableCheck& readable);

}  // namespace tessel::embedded
