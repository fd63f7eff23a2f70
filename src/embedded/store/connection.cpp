#include "embedded/store/connection.h"

#include <algorithm>

namespace tessel::embedded {
namespace {

constexpr std::size_t kMostPreparedStatements = 500;
constexpr std::size_t kFewUndoSteps = 256;
constexpr const char* kTakeNumbers =
    "UPDATE TESSEL_NUMBER SET NEXT_VALUE = NEXT_VALUE + :count WHERE NAME = :name RETURNING NEXT_VALUE AS "
    "BEHIND";
constexpr const char* kGiveNumbersBack =
    "UPDATE TESSEL_NUMBER SET NEXT_VALUE = NEXT_VALUE - :count WHERE NAME = :name";

std::string SavePoint(std::size_t depth) {
  return "T" + std::to_string(depth);
}

}  // namespace

Connection::Connection(std::unique_ptr<SqlConnection> connection, StatementWatch statementWatch)
    : sql(std::move(connection)), watch(std::move(statementWatch)) {}

std::uint64_t Connection::StateNumber() const {
  return moments + sql->Changes();
}

void Connection::Steer(const std::string& text) {
  if (watch) watch(text);
  Guarded([&] { sql->Steer(text); });
}

void Connection::Prepare(const std::string& text, bool changes) {
  if (changes) ++moments;
  if (!writes.empty()) {
    CheckTransaction();
  } else if (changes) {
    EndMoment();
  } else if (snapshots > 0 && !(momentOpen && sql->InTransaction())) {
    Steer(sql->Dialect().beginReading);
    momentOpen = true;
    ++moments;
  }
  if (watch) watch(text);
}

SqlStatement& Connection::Prepared(const std::string& text) {
  if (const auto known = statements.find(text); known != statements.end()) return *known->second;
  if (statements.size() >= kMostPreparedStatements) statements.clear();
  return *statements.emplace(text, sql->Prepare(text)).first->second;
}

// The database does so after a full disk. A statement would then stand alone, and for good.
void Connection::CheckTransaction() const {
  if (!sql->InTransaction())
    throw DatabaseError("The database has undone the transaction: " + lastRefusal, kCodeUndone);
}

void Connection::BeginWrite() {
  EndMoment();
  writes.reserve(writes.size() + 1);
  ++moments;
  Steer(writes.empty() ? sql->Dialect().beginWriting : "SAVEPOINT " + SavePoint(writes.size()));
  writes.push_back({++lastNumber, undoSteps.size()});
}

void Connection::CommitWrite() {
  CheckTransaction();
  if (writes.size() == 1) GiveNumbersBack();
  Steer(writes.size() == 1 ? "COMMIT" : "RELEASE " + SavePoint(writes.size() - 1));
  writes.pop_back();
  if (writes.empty()) undoSteps.clear();
}

std::int32_t Connection::NextNumber(const std::string& name) {
  return numbers.Draw(name, [&](std::int32_t count) {
    Prepare(kTakeNumbers, false);
    const QueryResult taken = WithStatement(kTakeNumbers, [&](SqlStatement& statement) {
      return statement.Rows({Value(count), Value(name)});
    });
    if (taken.rows.empty()) throw HostError("The database draws no numbers under the name \"" + name + "\"");
    return taken.rows[0][0].AsInt32();
  });
}

void Connection::GiveNumbersBack() {
  numbers.End([this](const std::string& name, std::int32_t count) {
    Prepare(kGiveNumbersBack, true);
    WithStatement(kGiveNumbersBack, [&](SqlStatement& statement) {
      return statement.Run({Value(count), Value(name)});
    });
  });
}

void Connection::UndoWrite() noexcept {
  ++moments;
  numbers.Forget();
  const std::size_t depth = writes.size() - 1;
  try {
    if (depth == 0) {
      sql->Steer("ROLLBACK");
    } else {
      sql->Steer("ROLLBACK TO " + SavePoint(depth));
      sql->Steer("RELEASE " + SavePoint(depth));
    }
  } catch (const std::exception&) {
    // The database has undone the transaction itself, as it does after a full disk.
  }
  for (; undoSteps.size() > writes.back().earlierSteps; undoSteps.pop_back())
    undoSteps.back().undo();
  writes.pop_back();
}

// An export makes a link a document in one transaction, and nobody holds most of them any more.
void Connection::KeepUndo(const std::weak_ptr<const void>& owner, std::function<void()> undo) {
  if (undoSteps.size() >= std::max(kFewUndoSteps, sweepUndoStepsAt)) {
    const auto first = undoSteps.begin() + static_cast<std::ptrdiff_t>(writes.back().earlierSteps);
    undoSteps.erase(
        std::remove_if(first, undoSteps.end(), [](const UndoStep& step) { return step.owner.expired(); }),
        undoSteps.end());
    sweepUndoStepsAt = 2 * undoSteps.size();
  }
  undoSteps.push_back({owner, std::move(undo)});
}

void Connection::EndMoment() noexcept {
  if (!momentOpen) return;
  momentOpen = false;
  try {
    sql->Steer("COMMIT");
  } catch (const std::exception&) {
    // After a read error the transaction is gone.
  }
}

}  // namespace tessel::embedded
