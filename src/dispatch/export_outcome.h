// What became of an export: the one value that everybody who reports on it reads.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "messages/problems.h"

namespace tessel {

enum class DispatchEnd {
  kNotRun,    // the wizard was left before anything was sent
  kFailed,    // ended by an error; directories that were final by then are listed all the same
  kFinished,  // every recipient has his directory
};

enum class MonitorStart { kNotWanted, kStarted, kFailed };

struct HandedOver {
  std::string directory;     // its final path
  bool recordWhole = false;  // the database has the data exchange object with all its values and links
};

struct ExportOutcome {
  DispatchEnd dispatch = DispatchEnd::kNotRun;
  std::vector<HandedOver> directories;  // in recipient order
  MonitorStart monitor = MonitorStart::kNotWanted;
  bool cancelled = false;
  // What the guards trapped from the beginning of the run to its end, the oldest first; at most
  // Problems::kMost. `problemCount` counts those that were left out, too.
  std::vector<Problem> problems;
  std::size_t problemCount = 0;

  // Every recipient has his directory, each is recorded, the monitor runs if it was wanted, and nothing that
  // went wrong can have kept a value out of them.
  [[nodiscard]] bool Whole() const;
};

}  // namespace tessel
