// `--check`: whether the sender could do its work with these settings, tried out without sending anything.
#pragma once

#include <iosfwd>

#include "sender/settings.h"

namespace tessel::sender {

// One line a thing that was tried. True when all of them are well.
bool CheckSettings(const Settings& settings, FileSystem& files, std::ostream& out);

}  // namespace tessel::sender
