// What makes files survive a power failure.
#pragma once

#include <string>

namespace tessel::posix {

// Puts one folder's names on the disk. `path` is what errors show; file systems that cannot do that have
// nothing to lose.
void SyncFolder(int folder, const std::string& path);

// Puts an open folder, all that lies below it and the files beside it on the disk, by one call for the whole
// file system, or file by file where there is no such call. Links are not followed.
void MakeDurable(int folder, const std::string& path);

}  // namespace tessel::posix
