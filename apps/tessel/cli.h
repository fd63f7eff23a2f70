// The command line of tessel, run in process with the streams passed in.
#pragma once

#include <string>
#include <vector>

#include "tessel/streams.h"

namespace tessel::cli {

// Runs one command; the arguments do not hold the program's name. Returns the exit status: 0 done, 1 refused
// or failed, 2 bad usage, 3 handed over but something is missing, 130 and 143 a run that Ctrl-C or TERM
// ended. Never throws.
int Run(const std::vector<std::string>& arguments, Streams streams) noexcept;

}  // namespace tessel::cli
