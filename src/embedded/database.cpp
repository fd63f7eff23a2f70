#include "embedded/database.h"

#include <soci/soci.h>
// Before any other header that brings in the SQL library's own.
#include <soci/sqlite3/soci-sqlite3.h>

#include <cstdint>
#include <deque>
#include <limits>
#include <unordered_map>

#include "embedded/ascii_case.h"

namespace tessel::embedded {
namespace {

constexpr std::size_t kMostPreparedStatements = 500;

// A bound value at an address that stays the same as long as the statement lives.
struct BoundCell {
  char kind = 't';
  long long integer = 0;
  double real = 0;
  std::string text;
  soci::indicator indicator = soci::i_null;
};

// 't' text or Null, 'd' double, 'l' whole number.
char KindOf(const Value& value) {
  if (value.IsNull() || value.IsText()) return 't';
  return value.IsDouble() ? 'd' : 'l';
}

void Assign(BoundCell& cell, const Value& value) {
  cell.indicator = value.IsNull() ? soci::i_null : soci::i_ok;
  if (value.IsNull()) return;
  if (cell.kind == 'l') {
    cell.integer = value.AsInt32();
  } else if (cell.kind == 'd') {
    cell.real = value.AsDouble();
  } else {
    cell.text = value.AsText();
  }
}

CellType TypeOf(soci::data_type type) {
  switch (type) {
    case soci::dt_integer:
    case soci::dt_long_long:
    case soci::dt_unsigned_long_long:
      return CellType::kInteger;
    case soci::dt_double:
      return CellType::kDouble;
    default:
      return CellType::kText;
  }
}

Value IntegerValue(long long value) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (value < Limits::min() || value > Limits::max()) return Value(static_cast<double>(value));
  return Value(static_cast<std::int32_t>(value));
}

std::string DateText(const std::tm& time) {
  char buffer[32];
  return {buffer, std::strftime(buffer, sizeof buffer, "%Y-%m-%d %H:%M:%S", &time)};
}

Value CellValue(const soci::row& row, std::size_t column) {
  if (row.get_indicator(column) == soci::i_null) return {};
  switch (row.get_properties(column).get_data_type()) {
    case soci::dt_integer:
      return IntegerValue(row.get<int>(column));
    case soci::dt_long_long:
      return IntegerValue(row.get<long long>(column));
    case soci::dt_unsigned_long_long:
      return Value(static_cast<double>(row.get<unsigned long long>(column)));
    case soci::dt_double:
      return Value(row.get<double>(column));
    case soci::dt_date:
      return Value(DateText(row.get<std::tm>(column)));
    default:
      return Value(row.get<std::string>(column));
  }
}

std::shared_ptr<const std::vector<ResultColumn>> ColumnsOf(const soci::row& row) {
  auto columns = std::make_shared<std::vector<ResultColumn>>();
  for (std::size_t i = 0; i < row.size(); ++i) {
    ResultColumn column{UpperCase(row.get_properties(i).get_name()),
                        TypeOf(row.get_properties(i).get_data_type())};
    columns->push_back(std::move(column));
  }
  return columns;
}

// A prepared statement with its bound cells and, for a query, its row.
class PreparedStatement {
 public:
  // `kinds` holds one character a value, see KindOf.
  PreparedStatement(soci::session& session, const std::string& sql, const std::string& kinds, bool hasRows)
      : statement_(session) {
    for (const char kind : kinds) {
      BoundCell& cell = cells_.emplace_back();
      cell.kind = kind;
      if (cell.kind == 'l') {
        statement_.exchange(soci::use(cell.integer, cell.indicator));
      } else if (cell.kind == 'd') {
        statement_.exchange(soci::use(cell.real, cell.indicator));
      } else {
        statement_.exchange(soci::use(cell.text, cell.indicator));
      }
    }
    statement_.alloc();
    statement_.prepare(sql);
    statement_.define_and_bind();
    if (hasRows) statement_.exchange_for_rowset(soci::into(row_));
  }
  ~PreparedStatement() { statement_.clean_up(); }
  PreparedStatement(const PreparedStatement&) = delete;
  PreparedStatement& operator=(const PreparedStatement&) = delete;

  [[nodiscard]] char Kind(std::size_t position) const { return cells_[position].kind; }

  [[nodiscard]] bool Accepts(const std::vector<Value>& values) const {
    if (values.size() != cells_.size()) return false;
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (!values[i].IsNull() && KindOf(values[i]) != cells_[i].kind) return false;
    }
    return true;
  }

  void Bind(const std::vector<Value>& values) {
    for (std::size_t i = 0; i < values.size(); ++i)
      Assign(cells_[i], values[i]);
  }

  // Every row is fetched, so that the statement holds no read lock afterwards.
  QueryResult Rows() {
    QueryResult result;
    statement_.execute();
    while (statement_.fetch()) {
      std::vector<Value>& cells = result.rows.emplace_back();
      cells.reserve(row_.size());
      for (std::size_t i = 0; i < row_.size(); ++i)
        cells.push_back(CellValue(row_, i));
    }
    if (!columns_) columns_ = ColumnsOf(row_);
    result.columns = columns_;
    return result;
  }

  long long Run() {
    statement_.execute(true);
    return statement_.get_affected_rows();
  }

 private:
  std::deque<BoundCell> cells_;
  soci::row row_;
  std::shared_ptr<const std::vector<ResultColumn>> columns_;
  soci::statement statement_;
};

}  // namespace

struct Database::Connection {
  explicit Connection(const std::string& path) : session(soci::sqlite3, "dbname=\"" + path + "\"") {}

  // The code with its extension, which tells a unique key from a missing parent. The library does not export
  // the type information that a check of the cast would need.
  [[gnu::no_sanitize("vptr")]] int ErrorCode() const {
    const auto* backend = static_cast<const soci::sqlite3_session_backend*>(session.get_backend());
    const int code = sqlite_api::sqlite3_extended_errcode(backend->conn_);
    return code > 0 && code < SQLITE_ROW ? code : (code > SQLITE_DONE ? code : SQLITE_ERROR);
  }

  template <class Action>
  auto Guarded(Action action) {
    try {
      return action();
    } catch (const soci::soci_error& error) {
      throw DatabaseError(error.what(), ErrorCode());
    }
  }

  PreparedStatement& Prepared(const std::string& sql, const std::vector<Value>& values, bool hasRows) {
    auto& known = (hasRows ? queries : commands)[sql];
    for (const auto& statement : known) {
      if (!statement->Accepts(values)) continue;
      statement->Bind(values);
      return *statement;
    }
    if (count >= kMostPreparedStatements) {
      queries.clear();
      commands.clear();
      count = 0;
      return Prepared(sql, values, hasRows);
    }
    const std::string kinds = KindsOf(values, known.empty() ? nullptr : known.back().get());
    known.push_back(std::make_unique<PreparedStatement>(session, sql, kinds, hasRows));
    ++count;
    known.back()->Bind(values);
    return *known.back();
  }

  // A Null takes the kind that an earlier statement of the same text has in its place.
  static std::string KindsOf(const std::vector<Value>& values, const PreparedStatement* earlier) {
    std::string kinds;
    for (std::size_t i = 0; i < values.size(); ++i) {
      kinds += values[i].IsNull() && earlier ? earlier->Kind(i) : KindOf(values[i]);
    }
    return kinds;
  }

  // The statements of one text differ in the kinds of their values.
  using Statements = std::unordered_map<std::string, std::vector<std::unique_ptr<PreparedStatement>>>;
  mutable soci::session session;
  Statements queries;
  Statements commands;
  std::size_t count = 0;
};

Database::Database(const std::string& path, std::chrono::milliseconds busyTimeout) {
  if (path.find('"') != std::string::npos) {
    throw HostError("A database path cannot contain a quotation mark: " + path);
  }
  try {
    connection_ = std::make_unique<Connection>(path);
  } catch (const soci::soci_error& error) {
    throw DatabaseError("Cannot open the database " + path + ": " + error.what(), SQLITE_CANTOPEN);
  }
  try {
    ExecuteOnce("PRAGMA busy_timeout = " + std::to_string(busyTimeout.count()));
    ExecuteOnce("PRAGMA foreign_keys = ON");
    if (path == kInMemory) return;
    ExecuteOnce("PRAGMA journal_mode = WAL");
    ExecuteOnce("PRAGMA synchronous = NORMAL");
  } catch (const DatabaseError& error) {
    if (error.Number() == SQLITE_NOTADB) throw DatabaseError(path + " is no database", SQLITE_NOTADB);
    throw;
  }
}

Database::~Database() = default;

QueryResult Database::Query(const std::string& sql, const std::vector<Value>& values) {
  return connection_->Guarded([&] { return connection_->Prepared(sql, values, true).Rows(); });
}

long long Database::Execute(const std::string& sql, const std::vector<Value>& values) {
  return connection_->Guarded([&] { return connection_->Prepared(sql, values, false).Run(); });
}

QueryResult Database::QueryOnce(const std::string& sql) {
  return connection_->Guarded([&] { return PreparedStatement(connection_->session, sql, "", true).Rows(); });
}

void Database::ExecuteOnce(const std::string& sql) {
  connection_->Guarded([&] { connection_->session << sql; });
}

void Database::Settle() {
  const QueryResult settled = QueryOnce("PRAGMA wal_checkpoint(TRUNCATE)");
  if (settled.rows.at(0).at(0).AsInt32() != 0) {
    throw DatabaseError("The database is being read and cannot be brought into one file", SQLITE_BUSY);
  }
}

WriteTransaction::WriteTransaction(Database& database) : database_(database) {
  database_.Execute("BEGIN IMMEDIATE");
}

WriteTransaction::~WriteTransaction() {
  if (!open_) return;
  try {
    database_.Execute("ROLLBACK");
  } catch (const DatabaseError&) {
    // The database has undone the transaction itself, as it does after a full disk.
  }
}

void WriteTransaction::Commit() {
  database_.Execute("COMMIT");
  open_ = false;
}

}  // namespace tessel::embedded
