// The configuration reader on the admin settings store.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "config/configuration_reader.h"
#include "config/pelicore_admin_tool.h"
#include "messages/trace.h"

namespace tessel {

class AdminConfigurationReader : public ConfigurationReader {
 public:
  explicit AdminConfigurationReader(Trace& trace) : tool_(trace) {}

  [[nodiscard]] std::string ReadValue(const PcSessionPtr& session, const std::string& section,
                                      const std::string& key, const std::string& defaultText,
                                      const SettingsSource& source) override;
  [[nodiscard]] std::vector<std::string> SectionEntries(const PcSessionPtr& session,
                                                        const std::string& section) override;
  [[nodiscard]] std::vector<std::string> SectionLines(const PcSessionPtr& session, const std::string& section,
                                                      const SettingsSource& source) override;
  [[nodiscard]] std::shared_ptr<void> KeepSettings() override;

 private:
  // The settings object that was found for a session and set name.
  struct Found {
    PcSessionPtr session;
    std::string setName;
    PcObjectPtr settings;
  };

  // The INI text; empty when there is no settings object.
  [[nodiscard]] std::string Text(const PcSessionPtr& session, const SettingsSource& source);

  PelicoreAdminTool tool_;
  std::weak_ptr<Found> kept_;
};

}  // namespace tessel
