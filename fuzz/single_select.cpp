// The check for a single select: whatever passes it, the database takes as one statement that reads nothing
// but classes and messages.
#include "embedded/client/single_select.h"

#include <sqlite3.h>

#include <memory>

#include "fuzzing.h"
#include "host/error.h"

namespace {

using namespace tessel;

constexpr const char* kTables =
    "CREATE TABLE TESSEL_USER (ID INTEGER, LOGIN TEXT, PASSWORD TEXT);"
    "CREATE TABLE TESSEL_METADATA (NAME TEXT, CONTENT TEXT);"
    "CREATE TABLE MESSAGE_STORE (ID INTEGER, BODY TEXT);"
    "CREATE TABLE PART (OBJECT_ID INTEGER, CLASS_ID INTEGER, VRK_ID TEXT, STATE INTEGER);"
    "CREATE TABLE GENERAL_LINK (OBJECT_ID1 INTEGER, CLASS_ID1 INTEGER, OBJECT_ID2 INTEGER)";

bool reachesTooFar = false;

int Authorize(void*, int action, const char* table, const char*, const char*, const char*) {
  const std::string_view name = table == nullptr ? "" : table;
  const bool allowed = action == SQLITE_SELECT || action == SQLITE_FUNCTION || action == SQLITE_RECURSIVE ||
                       (action == SQLITE_READ && name != "TESSEL_USER" && name != "TESSEL_METADATA" &&
                        !name.starts_with("sqlite_") && !name.starts_with("pragma_"));
  if (!allowed) reachesTooFar = true;
  return allowed ? SQLITE_OK : SQLITE_DENY;
}

sqlite3* Open() {
  sqlite3* database = nullptr;
  fuzz::Require(sqlite3_open(":memory:", &database) == SQLITE_OK, "no database");
  fuzz::Require(sqlite3_exec(database, kTables, nullptr, nullptr, nullptr) == SQLITE_OK, "no tables");
  sqlite3_set_authorizer(database, Authorize, nullptr);
  return database;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static sqlite3* const kDatabase = Open();
  const std::string sql(reinterpret_cast<const char*>(data), size);
  try {
    embedded::CheckSingleSelect(sql);
  } catch (const HostError&) {
    return 0;
  }
  reachesTooFar = false;
  sqlite3_stmt* statement = nullptr;
  const char* tail = nullptr;
  const int result =
      sqlite3_prepare_v2(kDatabase, sql.c_str(), static_cast<int>(sql.size()), &statement, &tail);
  fuzz::Require(!reachesTooFar, "a statement reaches beyond classes and messages");
  if (result == SQLITE_OK && statement != nullptr) {
    fuzz::Require(sqlite3_stmt_readonly(statement) != 0, "a statement that writes");
    fuzz::Require(sqlite3_bind_parameter_count(statement) == 0, "a placeholder");
    fuzz::Require(std::string_view(tail).find_first_not_of(" \t\r\n\f") == std::string_view::npos,
                  "more than one statement");
  }
  sqlite3_finalize(statement);
  return 0;
}
