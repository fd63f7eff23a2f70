// Where a database is: a file, named by its path, or on a server, named by its address
// ("postgresql://user@host/database").
#pragma once

#include <memory>
#include <string>

#include "embedded/store/database.h"
#include "platform/file_system.h"

namespace tessel::embedded {

// Opens a database that is there. Errors: HostError, 53 when there is no such file; DatabaseError.
[[nodiscard]] std::unique_ptr<Database> OpenDatabase(const FileSystem& files, const std::string& place,
                                                     DatabaseOptions options = {});

// The directory of a database's files: of a file its path with ".vault" behind it; of a database on a server
// the shared folder that it was made with, unless the address says where this machine has it
// ("?vault=/srv/vault").
[[nodiscard]] std::string VaultPath(Database& database, const std::string& place);

// Whether a place is an address.
[[nodiscard]] bool IsOnServer(const std::string& place);

// For people: without the password of an address.
[[nodiscard]] std::string ShownPlace(const std::string& place);

}  // namespace tessel::embedded
