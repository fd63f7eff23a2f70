// In place of the connection where the server's library is not there.
#include "embedded/sql/postgresql/postgresql_connection.h"

namespace tessel::embedded {

std::unique_ptr<SqlConnection> OpenPostgresql(const ServerAddress& address, std::chrono::milliseconds) {
  throw DatabaseError(
      "Cannot open the database " + address.shown + ": this program was built without PostgreSQL",
      kCodeCannotOpen);
}

}  // namespace tessel::embedded
