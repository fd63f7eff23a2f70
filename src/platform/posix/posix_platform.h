// The operating system's services on POSIX, made once by the composition root.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/operating_system.h"

namespace tessel {

struct PosixPlatformOptions {
  // Native path; nothing: DefaultDrivesDirectory.
  std::optional<std::string> drivesDirectory;
  // Off: every pause is over at once.
  bool pauses = true;
  // Nothing: where the running program's own file lies.
  std::optional<ProgramLocation> program;
  std::string ansiCodePage = "windows-1252";
};

// "$TESSEL_DRIVES", else "$XDG_DATA_HOME/tessel/drives", else "~/.local/share/tessel/drives".
[[nodiscard]] std::string DefaultDrivesDirectory();

// Folder and name of the running program's file.
[[nodiscard]] ProgramLocation RunningProgram();

// What stands behind the program's name in its command line, as UTF-8.
[[nodiscard]] std::vector<std::string> ProgramArguments(int count, char** arguments);

// Whether a person looks at standard error.
[[nodiscard]] bool StandardErrorIsTerminal();

// Keeps files that are opened later from taking the place of a standard stream that was closed, and makes a
// reader who has gone an error of the write. Called once, at the beginning of the program.
void KeepStandardStreams();

// Lets Ctrl-C and TERM, as they are caught at the moment, end a wait for input.
void LetSignalsEndWaits();

// Asks a person at the terminal, who does not see what he types. Nothing without a terminal or at its end.
[[nodiscard]] std::optional<std::string> AskUnseen(const std::string& question);

class PosixPlatform {
 public:
  // Error 5 for an ANSI code page that the machine does not know.
  explicit PosixPlatform(const PosixPlatformOptions& options = {});
  ~PosixPlatform();

  // References into this object.
  [[nodiscard]] Platform& Services();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace tessel
