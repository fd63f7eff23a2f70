// A machine for one test: a folder of its own with the drives in it, a clock that stands, pauses that are
// only noted, and programs that are never started.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "platform/file_system.h"
#include "platform/native/native_platform.h"
#include "platform/text_encoding.h"
#include "support/temporary_folder.h"

namespace tessel::test {

class FixedClock : public Clock {
 public:
  [[nodiscard]] LocalTime Now() const override { return {2024, 1, 31, 15, 45, 2}; }
};

class RecordingPauser : public Pauser {
 public:
  void Sleep(std::chrono::milliseconds time) override { pauses.push_back(static_cast<int>(time.count())); }
  std::vector<int> pauses;
};

class RecordingLauncher : public ProcessLauncher {
 public:
  std::int32_t Start(const std::string& program, const std::vector<std::string>& arguments) override {
    starts.push_back(program);
    for (const std::string& argument : arguments)
      starts.back() += " [" + argument + "]";
    return processId;
  }
  // The program and its arguments, one line a start.
  std::vector<std::string> starts;
  std::int32_t processId = 4711;  // 0: programs do not start
};

class Machine {
 public:
  TemporaryFolder folder;  // "drives" and "program", the folder of the program's file, lie in it
  FixedClock clock;
  RecordingPauser pauser;
  RecordingLauncher launcher;
  NativePlatform native{{.drivesDirectory = folder.MakeFolder("drives"),
                         .program = ProgramLocation{folder.MakeFolder("program"), "prjTessel"}}};
  Platform platform{native.Services().files,
                    native.Services().encodings,
                    clock,
                    pauser,
                    launcher,
                    native.Services().profiles,
                    native.Services().system,
                    native.Services().program,
                    native.Services().ansiCodePage};
  std::shared_ptr<const TextEncoding> ansi = platform.encodings.Open(platform.ansiCodePage);
};

}  // namespace tessel::test
