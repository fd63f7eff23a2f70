#include "embedded/store/database.h"

#include "embedded/store/connection.h"

namespace tessel::embedded {

Database::Database(const std::string& path, DatabaseOptions options)
    : Database(OpenSqlite(path, options.busyTimeout), std::move(options.watch)) {}

Database::Database(std::unique_ptr<SqlConnection> connection, StatementWatch watch)
    : connection_(std::make_unique<Connection>(std::move(connection), std::move(watch))) {}

Database::~Database() = default;

QueryResult Database::Query(const std::string& sql, const std::vector<Value>& values) {
  connection_->Prepare(sql, false);
  return connection_->WithStatement(sql, [&](SqlStatement& statement) { return statement.Rows(values); });
}

long long Database::Execute(const std::string& sql, const std::vector<Value>& values) {
  connection_->Prepare(sql, true);
  return connection_->WithStatement(sql, [&](SqlStatement& statement) { return statement.Run(values); });
}

QueryResult Database::QueryTables(const std::string& sql, const TableCheck& readable) {
  connection_->Prepare(sql, false);
  return connection_->Guarded([&] { return connection_->sql->ReadTables(sql, readable); });
}

void Database::ExecuteOnce(const std::string& sql) {
  connection_->Prepare(sql, true);
  connection_->Guarded([&] { connection_->sql->RunOnce(sql); });
}

bool Database::HasTable(const std::string& upperCaseName) {
  connection_->Prepare("HAS TABLE", false);
  return connection_->Guarded([&] { return connection_->sql->HasTable(upperCaseName); });
}

const SqlDialect& Database::Dialect() const {
  return connection_->sql->Dialect();
}

void Database::Settle() {
  if (connection_->watch) connection_->watch("SETTLE");
  connection_->Guarded([&] { connection_->sql->Settle(); });
}

std::int32_t Database::NextNumber(const std::string& name) {
  return connection_->NextNumber(name);
}

std::uint64_t Database::StateNumber() const {
  return connection_->sql->InTransaction() ? connection_->StateNumber() : 0;
}

std::uint64_t Database::Transaction() const {
  return connection_->writes.empty() ? 0 : connection_->writes.back().number;
}

void Database::OnUndo(const std::weak_ptr<const void>& owner, std::function<void()> undo) {
  if (Writing()) connection_->KeepUndo(owner, std::move(undo));
}

}  // namespace tessel::embedded
