#include "platform/posix/posix_services.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <thread>

#include "platform/posix/posix_system_information.h"
#include "support/temporary_folder.h"

namespace tessel::posix {
namespace {

// The file's content once it has come into being; empty after ten seconds without it.
std::string WaitFor(const test::TemporaryFolder& folder, const std::string& name) {
  for (int i = 0; i < 1000 && !folder.Exists(name); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return folder.Exists(name) ? folder.Read(name) : std::string();
}

std::string Script(const test::TemporaryFolder& folder, const std::string& name, const std::string& text) {
  const std::string path = folder.Write(name, text);
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  return path;
}

TEST(ProcessLauncher, PassesArgumentsAsTheyAreAndLeavesNoChild) {
  const test::TemporaryFolder folder;
  const std::string script =
      Script(folder, "drives/C/tools/mon.sh",
             "#!/bin/sh\nfor a in \"$@\"; do printf '%s|' \"$a\"; done > " + folder.Path("out.part") +
                 "\nmv " + folder.Path("out.part") + " " + folder.Path("out") + "\n");
  PosixProcessLauncher launcher{NativePaths(folder.Path("drives"))};
  EXPECT_GT(launcher.Start(R"(C:\tools\mon.sh)", {"a b", "$(id)", "\"q\"", "", "*"}), 0);
  EXPECT_EQ(WaitFor(folder, "out"), "a b|$(id)|\"q\"||*|");
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST(ProcessLauncher, TellsWhenAProgramCannotBeRun) {
  const test::TemporaryFolder folder;
  PosixProcessLauncher launcher{NativePaths(folder.Path("drives"))};
  const std::string text = Script(folder, "text.exe", "no program at all");
  const std::string closed = folder.Write("closed", "#!/bin/sh\n");
  for (const std::string& program : {folder.Path("none"), std::string(R"(C:\none.exe)"), text, closed,
                                     std::string(), folder.Path(), std::string("/bin/sh\0x", 9)}) {
    EXPECT_EQ(launcher.Start(program, {}), 0) << program;
  }
}

TEST(SystemInformation, NamesTheLanguageWithItsRegion) {
  struct Case {
    const char* locale;
    const char* name;
  };
  const Case cases[] = {{"de_DE.UTF-8", "Deutsch (Deutschland)"},
                        {"de_AT@euro", "Deutsch (Österreich)"},
                        {"de", "Deutsch (Deutschland)"},
                        {"de_XX", "Deutsch (XX)"},
                        {"en_US.utf8", "English (United States)"},
                        {"C", "English (United States)"},
                        {"C.UTF-8", "English (United States)"},
                        {"", "English (United States)"},
                        {"tlh_KX", "tlh (KX)"}};
  for (const Case& each : cases)
    EXPECT_EQ(LanguageNameOfLocale(each.locale), each.name) << each.locale;
}

TEST(SystemInformation, FindsIconsByExtension) {
  const test::TemporaryFolder folder;
  folder.Write("mime/globs2",
               "# comment\n50:application/pdf:*.pdf\n50:text/plain:*.txt\n50:model/step:*.stp\n");
  folder.Write("icons/hicolor/32x32/mimetypes/application-pdf.png", "");
  folder.Write("icons/hicolor/scalable/mimetypes/text-x-generic.svg", "");
  const PosixSystemInformation system("", {folder.Path("none"), folder.Path()});
  EXPECT_EQ(system.DisplayedIconFile(R"(C:\docs\A.PDF)"),
            folder.Path("icons/hicolor/32x32/mimetypes/application-pdf.png"));
  EXPECT_EQ(system.DisplayedIconFile("/x/notes.txt"),
            folder.Path("icons/hicolor/scalable/mimetypes/text-x-generic.svg"));
  for (const char* path : {"a.stp", "a.unknown", "a", "", "a.", "a.*"}) {
    EXPECT_EQ(system.DisplayedIconFile(path), "") << path;
  }
}

}  // namespace
}  // namespace tessel::posix
