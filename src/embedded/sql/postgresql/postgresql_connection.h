// Connections to databases on a PostgreSQL server.
#pragma once

#include <chrono>
#include <memory>

#include "embedded/sql/postgresql/server_address.h"
#include "embedded/sql/sql_connection.h"

namespace tessel::embedded {

// One writing transaction runs at a time, as in a database file: it holds a lock of the database from its
// beginning, so that what it reads stays true and no transaction has to be repeated. `busyTimeout` says how
// long its beginning waits. A connection that was lost between two transactions is made again; one that is
// lost inside a transaction is kCodeConnectionLost, and the server has undone the transaction, unless the
// commit itself went unanswered. Errors: DatabaseError, kCodeCannotOpen when there is no such database, or
// when the program was built without PostgreSQL.
[[nodiscard]] std::unique_ptr<SqlConnection> OpenPostgresql(const ServerAddress& address,
                                                            std::chrono::milliseconds busyTimeout);

}  // namespace tessel::embedded
