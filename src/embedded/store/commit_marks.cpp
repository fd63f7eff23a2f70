#include "embedded/store/commit_marks.h"

namespace tessel::embedded {
namespace {

bool HasMarks(Database& database) {
  return !database.Query("SELECT NAME FROM sqlite_master WHERE NAME = :name", {Value("TESSEL_MARK")})
              .rows.empty();
}

}  // namespace

void AddMark(Database& database, const std::string& mark) {
  database.Execute(kMarkTable);
  database.Execute("INSERT INTO TESSEL_MARK (NAME) VALUES (:name)", {Value(mark)});
}

bool HasMark(Database& database, const std::string& mark) {
  return HasMarks(database) &&
         !database.Query("SELECT NAME FROM TESSEL_MARK WHERE NAME = :name", {Value(mark)}).rows.empty();
}

void RemoveMark(Database& database, const std::string& mark) {
  if (HasMark(database, mark)) database.Execute("DELETE FROM TESSEL_MARK WHERE NAME = :name", {Value(mark)});
}

}  // namespace tessel::embedded
