// Programs, clock and place of the program, alike on every system.
#include <gtest/gtest.h>

#include <thread>

#include "support/native_adapters.h"
#include "support/temporary_folder.h"

namespace tessel::test {
namespace {

// The program print_arguments, which lies beside the tests.
std::string ArgumentPrinter() {
#ifdef _WIN32
  return RunningProgram().directory + "\\print_arguments.exe";
#else
  return RunningProgram().directory + "/print_arguments";
#endif
}

// The file's content once it has come into being; empty after ten seconds without it.
std::string WaitFor(const TemporaryFolder& folder, const std::string& name) {
  for (int i = 0; i < 1000 && !folder.Exists(name); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  return folder.Exists(name) ? folder.Read(name) : std::string();
}

TEST(NativeLauncher, ArgumentsArriveAsTheyAre) {
  const TemporaryFolder folder;
  NativeLauncher launcher{NativePaths("")};
  const std::vector<std::string> arguments = {
      folder.Path("out"),    "a b", "$(id)", "\"q\"", "", "*", "x\\\"", "C:\\a b\\", "%PATH%",
      "\xC3\xA4\xE2\x86\x92"};
  EXPECT_GT(launcher.Start(ArgumentPrinter(), arguments), 0);
  EXPECT_EQ(WaitFor(folder, "out"), "a b|$(id)|\"q\"||*|x\\\"|C:\\a b\\|%PATH%|\xC3\xA4\xE2\x86\x92|");
}

TEST(NativeLauncher, TellsWhenAProgramCannotBeRun) {
  const TemporaryFolder folder;
  NativeLauncher launcher{NativePaths("")};
  const std::string text = folder.Write("text.exe", "no program at all");
  for (const std::string& program :
       {folder.Path("none"), text, std::string(), folder.Path(), ArgumentPrinter() + std::string("\0x", 2)}) {
    EXPECT_EQ(launcher.Start(program, {}), 0) << program;
  }
}

TEST(NativePlatform, FindsItsOwnProgramAndDropsPausesOnRequest) {
  const TemporaryFolder folder;
  NativePlatformOptions options;
  options.drivesDirectory = folder.Path("drives");
  options.pauses = false;
  NativePlatform platform(options);
  EXPECT_EQ(platform.Services().program.name, "platform_tests");
  EXPECT_TRUE(NativeFileSystem("").FolderExists(platform.Services().program.directory));
  EXPECT_NE(platform.Services().system.LanguageName(), "");
  EXPECT_EQ(platform.Services().system.DisplayedIconFile("a.no-such-kind"), "");
  platform.Services().pauser.Sleep(std::chrono::hours(1));
  EXPECT_FALSE(folder.Exists("drives"));
}

TEST(SystemClock, TimesAreWrittenWithLeadingZeros) {
  const LocalTime time{2024, 1, 31, 4, 5, 6};
  EXPECT_EQ(FileTimeText(time), "20240131_040506");
  EXPECT_EQ(TraceTimeText(time), "31.01.2024 04:05:06");
}

}  // namespace
}  // namespace tessel::test
