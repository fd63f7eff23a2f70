#include "embedded/store/commit_marks.h"

namespace tessel::embedded {

void AddMark(Database& database, const std::string& mark) {
  if (!database.HasTable("TESSEL_MARK")) database.ExecuteOnce(kMarkTable);
  database.Execute("INSERT INTO TESSEL_MARK (NAME) VALUES (:name)", {Value(mark)});
}

bool HasMark(Database& database, const std::string& mark) {
  return database.HasTable("TESSEL_MARK") &&
         !database.Query("SELECT NAME FROM TESSEL_MARK WHERE NAME = :name", {Value(mark)}).rows.empty();
}

void RemoveMark(Database& database, const std::string& mark) {
  if (HasMark(database, mark)) database.Execute("DELETE FROM TESSEL_MARK WHERE NAME = :name", {Value(mark)});
}

}  // namespace tessel::embedded
