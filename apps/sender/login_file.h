// The file of the mail password: lines "machine SERVER login USER password PASSWORD".
#pragma once

#include <string>

#include "platform/file_system.h"

namespace tessel::sender {

// Why the file is not used, as text; empty when it is: only its owner may read it, and every entry is for a
// server that it names. Errors as the file system raises them.
[[nodiscard]] std::string WhyNoLogin(const FileSystem& files, const std::string& path);

}  // namespace tessel::sender
