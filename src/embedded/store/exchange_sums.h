// Check sums of the files of an exchange, kept beside its data exchange object. What the text holds is the
// caller's business.
#pragma once

#include <optional>
#include <string>

#include "embedded/store/database.h"
#include "host/object_key.h"

namespace tessel::embedded {

// Replaces what was kept for the exchange. A database of earlier days gets the table with the first call.
void StoreExchangeSums(Database& database, const ObjectKey& exchange, const std::string& text);
// Nothing when none are kept.
[[nodiscard]] std::optional<std::string> ReadExchangeSums(Database& database, const ObjectKey& exchange);

// Statement that makes the table when it is not there.
inline constexpr const char* kExchangeSumsTable =
    "CREATE TABLE IF NOT EXISTS TESSEL_EXCHANGE_SUMS (CLASS_ID INTEGER NOT NULL, OBJECT_ID BIGINT NOT NULL, "
    "CONTENT TEXT NOT NULL, PRIMARY KEY (CLASS_ID, OBJECT_ID))";

}  // namespace tessel::embedded
