// The SQL library's own handle, for what its wrapper does not offer.
#pragma once

#include <soci/soci.h>
// Before any other header that brings in the SQL library's own.
#include <soci/sqlite3/soci-sqlite3.h>

namespace tessel::embedded {

// The wrapper does not export the type information that a check of the cast would need.
[[gnu::no_sanitize("vptr")]] inline sqlite_api::sqlite3* Handle(soci::session& session) {
  return static_cast<const soci::sqlite3_session_backend*>(session.get_backend())->conn_;
}

}  // namespace tessel::embedded
