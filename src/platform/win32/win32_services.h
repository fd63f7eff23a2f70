// Clock, pause, processes, profile strings, language and icons on Windows.
#pragma once

#include "platform/operating_system.h"
#include "platform/text_encoding.h"
#include "platform/win32/native_paths.h"

namespace tessel::windows {

class SystemClock : public Clock {
 public:
  [[nodiscard]] LocalTime Now() const override;
};

class RealPauser : public Pauser {
 public:
  void Sleep(std::chrono::milliseconds time) override;
};

// Starts programs minimised and without the focus.
class Win32ProcessLauncher : public ProcessLauncher {
 public:
  explicit Win32ProcessLauncher(NativePaths paths) : paths_(std::move(paths)) {}
  [[nodiscard]] std::int32_t Start(const std::string& program,
                                   const std::vector<std::string>& arguments) override;

 private:
  NativePaths paths_;
};

// One argument as a program's start-up code reads it back from its command line.
[[nodiscard]] std::wstring QuotedArgument(const std::wstring& argument);

// The system's private profile strings, in its ANSI code page.
class Win32ProfileStrings : public ProfileStrings {
 public:
  explicit Win32ProfileStrings(NativePaths paths) : paths_(std::move(paths)) {}
  [[nodiscard]] std::string Get(const std::string& file, const std::string& section, const std::string& key,
                                const std::string& defaultText, std::size_t size) const override;
  // 0 as well for a text with a line break, which would be a second line.
  [[nodiscard]] std::int32_t Write(const std::string& file, const std::string& section,
                                   const std::string& key, const std::string& value) override;

 private:
  NativePaths paths_;
};

class Win32SystemInformation : public SystemInformation {
 public:
  explicit Win32SystemInformation(NativePaths paths) : paths_(std::move(paths)) {}
  [[nodiscard]] std::string LanguageName() const override;
  // The file that the shell takes the icon of a file's kind from: a program, a library or an icon file.
  [[nodiscard]] std::string DisplayedIconFile(const std::string& path) const override;

 private:
  NativePaths paths_;
};

}  // namespace tessel::windows
