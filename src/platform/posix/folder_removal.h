// Removal of a folder with everything in it.
#pragma once

#include <string>

namespace tessel::posix {

// Removes a folder given by native path; `path` is what errors show. Read-only folders are opened up first.
// A link is removed itself, its target is left alone. What somebody else removes meanwhile is gone, and what
// he adds goes, too. Error 76 when there is no such folder.
void RemoveFolder(const std::string& native, const std::string& path);

}  // namespace tessel::posix
