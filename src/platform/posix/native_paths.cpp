#include "platform/posix/native_paths.h"

#include <algorithm>
#include <vector>

#include "host/ascii.h"
#include "host/error.h"

namespace tessel::posix {
namespace {

constexpr std::string_view kSeparators = "/\\";

bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// The folder below the drives directory that a path starts in, and the rest of the path.
struct DrivePath {
  std::string root;  // "C", "UNC"; empty when the path lies on no drive
  std::string_view rest;
};

DrivePath SplitDrive(std::string_view path) {
  if (path.size() >= 2 && path[1] == ':' && IsLetter(path[0])) {
    const char letter = UpperCase(path[0]);
    return {std::string(1, letter), path.substr(2)};
  }
  if (path.starts_with("\\\\")) return {"UNC", path.substr(2)};
  if (path.starts_with('\\')) return {"C", path.substr(1)};
  return {{}, path};
}

std::vector<std::string_view> NormalParts(std::string_view path) {
  std::vector<std::string_view> parts;
  while (!path.empty()) {
    const auto end = std::min(path.find_first_of(kSeparators), path.size());
    const std::string_view part = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    if (part == "..") {
      if (!parts.empty()) parts.pop_back();
    } else if (!part.empty() && part != ".") {
      parts.push_back(part);
    }
  }
  return parts;
}

}  // namespace

std::string NativePaths::Native(std::string_view path) const {
  if (path.find('\0') != std::string_view::npos) {
    throw RuntimeError(error_number::kPathFileAccess, "The path holds a NUL character");
  }
  if (path.starts_with('/')) return std::string(path);
  const DrivePath drive = SplitDrive(path);
  if (drive.root.empty()) {
    std::string native(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
  }
  std::string native = drivesDirectory_ + "/" + drive.root;
  for (const std::string_view part : NormalParts(drive.rest)) {
    native.append("/").append(part);
  }
  return native;
}

std::string NativePaths::DriveRoot(std::string_view path) const {
  if (path.starts_with('/')) return {};
  const DrivePath drive = SplitDrive(path);
  return drive.root.empty() ? std::string() : drivesDirectory_ + "/" + drive.root;
}

}  // namespace tessel::posix
