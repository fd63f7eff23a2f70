// A link to a PostgreSQL server: texts and prepared statements go, results come.
#pragma once

#include <libpq-fe.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "embedded/sql/postgresql/server_address.h"
#include "embedded/sql/refusal.h"

namespace tessel::embedded {

struct ResultDeleter {
  void operator()(PGresult* result) const { PQclear(result); }
};
using ServerResult = std::unique_ptr<PGresult, ResultDeleter>;

// The server ended the connection or cannot be reached any more.
class ConnectionLost : public DatabaseError {
 public:
  explicit ConnectionLost(const std::string& reason);
};

// Values of placeholders as texts; a null pointer is Null.
using ParameterTexts = std::vector<const char*>;

// Errors: DatabaseError. A failed text or statement inside a transaction leaves the transaction useless, but
// for ExecuteGuarded.
class ServerLink {
 public:
  ServerLink(ServerAddress address, std::chrono::milliseconds lockTimeout);
  ~ServerLink();
  ServerLink(const ServerLink&) = delete;
  ServerLink& operator=(const ServerLink&) = delete;

  // One or more statements; the result of the last one.
  ServerResult Run(const std::string& text);
  // A single statement without placeholders.
  ServerResult RunSingle(const std::string& text);
  void Prepare(const std::string& name, const std::string& text);
  ServerResult Execute(const std::string& name, const ParameterTexts& values);
  // Inside a transaction, which a failure leaves as it was. A text that is not empty is prepared under the
  // name before.
  ServerResult ExecuteGuarded(const std::string& name, const std::string& text, const ParameterTexts& values);
  // The statement is dropped some time.
  void Forget(const std::string& name);

  [[nodiscard]] bool InTransaction() const;
  [[nodiscard]] bool IsLost() const { return PQstatus(connection_) == CONNECTION_BAD; }
  // Connects once more after a loss; prepared statements are gone then, and Number() is another one.
  void Renew();
  [[nodiscard]] int Number() const { return number_; }
  // Of the database's tables.
  [[nodiscard]] const std::string& Schema() const { return schema_; }

 private:
  void Connect();
  [[nodiscard]] std::string Message() const;
  ServerResult Checked(PGresult* result) const;
  void DropForgotten();

  ServerAddress address_;
  std::chrono::milliseconds lockTimeout_;
  PGconn* connection_ = nullptr;
  int number_ = 0;
  std::string schema_;
  std::string forgotten_;  // statements that drop what nobody needs any more
};

}  // namespace tessel::embedded
