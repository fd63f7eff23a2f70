// Clock, pause and processes on POSIX.
#pragma once

#include "platform/operating_system.h"
#include "platform/posix/native_paths.h"

namespace tessel::posix {

class SystemClock : public Clock {
 public:
  [[nodiscard]] LocalTime Now() const override;
};

class RealPauser : public Pauser {
 public:
  void Sleep(std::chrono::milliseconds time) override;
};

// A started program gets a session of its own, no open files of this one, and the null device for its input
// and output. It is no child of this process, so that its end leaves nothing behind.
class PosixProcessLauncher : public ProcessLauncher {
 public:
  // The program is a path text; a name without separator is searched for in PATH.
  explicit PosixProcessLauncher(NativePaths paths) : paths_(std::move(paths)) {}
  [[nodiscard]] std::int32_t Start(const std::string& program,
                                   const std::vector<std::string>& arguments) override;

 private:
  NativePaths paths_;
};

}  // namespace tessel::posix
