#include "platform/win32/native_paths.h"

#include <algorithm>

#include "platform/drive_paths.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows_api.h"

namespace tessel::windows {
namespace {

// Folders end sooner than files, as a name of 8.3 must fit into them.
constexpr std::size_t kSafeLength = 240;

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
  RefuseNul(path);
  const DrivePath drive = SplitDrive(path);
  if (drivesDirectory_.empty() || path.starts_with('/') || drive.root.empty()) return std::string(path);
  return BelowDrives(drivesDirectory_, drive);
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
