#include "embedded/store/database_place.h"

#include "embedded/sql/postgresql/postgresql_connection.h"
#include "embedded/store/schema.h"
#include "host/error.h"

namespace tessel::embedded {

std::unique_ptr<Database> OpenDatabase(const FileSystem& files, const std::string& place,
                                       DatabaseOptions options) {
  if (IsServerAddress(place)) {
    return std::make_unique<Database>(OpenPostgresql(ParseServerAddress(place), options.busyTimeout),
                                      std::move(options.watch));
  }
  if (!files.FileExists(place)) {
    throw HostError("There is no database " + place, error_number::kFileNotFound);
  }
  return std::make_unique<Database>(files.NativePath(place), std::move(options));
}

std::string VaultPath(Database& database, const std::string& place) {
  if (!IsServerAddress(place)) return place + ".vault";
  const std::string here = ParseServerAddress(place).vault;
  return here.empty() ? StoredVault(database) : here;
}

bool IsOnServer(const std::string& place) {
  return IsServerAddress(place);
}

std::string ShownPlace(const std::string& place) {
  return IsServerAddress(place) ? ParseServerAddress(place).shown : place;
}

}  // namespace tessel::embedded
