// What the work on a directory is given, and what it answers.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sender/directory_lock.h"
#include "sender/exchange_directory.h"
#include "sender/log.h"
#include "sender/record.h"
#include "sender/settings.h"

namespace tessel::sender {

enum class WorkResult {
  kDone,     // sent, or gone meanwhile
  kStopped,  // put aside with its reason
  kLater,    // the next attempt is due at `notBefore`
  kWaiting,  // the other side's acknowledgement is to come
  kBusy,     // another worker has it
  kForeign,  // perhaps another machine's worker has it
  kRests,    // stopped, and nobody continued it
  kLeft,     // not for us, or not yet: the log says why
  kFailed,   // the database or the file system did not let us; nothing was lost
};

struct WorkAnswer {
  WorkResult result = WorkResult::kDone;
  std::int64_t notBefore = 0;  // seconds since 1970
  std::string text;            // why, for kLeft and kFailed
};

// What a worker works with; all of it outlives it.
struct WorkParts {
  const Settings& settings;
  FileSystem& files;
  const Clock& clock;
  Log& log;
  LeaseBook& leases;
};

// Name of the data file that lies in a directory, of those that the databases have; empty without one.
[[nodiscard]] std::string DataFileIn(const FileSystem& files, const Databases& databases,
                                     const ExchangeDirectory& directory);

// The exchange paths of settings and open databases, each once.
[[nodiscard]] std::vector<std::string> ExchangePaths(const Settings& settings, const FileSystem& files,
                                                     const Databases& databases);

}  // namespace tessel::sender
