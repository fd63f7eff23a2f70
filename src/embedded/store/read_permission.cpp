#include "embedded/store/read_permission.h"

#include "embedded/store/sqlite_handle.h"

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
      return table && (*static_cast<const ReadPermission::Check*>(check))(table) ? SQLITE_OK : SQLITE_DENY;
    default:
      return SQLITE_DENY;
  }
}

}  // namespace

ReadPermission::ReadPermission(soci::session& session, const Check& readable) : session_(session) {
  // The library takes the check as it is and hands it back to Answer.
  sqlite_api::sqlite3_set_authorizer(Handle(session_), Answer, const_cast<Check*>(&readable));
}

ReadPermission::~ReadPermission() {
  sqlite_api::sqlite3_set_authorizer(Handle(session_), nullptr, nullptr);
}

}  // namespace tessel::embedded
