#include "config/admin_configuration_reader.h"

namespace tessel {

std::string AdminConfigurationReader::ReadValue(const PcSessionPtr& session, const std::string& section,
                                                const std::string& key, const std::string& defaultText,
                                                const std::string& setName, const std::string&,
                                                const std::string& attributeName,
                                                const PcObjectPtr& settings) {
  return PelicoreAdminTool::IniValue_Retrieve(Text(session, setName, attributeName, settings), section, key,
                                              defaultText);
}

std::vector<std::string> AdminConfigurationReader::SectionEntries(const PcSessionPtr& session,
                                                                  const std::string& section) {
  return SectionLines(session, section, admin_setting::kSetName, admin_setting::kClassName,
                      admin_setting::kTextAttribute, nullptr);
}

std::vector<std::string> AdminConfigurationReader::SectionLines(
    const PcSessionPtr& session, const std::string& section, const std::string& setName, const std::string&,
    const std::string& attributeName, const PcObjectPtr& settings) {
  return PelicoreAdminTool::IniSectionLines(Text(session, setName, attributeName, settings), section);
}

void AdminConfigurationReader::BeginReading() {
  reading_ = true;
  found_ = {};
}

void AdminConfigurationReader::EndReading() {
  reading_ = false;
  found_ = {};
}

std::string AdminConfigurationReader::Text(const PcSessionPtr& session, const std::string& setName,
                                           const std::string& attributeName, const PcObjectPtr& settings) {
  if (settings) return tool_.getValueFromAdminObj(settings, attributeName);
  PcObjectPtr object;
  if (reading_ && found_.settings && found_.session == session && found_.setName == setName) {
    object = found_.settings;
  } else {
    object = tool_.adm_GetLinkedAdmObj(session, setName, nullptr);
    if (reading_) found_ = {session, setName, object};
  }
  return object ? tool_.getValueFromAdminObj(object, attributeName) : std::string();
}

}  // namespace tessel
