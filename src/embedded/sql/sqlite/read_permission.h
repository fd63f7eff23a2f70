// While it lives, statements that are prepared may read the tables that a check lets pass, and do nothing
// else.
#pragma once

#include <sqlite3.h>

#include "embedded/sql/sql_connection.h"

namespace tessel::embedded {

// All prepared statements of the connection are prepared anew afterwards.
class ReadPermission {
 public:
  // The check outlives the permission.
  ReadPermission(sqlite3* database, const TableCheck& readable);
  ~ReadPermission();
  ReadPermission(const ReadPermission&) = delete;
  ReadPermission& operator=(const ReadPermission&) = delete;

 private:
  sqlite3* database_;
};

}  // namespace tessel::embedded
