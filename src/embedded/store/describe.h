// What a database holds, for people and for programs that ask.
#pragma once

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

#include "embedded/store/accounts.h"
#include "platform/file_system.h"

namespace tessel::embedded {

struct DescribedObject {
  ObjectKey key;
  // Columns that identify and describe it, and its file; those that are Null are left out. Of a link the ids
  // of its ends.
  std::vector<std::pair<std::string, std::string>> texts;
};

struct DescribedClass {
  ClassId id = 0;
  std::string name;
  std::string table;
  bool linkClass = false;
  std::vector<DescribedObject> objects;
};

struct DatabaseDescription {
  std::string alias;
  std::string language;
  std::string vault;
  std::size_t vaultFiles = 0;
  std::vector<Account> users;
  std::vector<DescribedClass> classes;
};

// Reads only. Error: HostError when there is no such database.
[[nodiscard]] DatabaseDescription DescribeDatabase(FileSystem& files, const std::string& place);

void PrintDescription(const DatabaseDescription& description, std::ostream& out);

}  // namespace tessel::embedded
