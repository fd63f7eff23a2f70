// The sample company in a database of its own, with drives, clock and processes of its own: the ground that a
// walk through the pages is made on, whatever toolkit draws them.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "common/hosted_program.h"
#include "platform/native/native_platform.h"
#include "support/temporary_folder.h"

namespace tessel::test {

class SampleCompany {
 public:
  // Settings are lines of the admin settings by key, for example {"UseCustomForm", "True"}.
  explicit SampleCompany(const std::map<std::string, std::string>& settings = {});

  [[nodiscard]] HostedLogin Login(const std::string& language = "GER") const {
    return {database_, "anna", "", language};
  }
  // Pauses are over at once unless a pauser is given.
  [[nodiscard]] Platform Services(ProcessLauncher& launcher, Pauser* pauser = nullptr);
  [[nodiscard]] ProcessLauncher& Processes() { return launcher_; }
  // Name and first argument of each program that was started.
  [[nodiscard]] const std::vector<std::string>& Started() const { return launcher_.started; }
  // It is 2024-01-31, 15:45:02 until a minute passes.
  void LetAMinutePass() { ++clock_.minute; }

  // Adds released documents 1202:100001 and following, each with a file, and returns their keys.
  std::vector<ObjectKey> AddParts(HostedProgram& hosted, int count);

  // Everything in the exchange directory, sorted.
  [[nodiscard]] std::vector<std::string> Exchanged();
  [[nodiscard]] const TemporaryFolder& Folder() const { return folder_; }
  [[nodiscard]] const std::string& Database() const { return database_; }

 private:
  class FixedClock : public Clock {
   public:
    [[nodiscard]] LocalTime Now() const override { return {2024, 1, 31, 15, minute, 2}; }
    int minute = 45;
  };
  class FakeLauncher : public ProcessLauncher {
   public:
    std::int32_t Start(const std::string& program, const std::vector<std::string>& arguments) override {
      started.push_back(program.substr(program.find_last_of("/\\") + 1) + " " + arguments.at(0));
      return 4711;
    }
    std::vector<std::string> started;
  };

  TemporaryFolder folder_;
  FixedClock clock_;
  FakeLauncher launcher_;
  NativePlatform native_;
  std::string database_;
};

}  // namespace tessel::test
