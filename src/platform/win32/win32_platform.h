// The operating system's services on Windows, made once by the composition root.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/operating_system.h"

namespace tessel {

struct Win32PlatformOptions {
  // Folder that drive paths are mapped below, for trials that must not touch the drives; nothing:
  // DefaultDrivesDirectory. Empty: drive paths are what they say.
  std::optional<std::string> drivesDirectory;
  // Off: every pause is over at once.
  bool pauses = true;
  // Nothing: where the file of the running program or library lies.
  std::optional<ProgramLocation> program;
  std::string ansiCodePage = "windows-1252";
};

// "%TESSEL_DRIVES%"; empty when it is not set.
[[nodiscard]] std::string DefaultDrivesDirectory();

// Folder and name of the file that this code was loaded from: the program, or the library in a client.
[[nodiscard]] ProgramLocation RunningProgram();

// What stands behind the program's name in its command line, as UTF-8.
[[nodiscard]] std::vector<std::string> ProgramArguments(int count, char** arguments);

// Whether a person looks at standard error.
[[nodiscard]] bool StandardErrorIsTerminal();

// Keeps files that are opened later from taking the place of a standard stream that was closed, and makes a
// reader who has gone an error of the write. Called once, at the beginning of the program.
void KeepStandardStreams();

// Nothing to do: Ctrl-C ends a wait for input by itself.
void LetSignalsEndWaits();

// Asks a person at the terminal, who does not see what he types. Nothing without a terminal or at its end.
[[nodiscard]] std::optional<std::string> AskUnseen(const std::string& question);

class Win32Platform {
 public:
  // Error 5 for an ANSI code page that the machine does not know.
  explicit Win32Platform(const Win32PlatformOptions& options = {});
  ~Win32Platform();

  // References into this object.
  [[nodiscard]] Platform& Services();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace tessel
