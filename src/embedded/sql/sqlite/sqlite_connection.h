// Connections to SQLite databases.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "embedded/sql/sql_connection.h"

namespace tessel::embedded {

inline constexpr const char* kInMemory = ":memory:";

// Opens a database file, which is made when it does not exist; `path` is a native path or kInMemory. What was
// committed is on the disk. A file that cannot be written can be read. `busyTimeout` says how long a
// statement, and the beginning of a writing transaction, waits for another connection's to end. Error:
// DatabaseError.
[[nodiscard]] std::unique_ptr<SqlConnection> OpenSqlite(const std::string& path,
                                                        std::chrono::milliseconds busyTimeout);

// What SQLite says about one of its error codes; empty when it is none of them.
[[nodiscard]] std::string DatabaseErrorText(int code);

}  // namespace tessel::embedded
