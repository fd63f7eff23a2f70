#include "config/system_tool.h"

#include "host/error.h"
#include "platform/paths.h"

namespace tessel {
namespace {

// Of the buffer that profile strings are read into, with its NUL.
constexpr std::size_t kSettingSize = 256;

bool Contains(std::string_view line, std::string_view text) {
  return line.find(text) != std::string_view::npos;
}

// Whether a line of a section belongs to the next one. A line with the text that is looked for never does; an
// empty text is in every line, so there the next section's header is told by its missing "=".
bool EndsSection(std::string_view line, std::string_view text) {
  return Contains(line, "[") && (text.empty() ? !Contains(line, "=") : !Contains(line, text));
}

}  // namespace

std::string SystemTool::ReadSetting(const std::string& section, const std::string& key,
                                    const std::string& defaultText) const {
  return platform_.profiles.Get(iniFile_, section, key, defaultText, kSettingSize);
}

std::int16_t SystemTool::WriteSetting(const std::string& section, const std::string& key,
                                      const std::string& value) {
  return static_cast<std::int16_t>(platform_.profiles.Write(iniFile_, section, key, value));
}

std::vector<SystemTool::Setting> SystemTool::ReadSettingList(const std::string& section,
                                                             const std::string& filter) const {
  std::vector<Setting> settings;
  if (!platform_.files.FileExists(iniFile_)) return settings;
  const std::string header = "[" + section + "]";
  bool inSection = false;
  platform_.files.ReadLines(iniFile_, [&](std::string_view bytes) {
    const std::string line = ansi_->Decode(bytes);
    if (!inSection) {
      inSection = Contains(line, header);
      return true;
    }
    if (EndsSection(line, filter)) return false;
    const auto equals = line.find('=');
    if (Contains(line, filter) && equals != std::string::npos) {
      settings.emplace_back(line.substr(0, equals), line.substr(equals + 1));
    }
    return true;
  });
  return settings;
}

void SystemTool::DeleteSetting(const std::string& section, const std::string& key) {
  if (!platform_.files.FileExists(iniFile_)) return;
  enum class Place { kBefore, kInside, kBehind };
  const std::string header = ansi_->Encode("[" + section + "]");
  const std::string keyBytes = ansi_->Encode(key);
  Place place = Place::kBefore;
  std::string kept;
  platform_.files.ReadLines(iniFile_, [&](std::string_view line) {
    if (place == Place::kInside && EndsSection(line, keyBytes)) place = Place::kBehind;
    const bool dropped = place == Place::kInside && Contains(line, keyBytes);
    if (place == Place::kBefore && Contains(line, header)) place = Place::kInside;
    if (!dropped) kept.append(line).append("\r\n");
    return true;
  });
  platform_.files.WriteBytes(iniFile_, kept);
}

std::string SystemTool::GetSystemLanguage(std::int16_t mode) const {
  const std::string name = platform_.system.LanguageName();
  const auto bracket = name.find('(');
  if (mode == 0) return name;
  if (mode == 2) {
    if (bracket == std::string::npos) {
      throw RuntimeError(error_number::kSubscriptOutOfRange,
                         "The language name \"" + name + "\" has no region");
    }
    return name.substr(bracket);
  }
  // Without the blank before the bracket.
  return bracket == std::string::npos || bracket == 0 ? name.substr(0, bracket) : name.substr(0, bracket - 1);
}

void SystemTool::Remove_ReadOnly_Flag(const std::string& folder, const std::string& fileName,
                                      std::string& file) {
  if (file.empty()) {
    const std::string path = paths::Join(folder, fileName);
    if (platform_.files.FileExists(path)) file = path;
  }
  if (!file.empty() && platform_.files.IsReadOnly(file)) platform_.files.SetReadOnly(file, false);
}

std::string SystemTool::GetDisplayedIconFileName(const std::string& path) const {
  return platform_.system.DisplayedIconFile(path);
}

}  // namespace tessel
