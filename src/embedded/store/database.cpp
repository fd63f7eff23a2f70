#include "embedded/store/database.h"

#include <filesystem>

#include "embedded/store/connection.h"
#include "embedded/store/read_permission.h"

namespace tessel::embedded {
namespace {

constexpr int kBusy = 5;
constexpr int kCannotOpen = 14;
constexpr int kNoDatabase = 26;
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

}  // namespace

Database::Database(const std::string& path, DatabaseOptions options) {
  if (path.find('"') != std::string::npos) {
    throw HostError("A database path cannot contain a quotation mark: " + path);
  }
  const auto open = [&](const std::string& name) {
    try {
      connection_ = std::make_unique<Connection>(name, options.watch);
    } catch (const soci::soci_error& error) {
      throw DatabaseError("Cannot open the database " + path + ": " + error.what(), kCannotOpen);
    }
    ExecuteOnce("PRAGMA busy_timeout = " + std::to_string(options.busyTimeout.count()));
    ExecuteOnce("PRAGMA foreign_keys = ON");
    if (name == kInMemory) return;
    if (name == path) ExecuteOnce("PRAGMA journal_mode = WAL");
    ExecuteOnce("PRAGMA synchronous = FULL");
  };
  try {
    open(path);
  } catch (const DatabaseError& error) {
    const int code = error.Number() & kPrimaryCode;
    if (code == kNoDatabase) throw DatabaseError(path + " is no database", kNoDatabase);
    if ((code != kCodeReadOnly && code != kCannotOpen) || !IsUnchanging(path)) throw;
    open(UnchangingName(path));
  }
}

Database::~Database() = default;

QueryResult Database::Query(const std::string& sql, const std::vector<Value>& values) {
  connection_->Prepare(sql, false);
  return connection_->WithStatement(sql,
                                    [&](PreparedStatement& statement) { return statement.Rows(values); });
}

long long Database::Execute(const std::string& sql, const std::vector<Value>& values) {
  connection_->Prepare(sql, true);
  return connection_->WithStatement(sql, [&](PreparedStatement& statement) { return statement.Run(values); });
}

QueryResult Database::QueryOnce(const std::string& sql) {
  connection_->Prepare(sql, false);
  return connection_->Guarded([&] { return PreparedStatement(connection_->session, sql).Rows({}); });
}

QueryResult Database::QueryTables(const std::string& sql, const TableCheck& readable) {
  connection_->Prepare(sql, false);
  return connection_->Guarded([&] {
    const ReadPermission permission(connection_->session, readable);
    return PreparedStatement(connection_->session, sql).Rows({});
  });
}

void Database::ExecuteOnce(const std::string& sql) {
  connection_->Prepare(sql, true);
  connection_->Guarded([&] { connection_->session << sql; });
}

void Database::Settle() {
  const QueryResult settled = QueryOnce("PRAGMA wal_checkpoint(TRUNCATE)");
  if (settled.rows.at(0).at(0).AsInt32() != 0) {
    throw DatabaseError("The database is being read and cannot be brought into one file", kBusy);
  }
}

std::uint64_t Database::StateNumber() const {
  return connection_->AutoCommits() ? 0 : connection_->StateNumber();
}

std::uint64_t Database::Transaction() const {
  return connection_->writes.empty() ? 0 : connection_->writes.back().number;
}

void Database::OnUndo(std::function<void()> undo) {
  if (Writing()) connection_->undoSteps.push_back(std::move(undo));
}

}  // namespace tessel::embedded
