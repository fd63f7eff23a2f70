#include "locking/stopped_exchange.h"

#include "platform/paths.h"

namespace tessel {
namespace {

std::string WithNewName(std::string path) {
  constexpr std::string_view kBreak = "Break";
  constexpr std::string_view kNew = "New";
  for (std::size_t at = path.find(kBreak); at != std::string::npos;
       at = path.find(kBreak, at + kNew.size())) {
    path.replace(at, kBreak.size(), kNew);
  }
  return path;
}

}  // namespace

std::optional<FolderNames> FoldersOf(const std::string& rootDirectory) {
  const std::size_t separator = paths::LastSeparator(rootDirectory);
  if (separator == std::string::npos) return std::nullopt;
  const std::string old = rootDirectory.substr(0, separator);
  return FolderNames{old, WithNewName(old)};
}

bool WasRenamed(const FileSystem& files, const FolderNames& folders) {
  return folders.old != folders.renamed && !files.FolderExists(folders.old) &&
         files.FolderExists(folders.renamed);
}

}  // namespace tessel
