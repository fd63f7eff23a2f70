#include "sender/work.h"

namespace tessel::sender {

std::string DataFileIn(const FileSystem& files, const Databases& databases,
                       const ExchangeDirectory& directory) {
  for (const auto& [alias, database] : databases.All()) {
    const std::string& name = database->Rules().dataFileName;
    if (files.FileExists(directory.In(name))) return name;
  }
  return {};
}

}  // namespace tessel::sender
