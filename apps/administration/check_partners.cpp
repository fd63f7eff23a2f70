// Settings of companies and contact persons: mapping and neutral formats.
#include <algorithm>

#include "administration/quiet_trace.h"
#include "administration/settings_text.h"
#include "administration/site_check.h"
#include "config/configuration_reader.h"
#include "config/pelicore_admin_tool.h"
#include "host/names.h"
#include "host/object_key.h"
#include "structure/xml/xml_names.h"

namespace tessel::administration {
namespace {

constexpr const char* kPartnerSettings = "DRAXASettings";
constexpr const char* kMapping = "Mapping_XML_StructureFile";

class PartnerCheck {
 public:
  PartnerCheck(const Site& site, Findings& findings) : site_(site), findings_(findings) {}

  void Run() {
    for (const char* mechanismName : {class_mechanism::kCompany, class_mechanism::kContactPerson}) {
      const PcClassMechanismPtr mechanism = site_.session->MetaData()->ClassMechanism(mechanismName);
      for (int i = 0; mechanism && i < mechanism->SupportedClassCount(); ++i)
        CheckClass(*mechanism->SupportedClass(i));
    }
  }

 private:
  void CheckClass(const PcClass& partners) {
    const PcQueryPtr query = site_.session->ObjectStore()->NewQuery();
    query->SetClass(partners.Id());
    for (const char* column : {attribute::kClassId, attribute::kObjectId})
      query->AddSelect(column);
    const PcRecordListPtr rows = query->Run();
    for (int row = 0; row < rows->RowCount(); ++row)
      CheckPartner(partners, rows->KeyOfRow(row));
  }

  void CheckPartner(const PcClass& partners, const ObjectKey& key) {
    const PcObjectPtr partner = site_.session->ObjectStore()->Object(key);
    if (!partner) return;
    const PcObjectPtr settings = tool_.adm_GetLinkedAdmObj(site_.session, kPartnerSettings, partner);
    if (!settings) return;
    where_ = partners.Name() + " " + ObjectKeyText(key, '_');
    if (settings->GetText(admin_setting::kNameAttribute) != kPartnerSettings) {
      findings_.Warning(where_, "its settings object is not named \"DRAXASettings\", but is read as such",
                        "name it \"DRAXASettings\" (attribute VRKX_VALUE_1), or take the link away");
    }
    CheckText(settings->GetText(admin_setting::kTextAttribute));
  }

  void CheckText(const std::string& text) {
    for (const SuspectLine& line : FindSuspectLines(text)) {
      findings_.Warning(where_, "line " + std::to_string(line.number) + " of its settings: " + line.why,
                        "save the text with CR LF and one \"=\" a line");
    }
    for (const std::string& line : PelicoreAdminTool::IniSectionLines(text, kMapping))
      CheckMapping(line);
  }

  void CheckMapping(const std::string& line) {
    const std::vector<std::string> parts = SplitText(line, "||");
    const std::string what = "the mapping line \"" + line + "\" ";
    if (parts.size() < 2) {
      findings_.Error(where_, what + "has no \"||\": the structure file lacks the attributes from it on",
                      "write XML_ATTRIBUTE||ATTRIBUTE");
      return;
    }
    std::string name = parts[0];
    std::ranges::replace(name, ' ', '_');
    if (name.empty() || !FindNameOffence(name).empty()) {
      findings_.Error(where_, what + "names no XML attribute", "write letters, digits and \"_\"");
    }
    for (const std::string& missing : ClassesWithout(parts[1])) {
      findings_.Warning(where_, what + "does nothing for the class " + missing + ", which has no " + parts[1],
                        "map an attribute that all classes have");
    }
  }

  [[nodiscard]] std::vector<std::string> ClassesWithout(const std::string& attribute) const {
    std::vector<std::string> names;
    const PcClassMechanismPtr documents =
        site_.session->MetaData()->ClassMechanism(class_mechanism::kExchangeDocument);
    for (int i = 0; documents && i < documents->SupportedClassCount(); ++i) {
      const PcClassPtr document = documents->SupportedClass(i);
      if (!document->FindAttribute(attribute)) names.push_back(document->Name());
    }
    return names;
  }

  const Site& site_;
  Findings& findings_;
  Trace trace_ = QuietTrace();
  PelicoreAdminTool tool_{trace_};
  std::string where_;
};

}  // namespace

void CheckPartners(const Site& site, Findings& findings) {
  PartnerCheck(site, findings).Run();
}

}  // namespace tessel::administration
