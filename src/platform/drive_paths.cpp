#include "platform/drive_paths.h"

#include <algorithm>
#include <vector>

#include "host/ascii.h"
#include "host/error.h"

namespace tessel {
namespace {

bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

std::vector<std::string_view> NormalParts(std::string_view path) {
  std::vector<std::string_view> parts;
  while (!path.empty()) {
    const auto end = std::min(path.find_first_of("/\\"), path.size());
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

DrivePath SplitDrive(std::string_view path) {
  if (path.size() >= 2 && path[1] == ':' && IsLetter(path[0])) {
    const char letter = UpperCase(path[0]);
    return {std::string(1, letter), path.substr(2)};
  }
  if (path.starts_with("\\\\")) return {"UNC", path.substr(2)};
  if (path.starts_with('\\')) return {"C", path.substr(1)};
  return {{}, path};
}

std::string BelowDrives(const std::string& drivesDirectory, const DrivePath& path) {
  std::string native = drivesDirectory + "/" + path.root;
  for (const std::string_view part : NormalParts(path.rest))
    native.append("/").append(part);
  return native;
}

void RefuseNul(std::string_view path) {
  if (path.find('\0') == std::string_view::npos) return;
  throw RuntimeError(error_number::kPathFileAccess, "The path holds a NUL character");
}

}  // namespace tessel
