#include "embedded/sql/sqlite/sqlite_statement.h"

#include <cstdint>
#include <limits>
#include <string_view>
#include <system_error>

#include "host/ascii.h"

namespace tessel::embedded {
namespace {

int Primary(int code) {
  return code & 0xff;
}

// The system's error number of the last failed call on a file of the database, 0 for none.
int FileError(sqlite3* database) {
  int number = 0;
  (void)sqlite3_file_control(database, "main", SQLITE_FCNTL_LAST_ERRNO, &number);
  sqlite3_file* log = nullptr;
  const bool asked =
      number == 0 && sqlite3_file_control(database, "main", SQLITE_FCNTL_JOURNAL_POINTER, &log) == SQLITE_OK;
  if (asked && log != nullptr && log->pMethods != nullptr)
    (void)log->pMethods->xFileControl(log, SQLITE_FCNTL_LAST_ERRNO, &number);
  return number;
}

// `text` holds the value's text as long as it is bound.
int Bind(sqlite3_stmt* statement, int position, const Value& value, std::string& text) {
  if (value.IsNull()) return sqlite3_bind_null(statement, position);
  if (value.IsText() || value.IsDate()) {
    text = value.AsText();
    return sqlite3_bind_text64(statement, position, text.data(), text.size(), nullptr, SQLITE_UTF8);
  }
  if (value.IsDouble()) return sqlite3_bind_double(statement, position, value.AsDouble());
  return sqlite3_bind_int(statement, position, value.AsInt32());
}

CellType TypeOf(int cellType) {
  if (cellType == SQLITE_INTEGER) return CellType::kInteger;
  return cellType == SQLITE_FLOAT ? CellType::kDouble : CellType::kText;
}

CellType DeclaredType(const std::string& upperCaseName) {
  const auto has = [&](const char* part) { return upperCaseName.find(part) != std::string::npos; };
  if (has("INT") || has("BOOL")) return CellType::kInteger;
  const bool real = has("REAL") || has("FLOA") || has("DOUB") || has("NUMERIC") || has("DECIMAL");
  return real ? CellType::kDouble : CellType::kText;
}

Value IntegerValue(long long value) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (value < Limits::min() || value > Limits::max()) return Value(static_cast<double>(value));
  return Value(static_cast<std::int32_t>(value));
}

}  // namespace

void ThrowRefusal(sqlite3* database, int code) {
  // The connection keeps the text of its last failed call alone.
  const int last = sqlite3_extended_errcode(database);
  const bool told = Primary(last) == Primary(code);
  std::string text = told ? sqlite3_errmsg(database) : sqlite3_errstr(code);
  if (told) code = last;
  const bool byFile =
      Primary(code) == SQLITE_IOERR || Primary(code) == SQLITE_CANTOPEN || Primary(code) == SQLITE_CORRUPT;
  if (const int number = byFile ? FileError(database) : 0; number != 0) {
    // A device that fails to read looks to the library like a file with wrong content.
    if (Primary(code) == SQLITE_CORRUPT) {
      code = kCodeInputOutput;
      text = sqlite3_errstr(code);
    }
    text += " (" + std::generic_category().message(number) + ")";
  }
  const bool refusal = code > SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE;
  throw DatabaseError(text, refusal ? code : kCodeError);
}

// One run of the statement, which leaves it ready for the next one, and no values behind.
class SqliteStatement::Execution {
 public:
  Execution(SqliteStatement& statement, const std::vector<Value>& values)
      : database_(statement.database_), statement_(statement.statement_.get()) {
    std::vector<std::string>& texts = statement.texts_;
    if (texts.size() != values.size())
      throw DatabaseError("The statement takes another number of values", kCodeError);
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const int code = Bind(statement_, static_cast<int>(i) + 1, values[i], texts[i]);
      if (code != SQLITE_OK) ThrowRefusal(database_, code);
    }
  }
  ~Execution() {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
  }
  Execution(const Execution&) = delete;
  Execution& operator=(const Execution&) = delete;

  // Whether there is another row.
  bool Step() {
    const int code = sqlite3_step(statement_);
    if (code != SQLITE_ROW && code != SQLITE_DONE) ThrowRefusal(database_, code);
    return code == SQLITE_ROW;
  }

 private:
  sqlite3* database_;
  sqlite3_stmt* statement_;
};

SqliteStatement::SqliteStatement(sqlite3* database, const std::string& sql) : database_(database) {
  sqlite3_stmt* prepared = nullptr;
  const int code =
      sqlite3_prepare_v2(database_, sql.data(), static_cast<int>(sql.size()), &prepared, nullptr);
  statement_.reset(prepared);
  if (code != SQLITE_OK) ThrowRefusal(database_, code);
  if (!prepared) throw DatabaseError("The statement is empty", kCodeError);
  texts_.resize(static_cast<std::size_t>(sqlite3_bind_parameter_count(prepared)));
}

Value SqliteStatement::Cell(int column) const {
  sqlite3_stmt* statement = statement_.get();
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_INTEGER:
      return IntegerValue(sqlite3_column_int64(statement, column));
    case SQLITE_FLOAT:
      return Value(sqlite3_column_double(statement, column));
    default: {
      const auto* text = static_cast<const char*>(sqlite3_column_blob(statement, column));
      const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
      return text ? Value(std::string_view(text, size)) : Value(std::string_view());
    }
  }
}

// A column that is computed has the type of its value in the first row.
std::shared_ptr<const std::vector<ResultColumn>> SqliteStatement::Columns(bool hasRow) const {
  auto columns = std::make_shared<std::vector<ResultColumn>>();
  sqlite3_stmt* statement = statement_.get();
  const int count = sqlite3_column_count(statement);
  for (int i = 0; i < count; ++i) {
    const char* name = sqlite3_column_name(statement, i);
    const char* declared = sqlite3_column_decltype(statement, i);
    const int cellType = hasRow ? sqlite3_column_type(statement, i) : SQLITE_NULL;
    columns->push_back(
        {UpperCase(name ? name : ""), declared ? DeclaredType(UpperCase(declared)) : TypeOf(cellType)});
  }
  return columns;
}

QueryResult SqliteStatement::Rows(const std::vector<Value>& values) {
  QueryResult result;
  Execution execution(*this, values);
  bool hasRow = execution.Step();
  if (!columns_) columns_ = Columns(hasRow);
  result.columns = columns_;
  const int count = static_cast<int>(columns_->size());
  for (; hasRow; hasRow = execution.Step()) {
    std::vector<Value>& cells = result.rows.emplace_back();
    cells.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
      cells.push_back(Cell(i));
  }
  return result;
}

long long SqliteStatement::Run(const std::vector<Value>& values) {
  Execution execution(*this, values);
  while (execution.Step()) {
  }
  return sqlite3_changes(database_);
}

}  // namespace tessel::embedded
