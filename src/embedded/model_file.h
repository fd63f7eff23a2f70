// Databases made from model files (docs/model-file.md).
#pragma once

#include <ostream>
#include <string>

#include "embedded/database.h"
#include "embedded/model_reader.h"
#include "platform/file_system.h"

namespace tessel::embedded {

// The directory of a database's files: its path with ".vault" behind it.
[[nodiscard]] std::string VaultPath(const std::string& databasePath);

// Makes a database and its vault from a model file. Both come into being as a whole or not at all. Errors:
// HostError that lists what is wrong with the model, or that the database or the vault exists already;
// RuntimeError with the file system's number.
void CreateDatabase(FileSystem& files, const std::string& databasePath, const std::string& modelPath);

// Fills an empty database and a vault directory from a model. An empty vault path leaves the files out.
CatalogPtr FillDatabase(Database& database, const ModelSource& source, FileSystem& files,
                        const std::string& vaultPath);

}  // namespace tessel::embedded
