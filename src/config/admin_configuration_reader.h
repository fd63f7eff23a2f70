// The configuration reader on the admin settings store.
#pragma once

#include "config/configuration_reader.h"
#include "config/pelicore_admin_tool.h"
#include "messages/trace.h"

namespace tessel {

class AdminConfigurationReader : public ConfigurationReader {
 public:
  explicit AdminConfigurationReader(Trace& trace) : tool_(trace) {}

  [[nodiscard]] std::string ReadValue(const PcSessionPtr& session, const std::string& section,
                                      const std::string& key, const std::string& defaultText,
                                      const std::string& setName, const std::string& className,
                                      const std::string& attributeName, const PcObjectPtr& settings) override;
  [[nodiscard]] std::vector<std::string> SectionEntries(const PcSessionPtr& session,
                                                        const std::string& section) override;
  [[nodiscard]] std::vector<std::string> SectionLines(const PcSessionPtr& session, const std::string& section,
                                                      const std::string& setName,
                                                      const std::string& className,
                                                      const std::string& attributeName,
                                                      const PcObjectPtr& settings) override;
  void BeginReading() override;
  void EndReading() override;

 private:
  // The INI text; empty when there is no settings object.
  [[nodiscard]] std::string Text(const PcSessionPtr& session, const std::string& setName,
                                 const std::string& attributeName, const PcObjectPtr& settings);

  PelicoreAdminTool tool_;
  // Within one reading the settings object of a session and set name is looked for once.
  struct Found {
    PcSessionPtr session;
    std::string setName;
    PcObjectPtr settings;
  };
  bool reading_ = false;
  Found found_;
};

}  // namespace tessel
