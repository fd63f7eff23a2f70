// The command line of tessel, run in process with the streams passed in.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace tessel::cli {

struct Streams {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  // Standard error is a terminal: a progress bar may be drawn on it.
  bool errIsTerminal = false;
};

// Runs one command; the arguments do not hold the program's name. Returns the exit status: 0 done, 1 refused
// or failed, 2 bad usage. Never throws.
int Run(const std::vector<std::string>& arguments, Streams streams) noexcept;

}  // namespace tessel::cli
