// Port of the configuration reader: values and sections of admin setting objects.
#pragma once

#include <string>
#include <vector>

#include "host/object.h"
#include "host/session.h"

namespace tessel {

// What names the settings of this program in the database.
namespace admin_setting {
inline constexpr const char* kSetName = "Initialization";
inline constexpr const char* kClassName = "Admin Setting";
inline constexpr const char* kNameAttribute = "VRKX_VALUE_1";
inline constexpr const char* kTextAttribute = "VRKX_VALUE_LONG";
}  // namespace admin_setting

class ConfigurationReader {
 public:
  virtual ~ConfigurationReader() = default;

  // The value of a key in the INI text of the given admin setting object, or of the one found for the set
  // name when none is given; the default when section or key is missing. Errors as the host raises them.
  [[nodiscard]] virtual std::string ReadValue(const PcSessionPtr& session, const std::string& section,
                                              const std::string& key, const std::string& defaultText,
                                              const std::string& setName, const std::string& className,
                                              const std::string& attributeName,
                                              const PcObjectPtr& settings) = 0;

  // Entries of a section of the program's own settings in text order: the lines that are neither empty nor
  // comments, as they stand.
  [[nodiscard]] virtual std::vector<std::string> SectionEntries(const PcSessionPtr& session,
                                                                const std::string& section) = 0;

  // The same lines of a section of the given settings object (or of the one found for the set name).
  [[nodiscard]] virtual std::vector<std::string> SectionLines(
      const PcSessionPtr& session, const std::string& section, const std::string& setName,
      const std::string& className, const std::string& attributeName, const PcObjectPtr& settings) = 0;

  // Around a row of readings of one moment, within which a reader may keep what it found. Readers that keep
  // nothing do nothing.
  virtual void BeginReading() {}
  virtual void EndReading() {}
};

// One such row.
class ConfigurationReading {
 public:
  explicit ConfigurationReading(ConfigurationReader& reader) : reader_(reader) { reader_.BeginReading(); }
  ~ConfigurationReading() { reader_.EndReading(); }
  ConfigurationReading(const ConfigurationReading&) = delete;
  ConfigurationReading& operator=(const ConfigurationReading&) = delete;

 private:
  ConfigurationReader& reader_;
};

}  // namespace tessel
