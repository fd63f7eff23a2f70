#include "embedded/sql/postgresql/postgresql_connection.h"

#include <charconv>
#include <string_view>

#include "embedded/sql/postgresql/free_text.h"
#include "embedded/sql/postgresql/server_link.h"
#include "embedded/sql/postgresql/server_values.h"
#include "host/ascii.h"

namespace tessel::embedded {
namespace {

// The lock is the database's own, so that it is gone with a connection that is lost; a writer who has come to
// a halt is ended by the server.
constexpr SqlDialect kDialect{"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY",
                              "BEGIN ISOLATION LEVEL READ COMMITTED READ WRITE; SET LOCAL "
                              "idle_in_transaction_session_timeout = '5min'; "
                              "SELECT pg_advisory_xact_lock(1413829459, hashtext(current_schema()))",
                              "to_char(CURRENT_TIMESTAMP AT TIME ZONE 'UTC', 'YYYY-MM-DD HH24:MI:SS')",
                              "TEXT COLLATE \"C\"",
                              "CAST(",
                              " AS TEXT) COLLATE \"C\" ILIKE ",
                              " ESCAPE ''",
                              false};

struct SharedLink {
  SharedLink(const ServerAddress& address, std::chrono::milliseconds lockTimeout)
      : link(address, lockTimeout) {}

  // Begins a transaction. A link that was lost meanwhile is made anew.
  void Begin(const char* text) {
    if (link.IsLost()) link.Renew();
    try {
      link.Run(text);
    } catch (const ConnectionLost&) {
      link.Renew();
      link.Run(text);
    } catch (const DatabaseError& error) {
      if (link.InTransaction()) link.Run("ROLLBACK");
      if (error.Number() != kCodeBusy) throw;
      throw DatabaseError("The database is busy: another client did not end its writing in time", kCodeBusy);
    }
    writing = text == kDialect.beginWriting;
  }
  void Commit() {
    const ServerResult answer = link.Run("COMMIT");
    writing = false;
    if (std::string_view(PQcmdStatus(answer.get())) != "COMMIT")
      throw DatabaseError("The database has undone the transaction", kCodeUndone);
  }
  void RollBack() {
    writing = false;
    if (!link.IsLost()) link.Run("ROLLBACK");
  }

  ServerLink link;
  bool writing = false;  // a writing transaction is open, or was when the link was lost
  std::uint64_t changes = 0;
  std::uint64_t lastName = 0;
};

class PostgresqlStatement final : public SqlStatement {
 public:
  PostgresqlStatement(SharedLink& shared, const std::string& sql)
      : shared_(shared), sql_(WithNumbers(sql)), name_("t" + std::to_string(++shared.lastName)) {}
  ~PostgresqlStatement() override {
    try {
      if (preparedIn_ == shared_.link.Number()) shared_.link.Forget(name_);
    } catch (const std::exception&) {
      // It stays prepared until the connection ends.
    }
  }
  PostgresqlStatement(const PostgresqlStatement&) = delete;
  PostgresqlStatement& operator=(const PostgresqlStatement&) = delete;

  [[nodiscard]] QueryResult Rows(const std::vector<Value>& values) override {
    return ResultOf(*Execute(values));
  }
  long long Run(const std::vector<Value>& values) override {
    if (shared_.link.InTransaction()) return Changed(*Execute(values));
    shared_.Begin(kDialect.beginWriting);
    try {
      const ServerResult result = Execute(values);
      shared_.Commit();
      return Changed(*result);
    } catch (...) {
      shared_.RollBack();
      throw;
    }
  }

 private:
  ServerResult Execute(const std::vector<Value>& values) {
    if (values.size() != sql_.placeholders)
      throw DatabaseError("The statement takes another number of values", kCodeError);
    const Parameters parameters(values);
    ServerLink& link = shared_.link;
    if (shared_.writing) {
      const bool isNew = preparedIn_ != link.Number();
      ServerResult result = link.ExecuteGuarded(name_, isNew ? sql_.text : std::string(), parameters.Texts());
      preparedIn_ = link.Number();
      return result;
    }
    if (link.InTransaction()) return ExecuteReading(parameters);
    if (link.IsLost()) link.Renew();
    try {
      return ExecutePrepared(parameters);
    } catch (const ConnectionLost&) {
      link.Renew();
      return ExecutePrepared(parameters);
    }
  }

  // A failure makes a reading transaction useless: it ends, and the next read begins another one.
  ServerResult ExecuteReading(const Parameters& parameters) {
    try {
      return ExecutePrepared(parameters);
    } catch (const DatabaseError&) {
      shared_.RollBack();
      throw;
    }
  }

  ServerResult ExecutePrepared(const Parameters& parameters) {
    if (preparedIn_ != shared_.link.Number()) {
      shared_.link.Prepare(name_, sql_.text);
      preparedIn_ = shared_.link.Number();
    }
    return shared_.link.Execute(name_, parameters.Texts());
  }

  long long Changed(PGresult& result) {
    long long rows = 0;
    const std::string_view text = PQcmdTuples(&result);
    std::from_chars(text.data(), text.data() + text.size(), rows);
    shared_.changes += static_cast<std::uint64_t>(rows);
    return rows;
  }

  SharedLink& shared_;
  NumberedText sql_;
  std::string name_;
  int preparedIn_ = 0;  // the link's number
};

class PostgresqlConnection final : public SqlConnection {
 public:
  PostgresqlConnection(const ServerAddress& address, std::chrono::milliseconds busyTimeout)
      : shared_(address, busyTimeout) {}

  [[nodiscard]] const SqlDialect& Dialect() const override { return kDialect; }
  [[nodiscard]] SqlStatementPtr Prepare(const std::string& sql) override {
    return std::make_unique<PostgresqlStatement>(shared_, sql);
  }
  void RunOnce(const std::string& sql) override { PostgresqlStatement(shared_, sql).Run({}); }

  [[nodiscard]] QueryResult ReadTables(const std::string& sql, const TableCheck& readable) override {
    CheckFunctions(sql);
    const bool inside = shared_.link.InTransaction();
    if (!inside) {
      shared_.Begin("BEGIN ISOLATION LEVEL READ COMMITTED READ ONLY");
    } else if (shared_.writing) {
      shared_.link.Run("SAVEPOINT FREE; SET LOCAL transaction_read_only = on");
    }
    try {
      CheckTables(shared_.link, sql, readable);
      QueryResult result = ResultOf(*shared_.link.RunSingle(sql));
      EndFreeText(inside, false);
      return result;
    } catch (const DatabaseError&) {
      EndFreeText(inside, true);
      throw;
    }
  }

  void Steer(const std::string& sql) override {
    if (sql == kDialect.beginReading) {
      shared_.Begin(kDialect.beginReading);
    } else if (sql == kDialect.beginWriting) {
      shared_.Begin(kDialect.beginWriting);
    } else if (sql == "COMMIT") {
      shared_.Commit();
    } else if (sql == "ROLLBACK") {
      shared_.RollBack();
    } else {
      shared_.link.Run(sql);
    }
  }
  [[nodiscard]] bool InTransaction() const override { return shared_.link.InTransaction(); }
  [[nodiscard]] std::uint64_t Changes() const override { return shared_.changes; }
  [[nodiscard]] bool HasTable(const std::string& upperCaseName) override {
    if (!hasTable_) hasTable_ = Prepare("SELECT to_regclass(:name)");
    return !hasTable_->Rows({Value(LowerCase(upperCaseName))}).rows.at(0).at(0).IsNull();
  }
  void Settle() override {}

 private:
  // As for prepared statements, a failure ends a reading transaction.
  void EndFreeText(bool inside, bool failed) {
    if (shared_.link.IsLost()) return;
    if (shared_.writing) {
      shared_.link.Run("ROLLBACK TO FREE; RELEASE FREE");
    } else if (!inside || failed) {
      shared_.link.Run("ROLLBACK");
    }
  }

  SharedLink shared_;
  SqlStatementPtr hasTable_;
};

}  // namespace

std::unique_ptr<SqlConnection> OpenPostgresql(const ServerAddress& address,
                                              std::chrono::milliseconds busyTimeout) {
  return std::make_unique<PostgresqlConnection>(address, busyTimeout);
}

}  // namespace tessel::embedded
