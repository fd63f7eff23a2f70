// Walks the entries of one open folder.
#pragma once

#include <dirent.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/posix/posix_error.h"

namespace tessel::posix {

enum class EntryKind { kFile, kFolder, kLink, kOther };

struct FolderEntry {
  std::string name;
  EntryKind kind = EntryKind::kOther;
};

// Opens a folder for the *at calls. `folder` may be AT_FDCWD; a link at the end of the name is not followed
// unless asked. Error 76 when it is missing or no folder. `path` is what errors show.
[[nodiscard]] FileDescriptor OpenFolder(int folder, const char* name, const std::string& path,
                                        bool followLink = false);

// All entries of an open folder but "." and "..", in the order of the file system. What vanishes meanwhile
// may be left out.
[[nodiscard]] std::vector<FolderEntry> ReadFolder(int folder, const std::string& path);

}  // namespace tessel::posix
