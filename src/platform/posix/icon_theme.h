// The icon of a file by its extension, as the desktop's shared MIME database and icon themes have it.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace tessel::posix {

class IconTheme {
 public:
  // Data folders in order of preference, native paths ("/usr/local/share", "/usr/share").
  explicit IconTheme(std::vector<std::string> dataFolders) : dataFolders_(std::move(dataFolders)) {}

  // The icon's file; empty when the desktop has none for the extension.
  [[nodiscard]] std::string IconFile(const std::string& fileName) const;

 private:
  [[nodiscard]] std::string MimeType(const std::string& extension) const;
  [[nodiscard]] std::string FindIcon(const std::string& iconName) const;

  std::vector<std::string> dataFolders_;
  // By extension: looking through the themes costs hundreds of file tests.
  mutable std::map<std::string, std::string> found_;
};

}  // namespace tessel::posix
