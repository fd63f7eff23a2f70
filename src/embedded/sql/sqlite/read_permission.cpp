#include "embedded/sql/sqlite/read_permission.h"

namespace tessel::embedded {
namespace {

// Called by the SQL library for each thing that a statement would do. Nothing may be thrown through it.
int Answer(void* check, int action, const char* table, const char*, const char*, const char*) noexcept {
  switch (action) {
    case SQLITE_SELECT:
    case SQLITE_FUNCTION:
    case SQLITE_RECURSIVE:
      return SQLITE_OK;
    case SQLITE_READ:
      return table && (*static_cast<const TableCheck*>(check))(table) ? SQLITE_OK : SQLITE_DENY;
    default:
      return SQLITE_DENY;
  }
}

}  // namespace

ReadPermission::ReadPermission(sqlite3* database, const TableCheck& readable) : database_(database) {
  // The library takes the check as it is and hands it back to Answer.
  sqlite3_set_authorizer(database_, Answer, const_cast<TableCheck*>(&readable));
}

ReadPermission::~ReadPermission() {
  sqlite3_set_authorizer(database_, nullptr, nullptr);
}

}  // namespace tessel::embedded
