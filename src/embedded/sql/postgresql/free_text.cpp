#include "embedded/sql/postgresql/free_text.h"

#include <nlohmann/json.hpp>
#include <string_view>
#include <unordered_set>

#include "host/ascii.h"

namespace tessel::embedded {
namespace {

// Words that may stand before a bracket: functions that compute, and words of the language.
const std::unordered_set<std::string_view>& HarmlessWords() {
  static const std::unordered_set<std::string_view> words{
      "ABS",        "ALL",        "AND",       "ANY",       "AS",      "AVG",     "BETWEEN",     "BTRIM",
      "BY",         "CASE",       "CAST",      "CEIL",      "CEILING", "CHAR",    "CHAR_LENGTH", "COALESCE",
      "CONCAT",     "COUNT",      "DECIMAL",   "DISTINCT",  "ELSE",    "EXCEPT",  "EXISTS",      "EXTRACT",
      "FILTER",     "FLOOR",      "FROM",      "GREATEST",  "GROUP",   "HAVING",  "ILIKE",       "IN",
      "INTERSECT",  "INTERVAL",   "IS",        "JOIN",      "LAG",     "LATERAL", "LEAD",        "LEAST",
      "LEFT",       "LENGTH",     "LIKE",      "LIMIT",     "LOWER",   "LPAD",    "LTRIM",       "MAX",
      "MIN",        "MOD",        "NOT",       "NULLIF",    "NUMERIC", "OFFSET",  "ON",          "OR",
      "OVER",       "OVERLAY",    "PARTITION", "POSITION",  "RANK",    "REPLACE", "RIGHT",       "ROUND",
      "ROW",        "ROW_NUMBER", "RPAD",      "RTRIM",     "SELECT",  "SIGN",    "SOME",        "SPLIT_PART",
      "STRING_AGG", "STRPOS",     "SUBSTR",    "SUBSTRING", "SUM",     "THEN",    "TO_CHAR",     "TRIM",
      "TRUNC",      "UNION",      "UPPER",     "USING",     "VALUES",  "VARCHAR", "WHEN",        "WHERE"};
  return words;
}

bool IsWordCharacter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}

[[noreturn]] void Refuse(const std::string& what) {
  throw DatabaseError(what + " cannot be used in a query", kCodeNotAllowed);
}

// Every node of a plan, whatever it hangs in.
void CheckPlan(const nlohmann::json& part, const std::string& schema, const TableCheck& readable) {
  if (part.is_object()) {
    for (const char* name : {"Function Name", "Table Function Name"}) {
      if (part.contains(name)) Refuse("The function " + part[name].get<std::string>());
    }
    if (part.contains("Relation Name")) {
      const auto table = part["Relation Name"].get<std::string>();
      if (part.value("Schema", "") != schema || !readable(table)) Refuse("The table " + table);
    }
  }
  if (!part.is_structured()) return;
  for (const auto& inner : part)
    CheckPlan(inner, schema, readable);
}

}  // namespace

void CheckFunctions(const std::string& sql) {
  std::string word;  // that the next character stands behind
  for (std::size_t i = 0; i < sql.size();) {
    const char c = sql[i];
    if (c == '(' && !word.empty() && !HarmlessWords().contains(UpperCase(word)))
      Refuse("The function " + word);
    std::size_t end = i + 1;
    if (IsWordCharacter(c)) {
      while (end < sql.size() && IsWordCharacter(sql[end]))
        ++end;
      word = sql.substr(i, end - i);
    } else if (c == '"' || c == '\'') {
      // In such a text a backslash could hide where it ends.
      if (c == '\'' && i > 0 && (sql[i - 1] == 'E' || sql[i - 1] == 'e') && word.size() == 1) Refuse("E''");
      end = std::min(sql.find(c, end), sql.size() - 1) + 1;
      word = c == '"' ? sql.substr(i, end - i) : "";
    } else if (static_cast<unsigned char>(c) > ' ') {
      word.clear();
    }
    i = end;
  }
}

void CheckTables(ServerLink& link, const std::string& sql, const TableCheck& readable) {
  const ServerResult answer = link.RunSingle("EXPLAIN (VERBOSE, COSTS OFF, FORMAT JSON) " + sql);
  const auto plan = nlohmann::json::parse(PQgetvalue(answer.get(), 0, 0), nullptr, false);
  if (plan.is_discarded()) Refuse("A text that the database cannot explain");
  CheckPlan(plan, link.Schema(), readable);
}

}  // namespace tessel::embedded
