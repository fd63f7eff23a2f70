// The names of exchange directories have one second, and those of later recipients ten: who exports several
// times in a row waits until his names are free.
#pragma once

#include <chrono>

#include "config/services.h"

namespace tessel::cli {

// How long an export waits for its names altogether. Then it is tried with those of the moment, and refused.
inline constexpr std::chrono::seconds kLongestWait{25};

// Waits until the directories of an export by the current user that begins now can have their names, or until
// the deadline. False at the deadline. Errors of host and file system.
bool AwaitFreeNames(Services& services, int recipients, std::chrono::steady_clock::time_point deadline);

}  // namespace tessel::cli
