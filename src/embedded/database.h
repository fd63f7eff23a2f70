// One SQL connection. Values are always bound; texts are UTF-8. The database library stays behind this class.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "host/error.h"
#include "host/value.h"

namespace tessel::embedded {

// A refusal of the database. Number() is the database's own error code, never 0.
class DatabaseError : public HostError {
 public:
  using HostError::HostError;
};

enum class CellType { kText, kInteger, kDouble };

struct ResultColumn {
  std::string name;  // upper case
  CellType type = CellType::kText;
};

struct QueryResult {
  std::shared_ptr<const std::vector<ResultColumn>> columns;
  std::vector<std::vector<Value>> rows;
};

inline constexpr const char* kInMemory = ":memory:";

class Database {
 public:
  // Opens a database, which is made when it does not exist. `path` is a native path or kInMemory. A statement
  // waits up to `busyTimeout` for another connection's write to end.
  explicit Database(const std::string& path,
                    std::chrono::milliseconds busyTimeout = std::chrono::milliseconds(10000));
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  // Statements take values in the order of their placeholders (":name"). They stay prepared for the next call
  // with the same text. Integers come back as 32-bit integers, or as doubles where they do not fit. Errors:
  // DatabaseError.
  [[nodiscard]] QueryResult Query(const std::string& sql, const std::vector<Value>& values = {});
  // The number of rows that the statement changed.
  long long Execute(const std::string& sql, const std::vector<Value>& values = {});

  // As Query and Execute without values, for texts that do not come again.
  [[nodiscard]] QueryResult QueryOnce(const std::string& sql);
  void ExecuteOnce(const std::string& sql);

  // Brings all that was committed into the database file itself, so that this file alone can be moved. The
  // end of a connection does so too, but says nothing when the disk is full. Error: DatabaseError.
  void Settle();

 private:
  struct Connection;
  std::unique_ptr<Connection> connection_;
};

// A write transaction: it holds the database's write lock from its beginning, so that what it reads stays
// true, and is undone unless it is committed. Transactions do not nest.
class WriteTransaction {
 public:
  explicit WriteTransaction(Database& database);
  ~WriteTransaction();
  WriteTransaction(const WriteTransaction&) = delete;
  WriteTransaction& operator=(const WriteTransaction&) = delete;
  void Commit();

 private:
  Database& database_;
  bool open_ = true;
};

}  // namespace tessel::embedded
