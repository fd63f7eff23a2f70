// Path texts to paths of the Windows API.
#pragma once

#include <string>
#include <string_view>

namespace tessel::windows {

class NativePaths {
 public:
  // With a drives directory, drive paths lie below it, a folder a drive, and only paths that begin with "/"
  // (below the root of the current drive) are taken as they are; so trials touch no drive. Empty, as in
  // service: every path is the system's own.
  explicit NativePaths(std::string drivesDirectory) : drivesDirectory_(std::move(drivesDirectory)) {}

  // The native path as a text, as other programs take it. Error 75 for a path with a NUL.
  [[nodiscard]] std::string Native(std::string_view path) const;
  // The same for a call of the system: without separators at its end, and in the form without a limit of
  // length when it is long.
  [[nodiscard]] std::wstring Wide(std::string_view path) const;
  // The folder that stands for a path's drive; empty when the path lies on no mapped drive.
  [[nodiscard]] std::string DriveRoot(std::string_view path) const;

 private:
  std::string drivesDirectory_;
};

// A full path with the prefix that lifts the limit of 260 characters: "\\?\C:\...", "\\?\UNC\server\...".
[[nodiscard]] std::wstring WithoutLengthLimit(const std::wstring& fullPath);

}  // namespace tessel::windows
