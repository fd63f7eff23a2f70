#include "embedded/sql/sqlite/sqlite_connection.h"

#include <filesystem>
#include <unordered_map>

#include "embedded/sql/sqlite/read_permission.h"
#include "embedded/sql/sqlite/sqlite_statement.h"

namespace tessel::embedded {
namespace {

constexpr SqlDialect kDialect{
    "BEGIN", "BEGIN IMMEDIATE", "CAST(CURRENT_TIMESTAMP AS VARCHAR(40))", "TEXT", "", " LIKE ", "", true};

constexpr int kPrimaryCode = 0xff;

// Whether a database is there and nobody writes to it: there is no log beside it.
bool IsUnchanging(const std::string& path) {
  std::error_code error;
  const bool hasLog =
      std::filesystem::exists(path + "-wal", error) && std::filesystem::file_size(path + "-wal", error) != 0;
  return !hasLog && !error && std::filesystem::is_regular_file(path, error);
}

// The name under which a database in a folder that cannot be written is read as it is: what readers otherwise
// share would have to be written beside it.
std::string UnchangingName(const std::string& path) {
  std::string name = "file:";
  for (const char c : path) {
    if (c == '%' || c == '?' || c == '#') {
      name += c == '%' ? "%25" : c == '?' ? "%3f" : "%23";
    } else {
      name += c;
    }
  }
  return name + "?immutable=1";
}

class SqliteConnection final : public SqlConnection {
 public:
  SqliteConnection(const std::string& path, std::chrono::milliseconds busyTimeout) {
    const auto open = [&](const std::string& name) {
      Open(name, name == path ? 0 : SQLITE_OPEN_URI);
      RunOnce("PRAGMA busy_timeout = " + std::to_string(busyTimeout.count()));
      RunOnce("PRAGMA foreign_keys = ON");
      if (name == kInMemory) return;
      if (name == path) RunOnce("PRAGMA journal_mode = WAL");
      RunOnce("PRAGMA synchronous = FULL");
    };
    try {
      open(path);
    } catch (const DatabaseError& error) {
      const int code = error.Number() & kPrimaryCode;
      if (code == kCodeNoDatabase) throw DatabaseError(path + " is no database", kCodeNoDatabase);
      if ((code != kCodeReadOnly && code != kCodeCannotOpen) || !IsUnchanging(path)) throw;
      open(UnchangingName(path));
    }
  }

  [[nodiscard]] const SqlDialect& Dialect() const override { return kDialect; }
  [[nodiscard]] SqlStatementPtr Prepare(const std::string& sql) override {
    return std::make_unique<SqliteStatement>(database_.get(), sql);
  }
  void RunOnce(const std::string& sql) override {
    const int code = sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) ThrowRefusal(database_.get(), code);
  }
  [[nodiscard]] QueryResult ReadTables(const std::string& sql, const TableCheck& readable) override {
    const ReadPermission permission(database_.get(), readable);
    return SqliteStatement(database_.get(), sql).Rows({});
  }
  // A steering statement that failed is forgotten: left as it is, it would still count as running.
  void Steer(const std::string& sql) override {
    auto& statement = steering_[sql];
    if (!statement) statement = Prepare(sql);
    try {
      statement->Run({});
    } catch (const DatabaseError&) {
      steering_.erase(sql);
      throw;
    }
  }
  [[nodiscard]] bool InTransaction() const override { return sqlite3_get_autocommit(database_.get()) == 0; }
  [[nodiscard]] std::uint64_t Changes() const override {
    return static_cast<std::uint64_t>(sqlite3_total_changes64(database_.get()));
  }
  [[nodiscard]] bool HasTable(const std::string& upperCaseName) override {
    if (!hasTable_) hasTable_ = Prepare("SELECT NAME FROM sqlite_master WHERE NAME = :name");
    return !hasTable_->Rows({Value(upperCaseName)}).rows.empty();
  }
  void Settle() override {
    const QueryResult settled = Prepare("PRAGMA wal_checkpoint(TRUNCATE)")->Rows({});
    if (settled.rows.at(0).at(0).AsInt32() != 0) {
      throw DatabaseError("The database is being read and cannot be brought into one file", kCodeBusy);
    }
  }

 private:
  struct Closer {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
  };
  void Open(const std::string& name, int moreFlags) {
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | moreFlags;
    sqlite3* database = nullptr;
    const int code = sqlite3_open_v2(name.c_str(), &database, flags, nullptr);
    database_.reset(database);
    if (code != SQLITE_OK) {
      throw DatabaseError("Cannot open the database " + name + ": " + sqlite3_errstr(code), kCodeCannotOpen);
    }
  }

  std::unique_ptr<sqlite3, Closer> database_;
  std::unordered_map<std::string, SqlStatementPtr> steering_;
  SqlStatementPtr hasTable_;
};

}  // namespace

std::unique_ptr<SqlConnection> OpenSqlite(const std::string& path, std::chrono::milliseconds busyTimeout) {
  return std::make_unique<SqliteConnection>(path, busyTimeout);
}

std::string DatabaseErrorText(int code) {
  const std::string text = sqlite3_errstr(code & kPrimaryCode);
  return code <= 0 || text == "unknown error" ? std::string() : text;
}

}  // namespace tessel::embedded
