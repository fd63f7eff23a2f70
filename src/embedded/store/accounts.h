// Users of a database and their settings.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "embedded/store/database.h"
#include "host/object_key.h"

namespace tessel::embedded {

struct Account {
  int id = 0;
  std::string loginName;
  std::string password;
  std::string language;  // empty: none of his own
  bool administrator = false;
  std::vector<std::string> roles;
  ObjectKey object;
};

// In the order of their ids.
[[nodiscard]] std::vector<Account> ReadAccounts(Database& database);
// Nothing when no user has the login name.
[[nodiscard]] std::optional<Account> FindAccount(Database& database, const std::string& loginName);

// Nothing when the user (or, with id 0, the database for everybody) has no such value.
[[nodiscard]] std::optional<std::string> ReadSetting(Database& database, int userId, const std::string& key);
void WriteSetting(Database& database, int userId, const std::string& key, const std::string& value);

}  // namespace tessel::embedded
