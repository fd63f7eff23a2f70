#include "sender/work.h"

#include <set>

namespace tessel::sender {

std::string DataFileIn(const FileSystem& files, const Databases& databases,
                       const ExchangeDirectory& directory) {
  for (const auto& [alias, database] : databases.All()) {
    const std::string& name = database->Rules().dataFileName;
    if (files.FileExists(directory.In(name))) return name;
  }
  return {};
}

std::vector<std::string> ExchangePaths(const Settings& settings, const FileSystem& files,
                                       const Databases& databases) {
  std::vector<std::string> all = settings.exchangePaths;
  for (const auto& [alias, database] : databases.All())
    all.push_back(database->Rules().exchangePath);
  std::vector<std::string> paths;
  std::set<std::string> seen;
  for (const std::string& path : all) {
    if (seen.insert(files.NativePath(path)).second) paths.push_back(path);
  }
  return paths;
}

}  // namespace tessel::sender
