// Renaming that never replaces, on every file system.
#pragma once

namespace tessel::posix {

// As renameat2 with RENAME_NOREPLACE: 0, or -1 with errno, EEXIST when the target is taken. Where the file
// system cannot do that, a file is linked under its new name before the old one goes, and a folder, which can
// only ever take the place of an empty one, is renamed when the name is free.
[[nodiscard]] int RenameWithoutReplacing(int fromFolder, const char* from, int toFolder, const char* to);

}  // namespace tessel::posix
