// The connection behind a Database: its library session, prepared statements and open transactions.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "embedded/store/prepared_statement.h"
#include "embedded/store/refusal.h"

namespace tessel::embedded {

struct Connection {
  Connection(const std::string& path, StatementWatch statementWatch);

  // The code of the last error with its extension, which tells a unique key from a missing parent.
  [[nodiscard]] int ErrorCode() const;
  // Whether no transaction is open, be it since the database has undone it by itself.
  [[nodiscard]] bool AutoCommits() const;

  template <class Action>
  auto Guarded(Action action) {
    try {
      return action();
    } catch (const soci::soci_error& error) {
      lastRefusal = error.what();
      throw DatabaseError(lastRefusal, ErrorCode());
    }
  }

  // Takes part in the open transaction, or begins the moment of an open snapshot, or ends it.
  void Prepare(const std::string& sql, bool writes);
  // Runs a prepared statement. A statement that failed is forgotten: left as it is, it would still count as
  // running, and keep later writes from being committed.
  template <class Action>
  auto WithStatement(const std::string& sql, Action action) {
    try {
      return action(Prepared(sql));
    } catch (const soci::soci_error& error) {
      lastRefusal = error.what();
      const int code = ErrorCode();
      statements.erase(sql);
      throw DatabaseError(lastRefusal, code);
    }
  }
  PreparedStatement& Prepared(const std::string& sql);
  // Another one whenever a read could come back otherwise than before.
  [[nodiscard]] std::uint64_t StateNumber() const;
  // A statement that steers transactions.
  void Steer(const std::string& sql);

  // Error: DatabaseError when the database has undone the open transaction by itself.
  void CheckTransaction() const;
  void BeginWrite();
  void CommitWrite();
  void UndoWrite() noexcept;
  void EndMoment() noexcept;

  mutable soci::session session;
  StatementWatch watch;
  std::unordered_map<std::string, std::unique_ptr<PreparedStatement>> statements;
  std::string lastRefusal;

  struct OpenWrite {
    std::uint64_t number;
    std::size_t earlierSteps;  // undo steps that belong to outer transactions
  };
  std::vector<OpenWrite> writes;
  std::uint64_t lastNumber = 0;
  std::vector<std::function<void()>> undoSteps;
  std::uint64_t moments = 0;  // begun so far, be it by a transaction, its undoing or a change of the tables
  int snapshots = 0;
  bool momentOpen = false;
};

}  // namespace tessel::embedded
