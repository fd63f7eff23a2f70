#include "platform/posix/native_paths.h"

#include <algorithm>

#include "platform/drive_paths.h"

namespace tessel::posix {

std::string NativePaths::Native(std::string_view path) const {
  RefuseNul(path);
  if (path.starts_with('/')) return std::string(path);
  const DrivePath drive = SplitDrive(path);
  if (!drive.root.empty()) return BelowDrives(drivesDirectory_, drive);
  std::string native(path);
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

std::string NativePaths::DriveRoot(std::string_view path) const {
  if (path.starts_with('/')) return {};
  const DrivePath drive = SplitDrive(path);
  return drive.root.empty() ? std::string() : drivesDirectory_ + "/" + drive.root;
}

}  // namespace tessel::posix
