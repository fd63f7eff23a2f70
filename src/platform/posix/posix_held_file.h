// A file held by an advisory lock that goes with the descriptor.
#pragma once

#include <memory>
#include <string>

#include "platform/held_file.h"

namespace tessel::posix {

// `native` is the path for the system, `path` as errors show it. Nothing when somebody holds the file, or
// when it does not exist and is not to be made.
[[nodiscard]] std::unique_ptr<HeldFile> HoldFile(const std::string& native, const std::string& path,
                                                 bool make);

}  // namespace tessel::posix
