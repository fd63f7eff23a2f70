// Programs run and measured from outside.
#pragma once

#include <string>
#include <vector>

namespace tessel::bench {

struct Measured {
  double seconds = 0;
  long peakKilobytes = 0;
  std::string output;
};

// Runs a program to its end; its standard error goes to ours. Ends the benchmark when it fails.
[[nodiscard]] Measured Run(const std::vector<std::string>& command);

// System calls that a program makes, by strace; -1 when that is not installed.
[[nodiscard]] long CountSystemCalls(std::vector<std::string> command, const std::string& scratch);

}  // namespace tessel::bench
