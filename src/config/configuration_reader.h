// Port of the configuration reader: values and sections of admin setting objects.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/names.h"
#include "host/object.h"
#include "host/session.h"

namespace tessel {

// Which settings a reading is of.
struct SettingsSource {
  PcObjectPtr object = nullptr;  // nothing: the admin setting object that is found for the set name
  std::string setName = admin_setting::kSetName;
  std::string className = admin_setting::kClassName;
  std::string attributeName = admin_setting::kTextAttribute;
};

class ConfigurationReader {
 public:
  virtual ~ConfigurationReader() = default;

  // The value of a key in the INI text of the settings; the default when section or key is missing. Errors as
  // the host raises them.
  [[nodiscard]] virtual std::string ReadValue(const PcSessionPtr& session, const std::string& section,
                                              const std::string& key, const std::string& defaultText,
                                              const SettingsSource& source) = 0;

  // Entries of a section of the program's own settings in text order: the lines that are neither empty nor
  // comments, as they stand.
  [[nodiscard]] virtual std::vector<std::string> SectionEntries(const PcSessionPtr& session,
                                                                const std::string& section) = 0;

  // The same lines of a section of the given settings.
  [[nodiscard]] virtual std::vector<std::string> SectionLines(const PcSessionPtr& session,
                                                              const std::string& section,
                                                              const SettingsSource& source) = 0;

  // Readings of one moment: while the result lives, the reader may keep what it found. One that keeps nothing
  // gives nothing.
  [[nodiscard]] virtual std::shared_ptr<void> KeepSettings() { return nullptr; }
};

}  // namespace tessel
