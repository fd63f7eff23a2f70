// The connection behind a Database: its prepared statements and open transactions.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "embedded/sql/sql_connection.h"
#include "embedded/store/number_blocks.h"

namespace tessel::embedded {

struct Connection {
  Connection(std::unique_ptr<SqlConnection> connection, StatementWatch statementWatch);

  template <class Action>
  auto Guarded(Action action) {
    try {
      return action();
    } catch (const DatabaseError& error) {
      lastRefusal = error.what();
      throw;
    }
  }

  // Takes part in the open transaction, or begins the moment of an open snapshot, or ends it.
  void Prepare(const std::string& text, bool writes);
  // Runs a prepared statement. A statement that failed is forgotten: left as it is, it would still count as
  // running, and keep later writes from being committed.
  template <class Action>
  auto WithStatement(const std::string& text, Action action) {
    try {
      return action(Prepared(text));
    } catch (const DatabaseError& error) {
      lastRefusal = error.what();
      statements.erase(text);
      throw;
    }
  }
  SqlStatement& Prepared(const std::string& text);
  // Another one whenever a read could come back otherwise than before.
  [[nodiscard]] std::uint64_t StateNumber() const;
  // A statement that steers transactions.
  void Steer(const std::string& text);

  // Error: DatabaseError when the database has undone the open transaction by itself.
  void CheckTransaction() const;
  void BeginWrite();
  void CommitWrite();
  void UndoWrite() noexcept;
  // Only in a write transaction. Errors: DatabaseError, HostError for a name under which no numbers are
  // drawn.
  std::int32_t NextNumber(const std::string& name);
  void GiveNumbersBack();
  // Keeps an undo step of the innermost open write transaction as long as its owner lives.
  void KeepUndo(const std::weak_ptr<const void>& owner, std::function<void()> undo);
  void EndMoment() noexcept;

  std::unique_ptr<SqlConnection> sql;
  StatementWatch watch;
  std::unordered_map<std::string, SqlStatementPtr> statements;
  std::string lastRefusal;

  struct OpenWrite {
    std::uint64_t number;
    std::size_t earlierSteps;  // undo steps that belong to outer transactions
  };
  std::vector<OpenWrite> writes;
  std::uint64_t lastNumber = 0;
  NumberBlocks numbers;
  struct UndoStep {
    std::weak_ptr<const void> owner;
    std::function<void()> undo;
  };
  std::vector<UndoStep> undoSteps;
  std::size_t sweepUndoStepsAt = 0;  // so many of them
  std::uint64_t moments = 0;  // begun so far, be it by a transaction, its undoing or a change of the tables
  int snapshots = 0;
  bool momentOpen = false;
};

}  // namespace tessel::embedded
