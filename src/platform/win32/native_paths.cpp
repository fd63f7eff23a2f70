#include "platform/win32/native_paths.h"

#include <algorithm>
#include <vector>

#include "host/ascii.h"
#include "host/error.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows_api.h"

namespace tessel::windows {
namespace {

// Folders end sooner than files, as a name of 8.3 must fit into them.
constexpr std::size_t kSafeLength = 240;

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

std::wstring FullPath(const std::wstring& path) {
  const DWORD size = ::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  std::wstring full(size, L'\0');
  full.resize(::GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
  return full.empty() ? path : full;
}

}  // namespace

std::wstring WithoutLengthLimit(const std::wstring& fullPath) {
  if (fullPath.starts_with(LR"(\\?\)") || fullPath.starts_with(LR"(\\.\)")) return fullPath;
  if (fullPath.starts_with(LR"(\\)")) return LR"(\\?\UNC)" + fullPath.substr(1);
  return LR"(\\?\)" + fullPath;
}

std::string NativePaths::Native(std::string_view path) const {
  if (path.find('\0') != std::string_view::npos) {
    throw RuntimeError(error_number::kPathFileAccess, "The path holds a NUL character");
  }
  const DrivePath drive = SplitDrive(path);
  if (drivesDirectory_.empty() || path.starts_with('/') || drive.root.empty()) return std::string(path);
  std::string native = drivesDirectory_ + "/" + drive.root;
  for (const std::string_view part : NormalParts(drive.rest))
    native.append("/").append(part);
  return native;
}

std::wstring NativePaths::Wide(std::string_view path) const {
  std::wstring wide = ToWide(Native(path));
  std::replace(wide.begin(), wide.end(), L'/', L'\\');
  // The separator of a drive's root belongs to it.
  while (wide.size() > 1 && wide.back() == L'\\' && wide[wide.size() - 2] != L':')
    wide.pop_back();
  return wide.size() < kSafeLength ? wide : WithoutLengthLimit(FullPath(wide));
}

std::string NativePaths::DriveRoot(std::string_view path) const {
  if (drivesDirectory_.empty() || path.starts_with('/')) return {};
  const DrivePath drive = SplitDrive(path);
  return drive.root.empty() ? std::string() : drivesDirectory_ + "/" + drive.root;
}

}  // namespace tessel::windows
