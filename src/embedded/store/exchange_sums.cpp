#include "embedded/store/exchange_sums.h"

#include <string_view>

namespace tessel::embedded {

void StoreExchangeSums(Database& database, const ObjectKey& exchange, const std::string& text) {
  database.ExecuteOnce(kExchangeSumsTable);
  database.Execute(
      "INSERT INTO TESSEL_EXCHANGE_SUMS (CLASS_ID, OBJECT_ID, CONTENT) VALUES (:class, :object, :content) "
      "ON CONFLICT (CLASS_ID, OBJECT_ID) DO UPDATE SET CONTENT = EXCLUDED.CONTENT",
      {Value(exchange.classId), Value(exchange.objectId), Value(text)});
}

std::optional<std::string> ReadExchangeSums(Database& database, const ObjectKey& exchange) {
  QueryResult found;
  try {
    found = database.Query(
        "SELECT CONTENT FROM TESSEL_EXCHANGE_SUMS WHERE CLASS_ID = :class AND OBJECT_ID = :object",
        {Value(exchange.classId), Value(exchange.objectId)});
  } catch (const DatabaseError& error) {
    // A database of earlier days, which may be open for reading alone, has no such table yet.
    if (std::string_view(error.what()).find("TESSEL_EXCHANGE_SUMS") == std::string_view::npos) throw;
    return std::nullopt;
  }
  if (found.rows.empty()) return std::nullopt;
  return found.rows[0][0].AsText();
}

}  // namespace tessel::embedded
