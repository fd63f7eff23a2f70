#include "embedded/store/accounts.h"

namespace tessel::embedded {
namespace {

constexpr const char* kAccountColumns =
    "SELECT ID, LOGIN, PASSWORD, LANGUAGE, ADMINISTRATOR, CLASS_ID, OBJECT_ID FROM TESSEL_USER";

Account AccountOf(Database& database, const std::vector<Value>& row) {
  Account account;
  account.id = row[0].AsInt32();
  account.loginName = row[1].AsText();
  account.password = row[2].AsText();
  account.language = row[3].AsText();
  account.administrator = row[4].AsBoolean();
  account.object = {row[5].AsInt16(), row[6].AsInt32()};
  const QueryResult roles = database.Query(
      "SELECT NAME FROM TESSEL_ROLE WHERE USER_ID = :id ORDER BY POSITION", {Value(account.id)});
  for (const auto& role : roles.rows)
    account.roles.push_back(role[0].AsText());
  return account;
}

}  // namespace

std::vector<Account> ReadAccounts(Database& database) {
  std::vector<Account> accounts;
  const QueryResult found = database.Query(std::string(kAccountColumns) + " ORDER BY ID");
  for (const auto& row : found.rows)
    accounts.push_back(AccountOf(database, row));
  return accounts;
}

std::optional<Account> FindAccount(Database& database, const std::string& loginName) {
  const QueryResult found =
      database.Query(std::string(kAccountColumns) + " WHERE LOGIN = :login", {Value(loginName)});
  if (found.rows.empty()) return std::nullopt;
  return AccountOf(database, found.rows[0]);
}

std::optional<std::string> ReadSetting(Database& database, int userId, const std::string& key) {
  const QueryResult found =
      userId == 0
          ? database.Query("SELECT CONTENT FROM TESSEL_CONFIGURATION WHERE SETTING_KEY = :key", {Value(key)})
          : database.Query("SELECT CONTENT FROM TESSEL_SETTING WHERE USER_ID = :id AND SETTING_KEY = :key",
                           {Value(userId), Value(key)});
  if (found.rows.empty()) return std::nullopt;
  return found.rows[0][0].AsText();
}

void WriteSetting(Database& database, int userId, const std::string& key, const std::string& value) {
  database.Execute(
      "INSERT INTO TESSEL_SETTING (USER_ID, SETTING_KEY, CONTENT) VALUES (:id, :key, :content) "
      "ON CONFLICT (USER_ID, SETTING_KEY) DO UPDATE SET CONTENT = EXCLUDED.CONTENT",
      {Value(userId), Value(key), Value(value)});
}

}  // namespace tessel::embedded
