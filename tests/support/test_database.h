// Databases for tests: files, or, in a run over PostgreSQL, schemas of their own on the server that
// TESSEL_TEST_SERVER names.
#pragma once

#include <cstdlib>
#include <memory>
#include <random>
#include <string>

#include "embedded/store/database_place.h"
#include "support/temporary_folder.h"

namespace tessel::test {

inline std::string TestServer() {
  const char* server = std::getenv("TESSEL_TEST_SERVER");
  return server ? server : "";
}
inline bool OnServer() {
  return !TestServer().empty();
}

// Address of a new place without tables on the server.
inline std::string NewServerPlace(FileSystem& files) {
  std::random_device random;
  const std::string schema = "w" + std::to_string(random()) + "_" + std::to_string(random());
  embedded::OpenDatabase(files, TestServer())->ExecuteOnce("CREATE SCHEMA " + schema);
  return TestServer() + "&options=-csearch_path%3D" + schema;
}

// Where CreateDatabase can make a database: "NAME.db" in the folder, or an address with the same vault.
inline std::string NewPlace(FileSystem& files, const TemporaryFolder& folder, const std::string& name = "x") {
  const std::string path = folder.Path(name + ".db");
  return OnServer() ? NewServerPlace(files) + "&vault=" + path + ".vault" : path;
}

// An empty database for statements of the test's own; `place` opens it once more.
struct EmptyDatabase {
  explicit EmptyDatabase(FileSystem& files)
      : place(OnServer() ? NewServerPlace(files) : folder.Write("empty.db", "")),
        database(embedded::OpenDatabase(files, place)) {}
  TemporaryFolder folder;
  std::string place;
  std::unique_ptr<embedded::Database> database;
};

}  // namespace tessel::test
