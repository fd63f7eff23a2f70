#include "administration/settings_objects.h"

#include <algorithm>

#include "administration/quiet_trace.h"
#include "config/configuration_reader.h"
#include "config/pelicore_admin_tool.h"
#include "host/error.h"
#include "host/names.h"

namespace tessel::administration {
namespace {

bool SameObject(const PcObjectPtr& one, const PcObjectPtr& other) {
  if (!one || !other) return !one && !other;
  return one->GetClassId() == other->GetClassId() && one->GetObjectId() == other->GetObjectId();
}

std::string TextOf(const PcObject& object, const std::string& attribute) {
  return object.HasAttribute(attribute) ? object.GetText(attribute) : std::string();
}

}  // namespace

std::string SettingsObject::Title() const {
  if (!object) return "no settings object";
  const std::string id = TextOf(*object, admin_setting::kIdentifier);
  const std::string description = TextOf(*object, attribute::kDescription);
  const std::string name =
      id.empty() ? ObjectKeyText({object->GetClassId(), object->GetObjectId()}, ':') : id;
  return description.empty() ? name : name + " (" + description + ")";
}

std::string SettingsObject::Logins() const {
  std::string logins;
  for (const UserSettings& user : users)
    logins += (logins.empty() ? "" : ", ") + user.login;
  return logins;
}

std::string SettingsObject::Text() const {
  return object ? object->GetText(admin_setting::kTextAttribute) : std::string();
}

std::vector<SettingsObject> FindSettingsObjects(const PcSessionPtr& session) {
  std::vector<SettingsObject> all;
  Trace trace = QuietTrace();
  PelicoreAdminTool tool(trace);
  for (const PcUserPtr& user : session->Users()) {
    PcObjectPtr object;
    // Without a base object the current user's own would be looked at.
    if (const PcObjectPtr base = user->UserObject()) {
      object = tool.adm_GetLinkedAdmObj(session, admin_setting::kSetName, base);
    }
    auto known = std::ranges::find_if(
        all, [&](const SettingsObject& settings) { return SameObject(settings.object, object); });
    if (known == all.end()) known = all.insert(all.end(), SettingsObject{object, {}});
    const Found found = !object ? Found::kNothing
                        : TextOf(*object, admin_setting::kNameAttribute) == admin_setting::kSetName
                            ? Found::kByName
                            : Found::kLastOne;
    known->users.push_back({user->LoginName(), found});
  }
  return all;
}

SettingsObject RequireSettings(const PcSessionPtr& session, const std::string& login) {
  std::vector<SettingsObject> all = FindSettingsObjects(session);
  if (login.empty()) {
    std::erase_if(all, [](const SettingsObject& settings) { return !settings.object; });
    if (all.size() == 1) return all.front();
    if (all.empty()) throw HostError("No user of the database has a settings object");
    std::string choices;
    for (const SettingsObject& settings : all)
      choices += "\n  " + settings.Title() + " of " + settings.Logins();
    throw HostError("There are several settings objects; name a user (--user):" + choices);
  }
  for (const SettingsObject& settings : all) {
    if (std::ranges::find(settings.users, login, &UserSettings::login) == settings.users.end()) continue;
    if (settings.object) return settings;
    throw HostError("No settings object is linked to the user " + login);
  }
  throw HostError("There is no user " + login);
}

void WriteSettings(const PcSessionPtr& session, const SettingsObject& settings, const std::string& before,
                   const std::string& text) {
  Trace trace = QuietTrace();
  PelicoreAdminTool tool(trace);
  tool.AdminObject = settings.object;
  tool.DefaultBehavior = session->NewBehavior();
  settings.object->ReadData();
  if (settings.Text() != before) {
    throw HostError("The settings " + settings.Title() + " were changed meanwhile; nothing was written");
  }
  if (!tool.WriteXMLStringToAdminObj(text)) {
    throw HostError("The database refuses the new text of the settings " + settings.Title());
  }
}

}  // namespace tessel::administration
