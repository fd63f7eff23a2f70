// Drive paths as folders of a drives directory, which stands for the drives of a machine that has none, or
// whose drives are not to be touched: "C:\temp" lies in "<drives>/C/temp", the share "\\server\data" in
// "<drives>/UNC/server/data", and a path from the root of a drive without letter on drive C.
#pragma once

#include <string>
#include <string_view>

namespace tessel {

struct DrivePath {
  std::string root;       // "C", "UNC"; empty when the path lies on no drive
  std::string_view rest;  // the path behind it
};

[[nodiscard]] DrivePath SplitDrive(std::string_view path);

// Where a drive path lies, with "/" between its parts. ".." ends at the drive's root, as the drive has
// nothing above it.
[[nodiscard]] std::string BelowDrives(const std::string& drivesDirectory, const DrivePath& path);

// Error 75 for a text with a NUL character, which no native path can hold.
void RefuseNul(std::string_view path);

}  // namespace tessel
