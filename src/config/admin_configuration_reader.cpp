#include "config/admin_configuration_reader.h"

namespace tessel {

std::string AdminConfigurationReader::ReadValue(const PcSessionPtr& session, const std::string& section,
                                                const std::string& key, const std::string& defaultText,
                                                const SettingsSource& source) {
  return PelicoreAdminTool::IniValue_Retrieve(Text(session, source), section, key, defaultText);
}

std::vector<std::string> AdminConfigurationReader::SectionEntries(const PcSessionPtr& session,
                                                                  const std::string& section) {
  return SectionLines(session, section, {});
}

std::vector<std::string> AdminConfigurationReader::SectionLines(const PcSessionPtr& session,
                                                                const std::string& section,
                                                                const SettingsSource& source) {
  return PelicoreAdminTool::IniSectionLines(Text(session, source), section);
}

std::shared_ptr<void> AdminConfigurationReader::KeepSettings() {
  const auto kept = std::make_shared<Found>();
  kept_ = kept;
  return kept;
}

std::string AdminConfigurationReader::Text(const PcSessionPtr& session, const SettingsSource& source) {
  if (source.object) return tool_.getValueFromAdminObj(source.object, source.attributeName);
  const std::shared_ptr<Found> kept = kept_.lock();
  PcObjectPtr object;
  if (kept && kept->settings && kept->session == session && kept->setName == source.setName) {
    object = kept->settings;
  } else {
    object = tool_.adm_GetLinkedAdmObj(session, source.setName, nullptr);
    if (kept) *kept = {session, source.setName, object};
  }
  return object ? tool_.getValueFromAdminObj(object, source.attributeName) : std::string();
}

}  // namespace tessel
