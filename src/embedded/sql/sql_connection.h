// Port: one connection to an SQL database. What sets the databases apart stays behind it; the store's
// statements are the same for all of them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/sql/query_result.h"
#include "embedded/sql/refusal.h"

namespace tessel::embedded {

// A statement that stays prepared. Values stand for its placeholders (":name") in their order. It does not
// outlive its connection. Errors: DatabaseError.
class SqlStatement {
 public:
  virtual ~SqlStatement() = default;
  // Every row is fetched, so that the statement holds nothing afterwards. Integers that do not fit into 32
  // bits come as doubles.
  [[nodiscard]] virtual QueryResult Rows(const std::vector<Value>& values) = 0;
  // The number of rows that the statement changed.
  virtual long long Run(const std::vector<Value>& values) = 0;
};
using SqlStatementPtr = std::unique_ptr<SqlStatement>;

// Whether a table or view of that name, in any letter case, may be read.
using TableCheck = std::function<bool(std::string_view table)>;

// What the statements of a database say otherwise than those of the others.
struct SqlDialect {
  const char* beginReading;  // begins a transaction whose reads are of one moment
  const char* beginWriting;  // begins one that no other writing one runs beside
  const char* timestamp;     // the time in UTC as "YYYY-MM-DD HH:MM:SS"
  const char* text;          // type of a text column, compared by its bytes
  // A pattern for texts: "column LIKE pattern" without regard to the case of ASCII letters.
  const char* likeBefore;  // what stands before the column, between column and pattern, and behind
  const char* likeBetween;
  const char* likeAfter;
  bool rowsInOrder;  // rows come in the order in which they were added, unless another one is asked for
};

// A statement that fails leaves an open writing transaction as it was before the statement. Errors:
// DatabaseError.
class SqlConnection {
 public:
  virtual ~SqlConnection() = default;

  [[nodiscard]] virtual const SqlDialect& Dialect() const = 0;
  [[nodiscard]] virtual SqlStatementPtr Prepare(const std::string& sql) = 0;
  // A text without placeholders that does not come again.
  virtual void RunOnce(const std::string& sql) = 0;
  // A text of unknown origin. The database itself says which tables it reads: kCodeNotAllowed when `readable`
  // refuses one of them, or when the text does anything but read.
  [[nodiscard]] virtual QueryResult ReadTables(const std::string& sql, const TableCheck& readable) = 0;
  // Begins, ends or nests a transaction: a text of the dialect, "COMMIT", "ROLLBACK", "SAVEPOINT name",
  // "ROLLBACK TO name" or "RELEASE name".
  virtual void Steer(const std::string& sql) = 0;
  [[nodiscard]] virtual bool InTransaction() const = 0;
  // Rows changed on this connection so far.
  [[nodiscard]] virtual std::uint64_t Changes() const = 0;
  [[nodiscard]] virtual bool HasTable(const std::string& upperCaseName) = 0;
  // Brings all that was committed into the database's one file, if it has one.
  virtual void Settle() = 0;
};

}  // namespace tessel::embedded
