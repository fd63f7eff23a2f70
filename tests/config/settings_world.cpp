#include "config/settings_world.h"

namespace tessel::test {
namespace {

std::string Model(const SettingsWorldOptions& options) {
  std::string mechanisms;
  std::string classes;
  int classId = 0;
  for (const auto& [mechanism, count] : options.mechanisms) {
    classId = classId / 100 * 100 + 100;
    mechanisms += (mechanisms.empty() ? "" : ", ") + Quoted(mechanism);
    for (int i = 0; i < count; ++i, ++classId) {
      const std::string id = std::to_string(classId);
      classes += ",\n{ \"id\": " + id + ", \"name\": \"Class " + id + "\", \"table\": \"T" + id +
                 "\", \"mechanisms\": [" + Quoted(mechanism) +
                 "], \"attributes\": [{ \"name\": \"VRK_ID\", \"type\": \"text\", \"length\": 20 }] }";
    }
  }
  std::string objects;
  std::string links;
  int objectId = 11;
  for (const Settings& settings : options.settings) {
    const std::string id = std::to_string(objectId++);
    objects += ",\n{ \"class\": \"Admin Setting\", \"id\": " + id + ", \"name\": \"s" + id +
               "\", \"values\": { \"VRKX_ID\": \"INI-" + id +
               "\", \"VRKX_VALUE_1\": " + Quoted(settings.name) +
               ", \"VRKX_VALUE_LONG\": " + Quoted(settings.text) + " } }";
    links += (links.empty() ? "" : ",") +
             ("{ \"class\": \"General Link\", \"from\": \"anna\", \"to\": \"s" + id + "\" }");
  }
  const std::string linkEnds =
      options.generalLink ? "" : ", \"first\": [\"Admin Setting\"], \"second\": [\"Other\"]";
  return R"json({ "alias": "SMALL", "language": "GER", "classMechanisms": [)json" + mechanisms + R"json(],
  "classes": [
    { "id": 10, "name": "USERS", "table": "USERS", "attributes": [
      { "name": "LOGIN", "type": "text", "length": 20, "identifying": true } ] },
    { "id": 20, "name": "Admin Setting", "table": "ADMIN_SETTING", "attributes": [
      { "name": "VRKX_ID", "type": "text", "length": 40 },
      { "name": "VRKX_VALUE_1", "type": "text", "length": 80 },
      { "name": "VRKX_VALUE_LONG", "type": "longText" } ] },
    { "id": 30, "name": "Other", "table": "OTHER" })json" +
         classes + R"json(],
  "linkClasses": [ { "id": 2000, "name": "General Link", "table": "GENERAL_LINK")json" +
         linkEnds + R"json( } ],
  "users": [ { "login": "anna", "object": "anna" } ],
  "configuration": { "$Local\\Directory Structure\\ICONS_DIR": "/icons" },
  "objects": [ { "class": "USERS", "id": 1, "name": "anna", "values": { "LOGIN": "anna" } })json" +
         objects + "],\n\"links\": [" + (options.generalLink ? links : "") + "] }";
}

}  // namespace

SettingsWorld::SettingsWorld(const SettingsWorldOptions& options)
    : HostedMachine(user, [&](const TemporaryFolder&) { return Model(options); }),
      ProgramServices(*this, host, user) {
  declarations.SetSessionGlobal(session);
  declarations.SetDefaultBehavior();
  trace.writer->Clear();
}

}  // namespace tessel::test
