// Databases made from model files (docs/model-file.md).
#pragma once

#include <ostream>
#include <string>

#include "embedded/model/model_reader.h"
#include "embedded/store/database.h"
#include "platform/file_system.h"

namespace tessel::embedded {

// Makes a database and its vault from a model file, and returns its metadata. When this returns, both are on
// the disk. They come into being as a whole or not at all: what a process that was killed leaves behind bears
// other names or is a vault without database, and the next CreateDatabase or RemoveUnfinishedDatabase removes
// it. Errors: HostError that lists what is wrong with the model, that the database or the vault exists
// already, or that somebody else is making it; RuntimeError with the file system's number. The place is a
// path, or a server's address that names the vault (see database_place.h); the server has the database
// already, without tables.
MetadataPtr CreateDatabase(FileSystem& files, const std::string& place, const std::string& modelPath,
                           const StatementWatch& watch = {});

// Removes what a process that was killed left of a database that it was making. False when there is nothing
// to remove. Error: HostError when the database is being made at this moment.
bool RemoveUnfinishedDatabase(FileSystem& files, const std::string& databasePath);

// Fills an empty database and a vault directory from a model. An empty vault path leaves the files out.
MetadataPtr FillDatabase(Database& database, const ModelSource& source, FileSystem& files,
                         const std::string& vaultPath);

}  // namespace tessel::embedded
