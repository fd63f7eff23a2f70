// One worker a directory, over threads, processes and machines that share the exchange path. A lock file
// below the exchange path is locked through the system, which frees it when its holder dies. Where a share
// does not carry such locks from machine to machine, the file's content guards: its holder gives a sign from
// time to time, and another machine waits until there was none for the lease. Of two machines that find it
// free at once, the one whose sign comes first has it.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "platform/file_system.h"
#include "sender/exchange_directory.h"

namespace tessel::sender {

// What this process saw in the lock files of other machines, and when it saw it change.
class LeaseBook {
 public:
  explicit LeaseBook(std::chrono::milliseconds lease) : lease_(lease) {}
  [[nodiscard]] std::chrono::milliseconds Lease() const { return lease_; }
  // Whether a content has stood unchanged for the lease.
  [[nodiscard]] bool HasRunOut(const std::string& path, const std::string& content);

 private:
  struct Seen {
    std::string content;
    std::chrono::steady_clock::time_point since;
  };
  std::chrono::milliseconds lease_;
  std::mutex mutex_;
  std::map<std::string, Seen> seen_;
};

enum class LockAnswer {
  kTaken,
  kBusy,     // a living worker has it
  kForeign,  // perhaps another machine's worker; known when its lease has run out
};

class DirectoryLock {
 public:
  // The lock of a directory goes by its base name. `answer` says why nothing came back. Errors: RuntimeError
  // when the lock file cannot be made.
  [[nodiscard]] static std::unique_ptr<DirectoryLock> Take(FileSystem& files, const std::string& exchangePath,
                                                           const std::string& name, LeaseBook& leases,
                                                           LockAnswer& answer);
  // Whether nobody else has taken it over, as from a worker that gave no sign for too long.
  [[nodiscard]] virtual bool IsStillOurs() = 0;
  virtual ~DirectoryLock() = default;
};

// The folder of the lock files below an exchange path.
[[nodiscard]] std::string LockFolder(const std::string& exchangePath);

}  // namespace tessel::sender
