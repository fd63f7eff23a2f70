// The tables of a database: those of the classes, and the host's own.
#pragma once

#include <string>

#include "embedded/model/metadata.h"
#include "embedded/store/database.h"

namespace tessel::embedded {

// Makes all tables and indexes and stores the metadata, a JSON text in the form of the model file. Error:
// HostError naming the source and the class whose table the database refuses.
void CreateSchema(Database& database, const Metadata& metadata, const std::string& metadataText,
                  const std::string& source);

// The metadata stored in a database. Error: HostError when it is no database of the embedded host.
[[nodiscard]] MetadataPtr LoadMetadata(Database& database);

// The vault's path where the database keeps it; empty without.
void StoreVault(Database& database, const std::string& path);
[[nodiscard]] std::string StoredVault(Database& database);

// Names in TESSEL_NUMBER.
inline constexpr const char* kObjectNumber = "OBJECT_ID";
inline constexpr const char* kSessionNumber = "SESSION";
inline constexpr const char* kMessageNumber = "MESSAGE";
[[nodiscard]] std::string SequenceNumberName(const std::string& sequence);

// Draws the next number under a name; no other connection gets the same one, unless the write transaction in
// which it was drawn is undone. Error: HostError when there is no such name or the numbers are used up.
[[nodiscard]] std::int32_t DrawNumber(Database& database, const std::string& name);

}  // namespace tessel::embedded
