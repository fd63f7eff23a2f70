#include "embedded/store/exchange_sums.h"

namespace tessel::embedded {

void StoreExchangeSums(Database& database, const ObjectKey& exchange, const std::string& text) {
  if (!database.HasTable("TESSEL_EXCHANGE_SUMS")) database.ExecuteOnce(kExchangeSumsTable);
  database.Execute(
      "INSERT INTO TESSEL_EXCHANGE_SUMS (CLASS_ID, OBJECT_ID, CONTENT) VALUES (:class, :object, :content) "
      "ON CONFLICT (CLASS_ID, OBJECT_ID) DO UPDATE SET CONTENT = EXCLUDED.CONTENT",
      {Value(exchange.classId), Value(exchange.objectId), Value(text)});
}

std::optional<std::string> ReadExchangeSums(Database& database, const ObjectKey& exchange) {
  if (!database.HasTable("TESSEL_EXCHANGE_SUMS")) return std::nullopt;  // a database of earlier days
  const QueryResult found = database.Query(
      "SELECT CONTENT FROM TESSEL_EXCHANGE_SUMS WHERE CLASS_ID = :class AND OBJECT_ID = :object",
      {Value(exchange.classId), Value(exchange.objectId)});
  if (found.rows.empty()) return std::nullopt;
  return found.rows[0][0].AsText();
}

}  // namespace tessel::embedded
