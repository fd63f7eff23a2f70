// The operating system's services on POSIX, made once by the composition root.
#pragma once

#include <memory>
#include <optional>
#include <string>

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

// Whether a person looks at standard error.
[[nodiscard]] bool StandardErrorIsTerminal();

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
