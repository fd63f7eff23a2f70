// A statement that stays prepared, and binds, runs and reads without a copy of its own.
#pragma once

#include <soci/soci.h>

#include <memory>
#include <string>
#include <vector>

#include "embedded/store/query_result.h"
#include "embedded/store/sqlite_handle.h"

namespace tessel::embedded {

// It goes through the SQL library itself: the wrapper's rows are made anew for each cell, which made up a
// large part of an export of many small files. Errors: soci::soci_error, like the wrapper's.
class PreparedStatement {
 public:
  PreparedStatement(soci::session& session, const std::string& sql);

  // Every row is fetched, so that the statement holds no read lock afterwards. Integers that do not fit into
  // 32 bits come as doubles.
  [[nodiscard]] QueryResult Rows(const std::vector<Value>& values);
  // The number of rows that the statement changed.
  long long Run(const std::vector<Value>& values);

 private:
  struct Finalizer {
    void operator()(sqlite_api::sqlite3_stmt* statement) const { sqlite_api::sqlite3_finalize(statement); }
  };
  class Execution;
  [[nodiscard]] Value Cell(int column) const;
  [[nodiscard]] std::shared_ptr<const std::vector<ResultColumn>> Columns(bool hasRow) const;

  sqlite_api::sqlite3* database_;
  std::unique_ptr<sqlite_api::sqlite3_stmt, Finalizer> statement_;
  std::vector<std::string> texts_;  // that are bound
  std::shared_ptr<const std::vector<ResultColumn>> columns_;
};

}  // namespace tessel::embedded
