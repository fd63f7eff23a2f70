// Refusals of the database, its own and those that a test asks for.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "host/error.h"

namespace tessel::embedded {

// A refusal of the database. Number() is the database's own error code, never 0.
class DatabaseError : public HostError {
 public:
  using HostError::HostError;
};

// What the database says about one of its error codes; empty when it is none of them.
[[nodiscard]] std::string DatabaseErrorText(int code);

// Told of every statement before it runs; a test refuses one by throwing a DatabaseError. A refused "COMMIT"
// leaves its transaction open; a transaction is undone without asking.
using StatementWatch = std::function<void(std::string_view sql)>;

}  // namespace tessel::embedded
