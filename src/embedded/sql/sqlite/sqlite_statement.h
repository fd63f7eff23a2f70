// A prepared statement of SQLite, which binds, runs and reads without a copy of its own.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

#include "embedded/sql/sql_connection.h"

namespace tessel::embedded {

// Throws what a call returned as a DatabaseError with its extended code, which tells a unique key from a
// missing parent, and with the system's reason where a file is to blame.
[[noreturn]] void ThrowRefusal(sqlite3* database, int code);

class SqliteStatement final : public SqlStatement {
 public:
  SqliteStatement(sqlite3* database, const std::string& sql);

  [[nodiscard]] QueryResult Rows(const std::vector<Value>& values) override;
  long long Run(const std::vector<Value>& values) override;

 private:
  struct Finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  class Execution;
  [[nodiscard]] Value Cell(int column) const;
  [[nodiscard]] std::shared_ptr<const std::vector<ResultColumn>> Columns(bool hasRow) const;

  sqlite3* database_;
  std::unique_ptr<sqlite3_stmt, Finalizer> statement_;
  std::vector<std::string> texts_;  // that are bound
  std::shared_ptr<const std::vector<ResultColumn>> columns_;
};

}  // namespace tessel::embedded
