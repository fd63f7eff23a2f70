// From path texts to native paths. A drive path ("C:\temp") lies in the drives directory ("<drives>/C/temp"),
// a share ("\\server\data") in "<drives>/UNC/server/data", and a path from the root of a drive without letter
// on drive C. A path that begins with "/" is native, and any other is relative to the working directory.
#pragma once

#include <string>
#include <string_view>

namespace tessel::posix {

class NativePaths {
 public:
  // The drives directory is a native path.
  explicit NativePaths(std::string drivesDirectory) : drivesDirectory_(std::move(drivesDirectory)) {}

  // ".." in a drive path ends at the drive's root, as the drive has nothing above it. Error 75 for a text
  // with a NUL character, which no native path can hold.
  [[nodiscard]] std::string Native(std::string_view path) const;
  // Native folder of the drive or share root that a path lies on; empty for any other path.
  [[nodiscard]] std::string DriveRoot(std::string_view path) const;

 private:
  std::string drivesDirectory_;
};

}  // namespace tessel::posix
