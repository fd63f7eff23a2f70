// Refusals of the database, its own and those that a test asks for.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "host/error.h"

namespace tessel::embedded {

// Codes of refusals, one set for every database: SQLite's, extended ones included. Those of PostgreSQL are
// translated.
inline constexpr int kCodeError = 1;
inline constexpr int kCodeUndone = 4;  // the database has undone the transaction by itself
inline constexpr int kCodeBusy = 5;
inline constexpr int kCodeReadOnly = 8;
inline constexpr int kCodeInputOutput = 10;
// The connection to a server was lost; what was being committed may stand or not. SQLite has no such code.
inline constexpr int kCodeConnectionLost = 10 | (200 << 8);
inline constexpr int kCodeFull = 13;
inline constexpr int kCodeCannotOpen = 14;
inline constexpr int kCodeMismatch = 20;
inline constexpr int kCodeNotAllowed = 23;
inline constexpr int kCodeNoDatabase = 26;
inline constexpr int kCodeCheck = 275;
inline constexpr int kCodeForeignKey = 787;
inline constexpr int kCodeNotNull = 1299;
inline constexpr int kCodePrimaryKey = 1555;
inline constexpr int kCodeUnique = 2067;

// A refusal of the database. Number() is one of the codes above or another one of SQLite's, never 0.
class DatabaseError : public HostError {
 public:
  using HostError::HostError;
};

// Told of every statement before it runs; a test refuses one by throwing a DatabaseError. A refused "COMMIT"
// leaves its transaction open; a transaction is undone without asking.
using StatementWatch = std::function<void(std::string_view sql)>;

}  // namespace tessel::embedded
