#include "embedded/sql/postgresql/server_link.h"

#include <algorithm>
#include <string_view>

namespace tessel::embedded {
namespace {

struct StateCode {
  std::string_view state;  // or its first characters
  int code;
};
// The first one that fits counts.
constexpr StateCode kStateCodes[] = {
    {"23505", kCodeUnique},   {"23503", kCodeForeignKey}, {"23502", kCodeNotNull},  {"23514", kCodeCheck},
    {"22001", kCodeCheck},    {"25006", kCodeReadOnly},   {"42501", kCodeReadOnly}, {"55P03", kCodeBusy},
    {"40", kCodeBusy},        {"53100", kCodeFull},       {"53", kCodeBusy},        {"22", kCodeMismatch},
    {"08", kCodeInputOutput}, {"58", kCodeInputOutput},   {"57", kCodeInputOutput}};

std::string_view Field(const PGresult* result, int code) {
  const char* text = PQresultErrorField(result, code);
  return text ? text : "";
}

int CodeOf(const PGresult* result) {
  const std::string_view state = Field(result, PG_DIAG_SQLSTATE);
  const bool key = Field(result, PG_DIAG_CONSTRAINT_NAME).ends_with("_pkey");
  const auto* found = std::find_if(std::begin(kStateCodes), std::end(kStateCodes),
                                   [&](const StateCode& each) { return state.starts_with(each.state); });
  if (found == std::end(kStateCodes)) return kCodeError;
  return found->code == kCodeUnique && key ? kCodePrimaryKey : found->code;
}

// The first line of a message; what follows are guesses.
std::string FirstLine(std::string_view text) {
  return std::string(text.substr(0, text.find('\n')));
}

// An address may say otherwise: a server that does not answer is given up in time.
constexpr std::pair<const char*, const char*> kDefaults[] = {
    {"connect_timeout", "10"}, {"keepalives_idle", "30"},     {"keepalives_interval", "10"},
    {"keepalives_count", "3"}, {"tcp_user_timeout", "60000"}, {"fallback_application_name", "tessel"}};

PGconn* Connected(const std::string& address) {
  std::vector<const char*> keys;
  std::vector<const char*> values;
  const auto add = [&](const char* key, const char* value) {
    keys.push_back(key);
    values.push_back(value);
  };
  for (const auto& [key, value] : kDefaults)
    add(key, value);
  add("dbname", address.c_str());
  add("client_encoding", "UTF8");
  add(nullptr, nullptr);
  return PQconnectdbParams(keys.data(), values.data(), 1);
}

}  // namespace

ConnectionLost::ConnectionLost(const std::string& reason)
    : DatabaseError("The connection to the database was lost: " + reason, kCodeConnectionLost) {}

ServerLink::ServerLink(ServerAddress address, std::chrono::milliseconds lockTimeout)
    : address_(std::move(address)), lockTimeout_(lockTimeout) {
  try {
    Connect();
  } catch (...) {
    PQfinish(connection_);
    throw;
  }
}

ServerLink::~ServerLink() {
  PQfinish(connection_);
}

void ServerLink::Connect() {
  PQfinish(connection_);
  connection_ = Connected(address_.connection);
  if (PQstatus(connection_) != CONNECTION_OK) {
    throw DatabaseError("Cannot open the database " + address_.shown + ": " + Message(), kCodeCannotOpen);
  }
  PQsetNoticeProcessor(
      connection_, [](void*, const char*) {}, nullptr);
  ++number_;
  forgotten_.clear();
  // A waiting time of 0 would be one without end.
  Run("SET lock_timeout = " + std::to_string(std::max<long long>(1, lockTimeout_.count())) +
      "; SET standard_conforming_strings = on; SET extra_float_digits = 1");
  const ServerResult schema = Run("SELECT current_schema()");
  if (PQgetisnull(schema.get(), 0, 0) != 0) {
    throw DatabaseError("The database " + address_.shown + " has no schema for its tables", kCodeCannotOpen);
  }
  schema_ = PQgetvalue(schema.get(), 0, 0);
}

void ServerLink::Renew() {
  Connect();
}

std::string ServerLink::Message() const {
  return FirstLine(PQerrorMessage(connection_));
}

ServerResult ServerLink::Checked(PGresult* answer) const {
  ServerResult result(answer);
  const ExecStatusType status = PQresultStatus(answer);
  if (answer && (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK || status == PGRES_EMPTY_QUERY))
    return result;
  // An error without a code is none of the server's.
  if (!answer || IsLost() || Field(answer, PG_DIAG_SQLSTATE).empty()) throw ConnectionLost(Message());
  std::string text(Field(answer, PG_DIAG_MESSAGE_PRIMARY));
  if (const std::string_view detail = Field(answer, PG_DIAG_MESSAGE_DETAIL); !detail.empty())
    text += " (" + FirstLine(detail) + ")";
  throw DatabaseError(text.empty() ? Message() : text, CodeOf(answer));
}

ServerResult ServerLink::Run(const std::string& text) {
  return Checked(PQexec(connection_, text.c_str()));
}

ServerResult ServerLink::RunSingle(const std::string& text) {
  return Checked(PQexecParams(connection_, text.c_str(), 0, nullptr, nullptr, nullptr, nullptr, 0));
}

void ServerLink::DropForgotten() {
  if (forgotten_.empty()) return;
  Run(forgotten_);
  forgotten_.clear();
}

void ServerLink::Prepare(const std::string& name, const std::string& text) {
  DropForgotten();
  Checked(PQprepare(connection_, name.c_str(), text.c_str(), 0, nullptr));
}

ServerResult ServerLink::Execute(const std::string& name, const ParameterTexts& values) {
  return Checked(PQexecPrepared(connection_, name.c_str(), static_cast<int>(values.size()), values.data(),
                                nullptr, nullptr, 0));
}

// All in one message to the server, so that the guard costs no time on the way.
ServerResult ServerLink::ExecuteGuarded(const std::string& name, const std::string& text,
                                        const ParameterTexts& values) {
  const auto send = [&](const char* sql) {
    return PQsendQueryParams(connection_, sql, 0, nullptr, nullptr, nullptr, nullptr, 0) == 1;
  };
  bool sent = PQenterPipelineMode(connection_) == 1 && send("SAVEPOINT GUARD");
  if (!text.empty()) sent = sent && PQsendPrepare(connection_, name.c_str(), text.c_str(), 0, nullptr) == 1;
  sent = sent &&
         PQsendQueryPrepared(connection_, name.c_str(), static_cast<int>(values.size()), values.data(),
                             nullptr, nullptr, 0) == 1 &&
         send("RELEASE GUARD") && PQpipelineSync(connection_) == 1;
  if (!sent) throw ConnectionLost(Message());
  const std::size_t statements = text.empty() ? 3 : 4;
  std::vector<ServerResult> results;
  for (std::size_t i = 0; i < statements && !IsLost(); ++i) {
    results.emplace_back(PQgetResult(connection_));
    if (results.back()) PQclear(PQgetResult(connection_));  // the end of this statement's results
  }
  PQclear(PQgetResult(connection_));  // the end of the message
  if (IsLost() || PQexitPipelineMode(connection_) != 1) throw ConnectionLost(Message());
  if (PQtransactionStatus(connection_) == PQTRANS_INERROR) Run("ROLLBACK TO GUARD; RELEASE GUARD");
  for (ServerResult& result : results)
    result = Checked(result.release());
  return std::move(results[statements - 2]);
}

void ServerLink::Forget(const std::string& name) {
  forgotten_ += "DEALLOCATE " + name + ";";
}

bool ServerLink::InTransaction() const {
  const PGTransactionStatusType status = PQtransactionStatus(connection_);
  return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

}  // namespace tessel::embedded
