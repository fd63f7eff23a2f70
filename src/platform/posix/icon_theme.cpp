#include "platform/posix/icon_theme.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "host/ascii.h"

namespace tessel::posix {
namespace {

std::string LowerExtension(const std::string& fileName) {
  const auto dot = fileName.rfind('.');
  if (dot == std::string::npos) return {};
  return LowerCase(std::string_view(fileName).substr(dot + 1));
}

}  // namespace

std::string IconTheme::IconFile(const std::string& fileName) const {
  const std::string extension = LowerExtension(fileName);
  if (extension.empty() || extension.find('/') != std::string::npos) return {};
  const auto [entry, isNew] = found_.try_emplace(extension);
  if (!isNew) return entry->second;
  const std::string mimeType = MimeType(extension);
  if (mimeType.empty()) return {};
  std::string iconName = mimeType;
  std::replace(iconName.begin(), iconName.end(), '/', '-');
  entry->second = FindIcon(iconName);
  if (entry->second.empty()) {
    entry->second = FindIcon(mimeType.substr(0, mimeType.find('/')) + "-x-generic");
  }
  return entry->second;
}

// A line of the database is "weight:type:pattern", the best first.
std::string IconTheme::MimeType(const std::string& extension) const {
  const std::string pattern = ":*." + extension;
  for (const std::string& folder : dataFolders_) {
    std::ifstream patterns(folder + "/mime/globs2");
    for (std::string line; std::getline(patterns, line);) {
      const auto first = line.find(':');
      const auto second = line.find(':', first + 1);
      if (line.starts_with('#') || first == std::string::npos || second == std::string::npos) continue;
      const std::string_view rest = std::string_view(line).substr(second);
      if (rest == pattern) return line.substr(first + 1, second - first - 1);
    }
  }
  return {};
}

std::string IconTheme::FindIcon(const std::string& iconName) const {
  constexpr const char* kThemes[] = {"hicolor", "Adwaita", "breeze", "gnome", "oxygen"};
  constexpr const char* kFolders[] = {"16x16/mimetypes", "22x22/mimetypes", "24x24/mimetypes",
                                      "32x32/mimetypes", "48x48/mimetypes", "mimetypes/16",
                                      "mimetypes/22",    "mimetypes/32",    "scalable/mimetypes"};
  std::error_code ignored;
  for (const std::string& dataFolder : dataFolders_) {
    for (const char* theme : kThemes) {
      for (const char* folder : kFolders) {
        for (const char* extension : {".png", ".svg"}) {
          std::string file = dataFolder;
          file.append("/icons/").append(theme).append("/").append(folder).append("/");
          file.append(iconName).append(extension);
          if (std::filesystem::exists(file, ignored)) return file;
        }
      }
    }
  }
  return {};
}

}  // namespace tessel::posix
