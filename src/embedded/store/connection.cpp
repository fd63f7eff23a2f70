#include "embedded/store/connection.h"

#include "embedded/store/sqlite_handle.h"

namespace tessel::embedded {
namespace {

constexpr std::size_t kMostPreparedStatements = 500;

std::string SavePoint(std::size_t depth) {
  return "T" + std::to_string(depth);
}

}  // namespace

std::string DatabaseErrorText(int code) {
  const std::string text = sqlite_api::sqlite3_errstr(code & 0xff);
  return code <= 0 || text == "unknown error" ? std::string() : text;
}

Connection::Connection(const std::string& path, StatementWatch statementWatch)
    : session(soci::sqlite3, "dbname=\"" + path + "\""), watch(std::move(statementWatch)) {}

int Connection::ErrorCode() const {
  const int code = sqlite_api::sqlite3_extended_errcode(Handle(session));
  return code > 0 && code < SQLITE_ROW ? code : (code > SQLITE_DONE ? code : SQLITE_ERROR);
}

bool Connection::AutoCommits() const {
  return sqlite_api::sqlite3_get_autocommit(Handle(session)) != 0;
}

std::uint64_t Connection::StateNumber() const {
  return moments + static_cast<std::uint64_t>(sqlite_api::sqlite3_total_changes64(Handle(session)));
}

void Connection::Steer(const std::string& sql) {
  if (watch) watch(sql);
  WithStatement(sql, [](PreparedStatement& statement) { statement.Run({}); });
}

void Connection::Prepare(const std::string& sql, bool changes) {
  if (changes) ++moments;
  if (!writes.empty()) {
    CheckTransaction();
  } else if (changes) {
    EndMoment();
  } else if (snapshots > 0 && !(momentOpen && !AutoCommits())) {
    Steer("BEGIN");
    momentOpen = true;
    ++moments;
  }
  if (watch) watch(sql);
}

PreparedStatement& Connection::Prepared(const std::string& sql) {
  if (const auto known = statements.find(sql); known != statements.end()) return *known->second;
  if (statements.size() >= kMostPreparedStatements) statements.clear();
  return *statements.emplace(sql, std::make_unique<PreparedStatement>(session, sql)).first->second;
}

// The database does so after a full disk. A statement would then stand alone, and for good.
void Connection::CheckTransaction() const {
  if (AutoCommits())
    throw DatabaseError("The database has undone the transaction: " + lastRefusal, SQLITE_ABORT);
}

void Connection::BeginWrite() {
  EndMoment();
  writes.reserve(writes.size() + 1);
  ++moments;
  Steer(writes.empty() ? "BEGIN IMMEDIATE" : "SAVEPOINT " + SavePoint(writes.size()));
  writes.push_back({++lastNumber, undoSteps.size()});
}

void Connection::CommitWrite() {
  CheckTransaction();
  Steer(writes.size() == 1 ? "COMMIT" : "RELEASE " + SavePoint(writes.size() - 1));
  writes.pop_back();
  if (writes.empty()) undoSteps.clear();
}

void Connection::UndoWrite() noexcept {
  ++moments;
  const std::size_t depth = writes.size() - 1;
  try {
    if (depth == 0) {
      Guarded([&] { session << "ROLLBACK"; });
    } else {
      Guarded([&] { session << "ROLLBACK TO " + SavePoint(depth); });
      Guarded([&] { session << "RELEASE " + SavePoint(depth); });
    }
  } catch (const std::exception&) {
    // The database has undone the transaction itself, as it does after a full disk.
  }
  for (; undoSteps.size() > writes.back().earlierSteps; undoSteps.pop_back())
    undoSteps.back()();
  writes.pop_back();
}

void Connection::EndMoment() noexcept {
  if (!momentOpen) return;
  momentOpen = false;
  try {
    Guarded([&] { session << "COMMIT"; });
  } catch (const std::exception&) {
    // After a read error the transaction is gone.
  }
}

}  // namespace tessel::embedded
