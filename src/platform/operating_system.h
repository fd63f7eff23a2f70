// Ports of the remaining operating-system services: clock, pause, processes, profile strings, language,
// icons.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace tessel {

// A point of local time to the second.
struct LocalTime {
  int year = 1970;
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

// "yyyymmdd_hhmmss", as names and files carry it.
[[nodiscard]] std::string FileTimeText(const LocalTime& time);
// "dd.mm.yyyy hh:mm:ss", as trace start lines carry it.
[[nodiscard]] std::string TraceTimeText(const LocalTime& time);

class Clock {
 public:
  virtual ~Clock() = default;
  [[nodiscard]] virtual LocalTime Now() const = 0;
};

class Pauser {
 public:
  virtual ~Pauser() = default;
  // Blocks the calling thread.
  virtual void Sleep(std::chrono::milliseconds time) = 0;
};

class ProcessLauncher {
 public:
  virtual ~ProcessLauncher() = default;
  // Starts a program with an argument vector, never through a shell, minimised and without focus, and does
  // not wait for it. The process id, or 0 when it could not be started.
  [[nodiscard]] virtual std::int32_t Start(const std::string& program,
                                           const std::vector<std::string>& arguments) = 0;
};

// Windows private-profile strings: an INI file in the ANSI code page, names compared in any letter case.
class ProfileStrings {
 public:
  virtual ~ProfileStrings() = default;
  // The value, or the default when file, section or key is missing; at most size - 1 characters of it.
  [[nodiscard]] virtual std::string Get(const std::string& file, const std::string& section,
                                        const std::string& key, const std::string& defaultText,
                                        std::size_t size) const = 0;
  // Non-zero when the value was written; 0 otherwise.
  [[nodiscard]] virtual std::int32_t Write(const std::string& file, const std::string& section,
                                           const std::string& key, const std::string& value) = 0;
};

class SystemInformation {
 public:
  virtual ~SystemInformation() = default;
  // Name of the system's default language with its region, for example "Deutsch (Deutschland)".
  [[nodiscard]] virtual std::string LanguageName() const = 0;
  // File that holds the icon shown for a file; empty when there is none.
  [[nodiscard]] virtual std::string DisplayedIconFile(const std::string& path) const = 0;
};

// Where the program's own file lies.
struct ProgramLocation {
  std::string directory;  // without a separator at its end
  std::string name;       // file name without extension
};

class FileSystem;
class TextEncodings;

// The operating system as the composition root hands it down.
struct Platform {
  FileSystem& files;
  const TextEncodings& encodings;
  const Clock& clock;
  Pauser& pauser;
  ProcessLauncher& processes;
  ProfileStrings& profiles;
  const SystemInformation& system;
  ProgramLocation program;
  // Code page of catalogues, settings files and trace files.
  std::string ansiCodePage = "windows-1252";
};

}  // namespace tessel
