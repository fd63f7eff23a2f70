// A stopped exchange: its status, and the two names of its folder.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/names.h"
#include "platform/file_system.h"

namespace tessel {

inline constexpr std::int32_t kPhaseStopped = 3;
inline constexpr std::int32_t kPhaseContinued = 2;

struct FolderNames {
  std::string old;
  std::string renamed;
};

// The exchange's folder stands before the last separator of the root directory; nothing without a separator.
// The new name has "New" in place of every "Break", also of one in the name of a folder above.
[[nodiscard]] std::optional<FolderNames> FoldersOf(const std::string& rootDirectory);

// The folder has its new name already, and not the old one: a continuation was cut off behind the renaming.
// Errors of the file system.
[[nodiscard]] bool WasRenamed(const FileSystem& files, const FolderNames& folders);

}  // namespace tessel
