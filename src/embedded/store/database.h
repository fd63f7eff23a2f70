// One SQL connection. Values are always bound; texts are UTF-8. The database library stays behind this class.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/sql/sql_connection.h"
#include "embedded/sql/sqlite/sqlite_connection.h"
#include "host/value.h"

namespace tessel::embedded {

struct Connection;

struct DatabaseOptions {
  // How long a statement, and the beginning of a write transaction, waits for another connection's to end.
  std::chrono::milliseconds busyTimeout{10000};
  StatementWatch watch;
};

class Database {
 public:
  // Opens a database, which is made when it does not exist. `path` is a native path or kInMemory. What was
  // committed is on the disk. A file that cannot be written can be read. Error: DatabaseError.
  explicit Database(const std::string& path, DatabaseOptions options = {});
  Database(std::unique_ptr<SqlConnection> connection, StatementWatch watch);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  // Statements take values in the order of their placeholders (":name"). They stay prepared for the next call
  // with the same text. Integers come back as 32-bit integers, or as doubles where they do not fit. A
  // statement inside a transaction that the database has undone by itself is refused. Errors: DatabaseError.
  [[nodiscard]] QueryResult Query(const std::string& sql, const std::vector<Value>& values = {});
  // The number of rows that the statement changed. A statement that returns what it changed goes through
  // Query, in a WriteTransaction.
  long long Execute(const std::string& sql, const std::vector<Value>& values = {});

  // As Execute without values, for texts that do not come again.
  void ExecuteOnce(const std::string& sql);

  // A text of unknown origin. The database itself says which tables it reads: error
  // kCodeNotAllowed when `readable` refuses one of them, or when the text does anything but read.
  [[nodiscard]] QueryResult QueryTables(const std::string& sql, const TableCheck& readable);

  [[nodiscard]] bool HasTable(const std::string& upperCaseName);
  [[nodiscard]] const SqlDialect& Dialect() const;

  // Brings all that was committed into the database file itself, so that this file alone can be moved. The
  // end of a connection does so too, but says nothing when the disk is full. Error: DatabaseError.
  void Settle();

  // The next number under a name, only inside a write transaction; see DrawNumber.
  [[nodiscard]] std::int32_t NextNumber(const std::string& name);

  // Whether a write transaction is open.
  [[nodiscard]] bool Writing() const { return Transaction() != 0; }
  // A number that only the innermost open write transaction has, 0 when there is none.
  [[nodiscard]] std::uint64_t Transaction() const;
  // The same number twice: what was read in between would come back the same now, since a snapshot or write
  // transaction stands and nothing was written. 0 where nothing is known, as outside of both.
  [[nodiscard]] std::uint64_t StateNumber() const;
  // Keeps what is to be called when the open write transaction is undone, newest first, so that what is held
  // in memory goes back with the rows; nothing is kept without one. It must not throw, and need not be called
  // when its owner is gone.
  void OnUndo(const std::weak_ptr<const void>& owner, std::function<void()> undo);

 private:
  friend class WriteTransaction;
  friend class ReadSnapshot;
  std::unique_ptr<Connection> connection_;
};

}  // namespace tessel::embedded
