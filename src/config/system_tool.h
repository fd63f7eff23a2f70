// SystemTool: the local settings file and small operating-system utilities.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/value.h"
#include "platform/file_system.h"
#include "platform/operating_system.h"
#include "platform/text_encoding.h"
#include "toolkit/toolkit.h"

namespace tessel {

class SystemTool {
 public:
  // Both references outlive the object. Error 5 when the platform's ANSI code page is unknown.
  SystemTool(Platform& platform, Toolkit& toolkit)
      : platform_(platform), toolkit_(toolkit), ansi_(platform.encodings.Open(platform.ansiCodePage)) {}

  // The local settings file of all operations below; none before it is set.
  void SetIniFile(std::string path) { iniFile_ = std::move(path); }
  [[nodiscard]] Value GetIniFile() const { return iniFile_; }

  // At most 255 characters of the value; the default when the key is missing.
  [[nodiscard]] std::string ReadSetting(const std::string& section, const std::string& key,
                                        const std::string& defaultText) const;
  // Non-zero when written.
  std::int16_t WriteSetting(const std::string& section, const std::string& key, const std::string& value);

  // Name and value of the section's lines that contain the filter text and an "=", in file order; an empty
  // filter takes all of them. Empty when there is no such file or section.
  using Setting = std::pair<std::string, std::string>;
  [[nodiscard]] std::vector<Setting> ReadSettingList(const std::string& section,
                                                     const std::string& filter) const;
  // Drops every line of the section that contains the key text anywhere, so "Mail" drops "MailStructure=2"
  // too; an empty key drops all of them. Nothing happens without the file. Errors as FileSystem raises them.
  void DeleteSetting(const std::string& section, const std::string& key);

  // Name of the system's language, "Deutsch (Deutschland)": whole for mode 0, "(Deutschland)" for mode 2
  // (error 9 for a name without bracket), else "Deutsch".
  [[nodiscard]] std::string GetSystemLanguage(std::int16_t mode) const;
  // Keeps the window above all others, where it is.
  void VBFormOnTop(Window& window) { toolkit_.BringToTop(window); }
  void Pause(std::int32_t milliseconds) { platform_.pauser.Sleep(std::chrono::milliseconds(milliseconds)); }
  // Clears the read-only attribute of a file. `file` is the path of the file meant; when it is empty, it
  // becomes that of the name in the folder if such a file exists. Errors as FileSystem raises them.
  void Remove_ReadOnly_Flag(const std::string& folder, const std::string& fileName, std::string& file);
  // Empty when there is none.
  [[nodiscard]] std::string GetDisplayedIconFileName(const std::string& path) const;

 private:
  Platform& platform_;
  Toolkit& toolkit_;
  std::shared_ptr<const TextEncoding> ansi_;
  std::string iniFile_;
};

}  // namespace tessel
