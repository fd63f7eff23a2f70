// Each settings object with its users: the text, the values, the folders and programs that they name.
#include <algorithm>
#include <filesystem>

#include "administration/setting_keys.h"
#include "administration/settings_objects.h"
#include "administration/settings_text.h"
#include "administration/site_check.h"
#include "config/configuration_reader.h"
#include "config/pelicore_admin_tool.h"
#include "dispatch/server_monitor.h"
#include "host/ascii.h"
#include "host/error.h"
#include "host/names.h"
#include "host/value.h"
#include "platform/paths.h"
#include "platform/text_encoding.h"
#include "structure/xml/xml_encoding.h"

namespace tessel::administration {
namespace {

namespace fs = std::filesystem;

// The nearest folder above a path that is there.
std::string ExistingFolder(const FileSystem& files, const std::string& path) {
  fs::path folder(files.NativePath(path));
  std::error_code ignored;
  while (!fs::is_directory(folder, ignored) && folder.has_parent_path() && folder != folder.parent_path())
    folder = folder.parent_path();
  return folder.string();
}

// Why no file can be made in a folder; empty when one can.
std::string WriteRefusal(FileSystem& files, const std::string& folder) {
  const std::string probe = paths::Join(folder, ".tessel-config-check");
  try {
    files.WriteBytes(probe, "");
    files.DeleteFile(probe);
    return {};
  } catch (const RuntimeError& error) {
    return error.what();
  }
}

class SettingsCheck {
 public:
  SettingsCheck(const Site& site, const SettingsObject& settings, Findings& findings)
      : site_(site),
        files_(site.platform.files),
        settings_(settings),
        findings_(findings),
        plain_(settings.Text()),
        text_(plain_),
        where_("settings " + settings.Title()) {}

  void Run() {
    CheckText();
    bool valid = true;
    for (const SettingKey& key : SettingKeys())
      valid = CheckValue(key) && valid;
    if (!valid) return;  // a start-up ends there
    CheckNames();
    CheckModes();
    CheckEncoding();
    CheckAttributes();
    CheckExchangePath();
    CheckMonitor();
    CheckCatalogues(site_, CatalogueFolder(), Languages(), CheckCustomForm(), findings_);
    for (const UserSettings& user : settings_.users)
      CheckUser(user.login);
  }

 private:
  [[nodiscard]] std::string ValueOf(const std::string& name) const {
    const SettingKey& key = FindKey(name);
    const auto value = text_.Find(key.section, key.name);
    if (value) return *value;
    return key.defaultIsProgramDirectory ? site_.platform.program.directory : key.defaultText;
  }
  [[nodiscard]] bool On(const std::string& name) const { return ParseBoolean(ValueOf(name)); }
  [[nodiscard]] int Number(const std::string& name) const { return ParseInt16(ValueOf(name)); }
  void Error(const std::string& what, const std::string& mend) { findings_.Error(where_, what, mend); }
  void Warning(const std::string& what, const std::string& mend) { findings_.Warning(where_, what, mend); }
  static std::string SetCommand(const std::string& key) { return "tessel config set DB " + key + " ..."; }

  void CheckText() {
    if (HasBareLineFeeds(plain_) && plain_.find("\r\n") == std::string::npos) {
      Error("the lines end with LF alone: nothing in the text is found, and every value has its default",
            "save it with CR LF (tessel config edit does)");
    }
    for (const SuspectLine& line : FindSuspectLines(plain_)) {
      if (line.text.find('\n') != std::string::npos && plain_.find("\r\n") == std::string::npos) continue;
      Warning("line " + std::to_string(line.number) + " \"" + line.text.substr(0, line.text.find('\n')) +
                  "\": " + line.why,
              "tessel config edit DB");
    }
    CheckUnknownKeys();
  }

  // Keys that no one reads, in sections of this program.
  void CheckUnknownKeys() {
    std::set<std::string> sections;
    for (const SettingKey& key : SettingKeys())
      sections.insert(key.section);
    for (const std::string& section : sections) {
      for (const std::string& line : PelicoreAdminTool::IniSectionLines(plain_, section)) {
        const std::string name = line.substr(0, line.find('='));
        const bool known = std::ranges::any_of(
            SettingKeys(), [&](const SettingKey& key) { return key.section == section && key.name == name; });
        if (known || name.find('\n') != std::string::npos) continue;
        try {
          static_cast<void>(FindKey(section + "." + name));
        } catch (const HostError& error) {
          Warning(
              std::string("nobody reads \"") + name + "\" of the section " + section + ". " + error.what(),
              "tessel config edit DB");
        }
      }
    }
  }

  bool CheckValue(const SettingKey& key) {
    const auto value = text_.Find(key.section, key.name);
    if (!value) return true;
    const std::string refusal = RefusalOf(key, *value);
    if (refusal.empty()) return true;
    const bool typed = key.type != SettingKey::Type::kText;
    Error(key.FullName() + "=" + *value + ": " + refusal +
              (typed ? "; every start-up ends with e9020 and e9030" : "; exports end without result"),
          SetCommand(key.FullName()));
    return !typed;
  }

  void CheckNames() {
    const std::string structure = LowerCase(ValueOf("StructurFileName"));
    const std::string data = LowerCase(ValueOf("DataFileName"));
    if (structure == data || structure == "neutralformats.xml" || data == "neutralformats.xml") {
      Error("structure file, data file and NeutralFormats.xml need three different names",
            SetCommand("DataFileName"));
    }
  }

  void CheckModes() {
    int preselected = 0;
    int offered = 0;
    for (const char* mode : {"Mail", "MailStructure", "Odette", "CustomSend", "NoSend"}) {
      const int value = Number(mode);
      preselected += value == 2 ? 1 : 0;
      offered += value != 0 ? 1 : 0;
      if (value < 0 || value > 2)
        Warning(std::string(mode) + "=" + std::to_string(value) + " is not 0, 1 or 2", SetCommand(mode));
    }
    if (offered == 0) Error("no send mode is offered", SetCommand("NoSend"));
    if (preselected > 1)
      Warning("several send modes are preselected; the page shows one", SetCommand("Mail"));
    if (SendsMail() && ValueOf("SMTPServer").empty()) {
      Warning("mails are offered, but no SMTP server is named", SetCommand("SMTPServer"));
    }
  }
  [[nodiscard]] bool SendsMail() const { return Number("Mail") != 0 || Number("MailStructure") != 0; }

  void CheckEncoding() {
    const std::string name = ValueOf("XMLStructureEncoding");
    try {
      const auto encoding = site_.platform.encodings.Open(name);
      CheckXmlEncoding(site_.platform.encodings, *encoding, name);
    } catch (const RuntimeError& error) {
      Error("the structure file cannot be written in the encoding \"" + name + "\": " + error.what(),
            SetCommand("XMLStructureEncoding"));
    }
  }

  void CheckAttributes() {
    CheckShown(class_mechanism::kExchangeDocument, {"DisplayAttribute1", "DisplayAttribute2"});
    CheckShown(class_mechanism::kCompany, {"DisplayAttribCustom1", "DisplayAttribCustom2"});
    CheckShown(class_mechanism::kContactPerson, {"DisplayAttribContact1", "DisplayAttribContact2"});
    CheckShown(class_mechanism::kFolderStructure, {"DisplayAttribFolderStruc"});
  }

  void CheckShown(const char* mechanismName, std::initializer_list<const char*> keys) {
    const PcClassMechanismPtr mechanism = site_.session->MetaData()->ClassMechanism(mechanismName);
    for (int i = 0; mechanism && i < mechanism->SupportedClassCount(); ++i) {
      const PcClassPtr shown = mechanism->SupportedClass(i);
      for (const char* key : keys) {
        const std::string attribute = ValueOf(key);
        if (attribute.empty() || shown->FindAttribute(attribute)) continue;
        Warning(std::string(key) + "=" + attribute + ": the class " + shown->Name() +
                    " has no such attribute, and its objects show nothing there",
                SetCommand(key));
      }
    }
  }

  void CheckExchangePath() {
    const std::string path = ValueOf("ExchangePath");
    const std::string folder = ExistingFolder(files_, path);
    const std::string refusal = WriteRefusal(files_, folder);
    if (!refusal.empty()) {
      Error("no exchange directory can be made in " + path + ": " + refusal,
            "give the users the right to write in " + folder + ", or " + SetCommand("ExchangePath"));
    }
  }

  void CheckMonitor() {
    if (!On("UseServerMonitor")) return;
    const std::string program = paths::Join(site_.platform.program.directory, kServerMonitorProgram);
    if (!files_.FileExists(program)) {
      Error("the server monitor is to be started, but there is no " + program,
            "install it there, or tessel config set DB UseServerMonitor 0");
    }
  }

  [[nodiscard]] std::string CatalogueFolder() const { return ValueOf("LanguageFile"); }

  [[nodiscard]] std::string LanguageOf(const std::string& login) const {
    const auto found = site_.languages.find(login);
    return found == site_.languages.end() ? site_.defaultLanguage : found->second;
  }
  [[nodiscard]] std::set<std::string> Languages() const {
    std::set<std::string> languages;
    for (const UserSettings& user : settings_.users)
      languages.insert(LanguageOf(user.login));
    return languages;
  }

  // How many captions of fields the custom form shows.
  int CheckCustomForm() {
    const auto lines = PelicoreAdminTool::IniSectionLines(plain_, "CustomFormIni");
    const bool shown = On("UseCustomForm");
    if (shown && lines.empty()) {
      Warning("the custom form is to be shown, but the section CustomFormIni has no field",
              "tessel config edit DB");
    }
    for (const std::string& line : lines) {
      const auto parts = SplitText(line, "||");
      if (line.find("MultiLine_") == std::string::npos) {
        Warning("CustomFormIni: \"" + line + "\" makes no field", "write MultiLine_N||True or False");
      } else if (parts.size() < 2 || !IsBoolean(parts[1])) {
        Warning("CustomFormIni: \"" + line + "\" does not say whether the field has several lines",
                "write MultiLine_N||True or False");
      }
    }
    // Codes have five characters: the captions end with the seventh.
    return shown ? static_cast<int>(std::min<std::size_t>(lines.size(), 7)) : -1;
  }

  static bool IsBoolean(const std::string& text) {
    try {
      static_cast<void>(ParseBoolean(text));
      return true;
    } catch (const RuntimeError&) {
      return false;
    }
  }

  void CheckUser(const std::string& login) {
    if (!SendsMail()) return;
    const std::string attribute = ValueOf("UserEmail");
    for (const PcUserPtr& user : site_.session->Users()) {
      if (user->LoginName() != login) continue;
      const PcObjectPtr object = user->UserObject();
      const std::string where = "user " + login;
      if (!object || !object->HasAttribute(attribute)) {
        findings_.Warning(where, "there is no attribute " + attribute + ": mails have no sender",
                          SetCommand("UserEmail"));
      } else if (object->GetText(attribute).empty()) {
        findings_.Warning(where, "the attribute " + attribute + " is empty: mails have no sender",
                          "enter the mail address of the user");
      }
    }
  }

  const Site& site_;
  FileSystem& files_;
  const SettingsObject& settings_;
  Findings& findings_;
  std::string plain_;
  SettingsText text_;
  std::string where_;
};

void CheckWhoHasNone(const SettingsObject& none, const Site& site, Findings& findings) {
  const ClassId settingClass = site.session->MetaData()->ClassIdByName(admin_setting::kClassName);
  for (const UserSettings& user : none.users) {
    findings.Error(
        "user " + user.login, "no settings object is linked to the user: every start-up ends with e9030",
        settingClass == 0 ? "add the class \"Admin Setting\""
                          : "link the user's object to a settings object named \"Initialization\"");
  }
}

}  // namespace

void CheckSettings(const Site& site, Findings& findings) {
  for (const SettingsObject& settings : FindSettingsObjects(site.session)) {
    if (!settings.object) {
      CheckWhoHasNone(settings, site, findings);
      continue;
    }
    for (const UserSettings& user : settings.users) {
      if (user.found == Found::kByName) continue;
      findings.Warning("user " + user.login,
                       "no linked settings object is named \"Initialization\"; " + settings.Title() +
                           " is taken because it is the last one linked",
                       "name it \"Initialization\" (attribute VRKX_VALUE_1)");
    }
    SettingsCheck(site, settings, findings).Run();
  }
}

}  // namespace tessel::administration
