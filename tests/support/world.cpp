#include "support/world.h"

#include <gtest/gtest.h>

namespace tessel::test {
namespace {

constexpr const char* kMetaData = R"json(
  "alias": "WORLD", "language": "GER",
  "databaseMechanisms": ["Supplier Exchange", "Admin"],
  "sequences": [{ "name": "Exchange", "pattern": "DX-%03d", "start": 7 }],
  "attributeSets": { "document": [
    { "name": "VRK_ID", "type": "text", "identifying": true, "mandatory": true },
    { "name": "REVISION", "type": "text", "identifying": true, "default": "A" },
    { "name": "REVISION_STG", "type": "integer", "default": 1 },
    { "name": "STATE", "type": "integer", "default": 3 },
    { "name": "VRK_DESCRIPTION", "type": "text" },
    { "name": "FILE_NAME", "type": "text" },
    { "name": "CAD_REF_FILE_NAME", "type": "text" },
    { "name": "VRKX_DX_LOCK_STATE", "type": "boolean", "default": false },
    { "name": "VRKX_DX_LOCK_DESCRIPTION", "type": "text" },
    { "name": "VRKX_DX_LOCKED_BY", "type": "reference", "target": "USERS", "default": -2147483647 },
    { "name": "VRKX_DX_FIRST_LOCK_USE", "type": "boolean", "default": false }
  ] },
  "classes": [
    { "id": 10, "name": "USERS", "table": "USERS", "attributes": [
      { "name": "LOGIN", "type": "text", "identifying": true }, { "name": "USER_EMAIL", "type": "text" }] },
    { "id": 20, "name": "Admin Setting", "table": "ADMIN_SETTING", "attributes": [
      { "name": "VRKX_ID", "type": "text", "identifying": true },
      { "name": "VRKX_VALUE_1", "type": "text" }, { "name": "VRKX_VALUE_LONG", "type": "longText" }] },
    { "id": 30, "name": "Object Locking", "table": "OBJECT_LOCKING",
      "unique": [["OPER_CLASS_ID", "OPER_OBJECT_ID"]], "attributes": [
      { "name": "OPER_CLASS_ID", "type": "integer" }, { "name": "OPER_OBJECT_ID", "type": "long" },
      { "name": "LOCK_TYPE", "type": "integer" }, { "name": "VRK_DESCRIPTION", "type": "text" }] },
    { "id": 900, "name": "Data Exchange", "table": "DATA_EXCHANGE", "desktop": true,
      "mechanisms": ["VRKX_DX_TRANSMITTAL"], "hierarchicalLink": "General Link", "attributes": [
      { "name": "VRK_ID", "type": "text", "identifying": true, "sequence": "Exchange" },
      { "name": "VRKX_DX_PROCESS_PHASE", "type": "long" },
      { "name": "VRKX_DX_STATUS_INFO", "type": "text" },
      { "name": "VRKX_DX_EXCHANGE_TYPE", "type": "integer" },
      { "name": "VRKX_DX_EXCH_PROTOCOL", "type": "longText" },
      { "name": "VRKX_DX_EXCHANGE_ROOT_DIR", "type": "text" },
      { "name": "VRKX_DX_SEND_TO_COMPANY", "type": "text" },
      { "name": "VRKX_DX_SEND_TO_CONT_PERS", "type": "text" },
      { "name": "VRKX_DX_TARGET_FOLDER", "type": "text" }] },
    { "id": 901, "name": "Company", "table": "COMPANY", "mechanisms": ["VRKX_DX_SUPPLIER_COMPANY"],
      "hierarchicalLink": "Company Contact", "attributes": [
      { "name": "VRK_ID", "type": "text", "identifying": true }, { "name": "CITY", "type": "text" },
      { "name": "VRKX_DX_INACTIVE", "type": "boolean" }] },
    { "id": 902, "name": "Contact Person", "table": "CONTACT_PERSON", "hierarchicalLink": "Company Contact",
      "mechanisms": ["VRKX_DX_SUPPLIER_CONT_PERSON"], "attributes": [
      { "name": "VRK_ID", "type": "text", "identifying": true }, { "name": "CN_FIRST_NAME", "type": "text" },
      { "name": "VRKX_DX_SUPPLIER_EMAIL", "type": "text" },
      { "name": "VRKX_DX_INACTIVE", "type": "boolean" }] },
    { "id": 1201, "name": "Assembly", "table": "ASSEMBLY", "fileBased": true, "icon": "assembly.png",
      "desktop": true, "mechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC"], "attributeSets": ["document"],
      "hierarchicalLink": "Product Structure" },
    { "id": 1202, "name": "Part", "table": "PART", "fileBased": true, "icon": "part.png", "desktop": true,
      "mechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC"], "attributeSets": ["document"],
      "hierarchicalLink": "Product Structure" },)json";

constexpr const char* kLinkClasses = R"json(
  "linkClasses": [
    { "id": 2000, "name": "General Link", "table": "GENERAL_LINK" },
    { "id": 2001, "name": "Product Structure", "table": "PRODUCT_STRUCTURE",
      "first": ["Assembly"], "second": ["Assembly", "Part"] },
    { "id": 2002, "name": "Company Contact", "table": "COMPANY_CONTACT",
      "first": ["Company", "Contact Person"], "second": ["Contact Person"] }
  ],
  "users": [{ "login": "anna", "object": "anna" }],
  "configuration": { "$Local\\Directory Structure\\ICONS_DIR": "${MODEL_DIR}/icons" },)json";

constexpr const char* kObjects = R"json(
  "objects": [
    { "class": "USERS", "id": 31, "name": "anna", "values": { "LOGIN": "anna", "USER_EMAIL": "anna@home" } },
    { "class": "Assembly", "id": 1, "name": "gearbox", "file": "gearbox.stp",
      "values": { "VRK_ID": "A-1", "VRK_DESCRIPTION": "Gearbox" } },
    { "class": "Part", "id": 2, "name": "shaft", "file": "shaft.stp",
      "values": { "VRK_ID": "P-2", "VRK_DESCRIPTION": "Shaft" } },
    { "class": "Part", "id": 3, "file": "bolt.stp", "values": { "VRK_ID": "P-3", "VRK_DESCRIPTION": "Bolt" } },
    { "class": "Part", "id": 4, "file": "nameless.stp", "values": { "VRK_ID": "P-4" } },
    { "class": "Company", "id": 11, "name": "acme", "values": { "VRK_ID": "Acme", "CITY": "Hull" } },
    { "class": "Company", "id": 12, "name": "bolt", "values": { "VRK_ID": "Bolt" } },
    { "class": "Company", "id": 13, "values": { "VRK_ID": "Closed", "VRKX_DX_INACTIVE": true } },
    { "class": "Contact Person", "id": 21, "name": "smith", "values":
      { "VRK_ID": "Smith", "CN_FIRST_NAME": "Jo", "VRKX_DX_SUPPLIER_EMAIL": "smith@acme" } },
    { "class": "Contact Person", "id": 22, "name": "jones", "values":
      { "VRK_ID": "Jones", "CN_FIRST_NAME": "Al", "VRKX_DX_SUPPLIER_EMAIL": "jones@acme" } },
    { "class": "Contact Person", "id": 23, "name": "old", "values":
      { "VRK_ID": "Old", "VRKX_DX_INACTIVE": true } },
    { "class": "Contact Person", "id": 24, "name": "brown", "values": { "VRK_ID": "Brown" } },
    { "class": "Folder Structure", "id": 41, "name": "standard", "values": { "VRK_DESCRIPTION": "Standard" } },
    { "class": "Folder Structure", "id": 42, "name": "flat", "values": { "VRK_DESCRIPTION": "Flat" } })json";

constexpr const char* kLinks = R"json(
  "links": [
    { "class": "Product Structure", "from": "gearbox", "to": "shaft" },
    { "class": "Company Contact", "from": "acme", "to": "smith" },
    { "class": "Company Contact", "from": "smith", "to": "jones" },
    { "class": "Company Contact", "from": "jones", "to": "smith" },
    { "class": "Company Contact", "from": "acme", "to": "old" },
    { "class": "Company Contact", "from": "bolt", "to": "brown" },
    { "class": "General Link", "from": "gearbox", "to": "standard" },
    { "class": "General Link", "from": "gearbox", "to": "flat" })json";

constexpr const char* kErrorTexts =
    "e0010 Nothing selected\r\ne0070 Choose a recipient\r\ne0120 One object only\r\n"
    "e0130 Choose a folder structure\r\ne0150 Already chosen\r\ne0190 The export is cancelled\r\n"
    "e0195 No files\r\ne9010 No exchange here\r\ne9020 No configuration\r\ne9030 No start\r\n";
constexpr const char* kProtocolTexts = "p0001 Export\r\np0002 {0} {1}\r\np0003 Directory {0}\r\n";

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char character : text) {
    if (character == '"' || character == '\\') quoted += '\\';
    quoted += character;
  }
  return quoted + "\"";
}

// A settings object and the link from its owner.
void AddSettings(const std::string& owner, const std::string& name, const SettingLines& sections,
                 std::string& objects, std::string& links) {
  if (sections.empty()) return;
  std::string lines;
  for (const auto& [section, entries] : sections) {
    lines += Quoted("[" + section + "]") + ", ";
    for (const std::string& entry : entries)
      lines += Quoted(entry) + ", ";
  }
  const std::string object = Quoted("settings of " + owner);
  objects += ",\n    { \"class\": \"Admin Setting\", \"name\": " + object +
             ", \"values\": { \"VRKX_ID\": " + object + ", \"VRKX_VALUE_1\": " + Quoted(name) +
             ", \"VRKX_VALUE_LONG\": [" + lines + "\"\"] } }";
  links += ",\n    { \"class\": \"General Link\", \"from\": " + Quoted(owner) + ", \"to\": " + object + " }";
}

std::string FolderStructureClass(bool supported) {
  const std::string mechanism = "\"VRKX_DX_FOLDER_STRUCTURE\"";
  return R"json(
    { "id": 910, "name": "Folder Structure", "table": "FOLDER_STRUCTURE", "mechanisms": [)json" +
         (supported ? mechanism : "") + R"json(],
      "attributes": [{ "name": "VRK_DESCRIPTION", "type": "text", "identifying": true }] }
  ],
  "classMechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC", "VRKX_DX_TRANSMITTAL", "VRKX_DX_SUPPLIER_COMPANY",
                      "VRKX_DX_SUPPLIER_CONT_PERSON")json" +
         (supported ? ", " + mechanism : "") + "],";
}

std::string MoreParts(const TemporaryFolder& folder, int count) {
  std::string objects;
  for (int number = 1001; number <= 1000 + count; ++number) {
    const std::string name = "part" + std::to_string(number);
    folder.Write("model/" + name + ".stp", name);
    objects += ",\n    { \"class\": \"Part\", \"id\": " + std::to_string(number) + ", \"file\": \"" + name +
               ".stp\", \"values\": { \"VRK_ID\": \"" + name + "\", \"VRK_DESCRIPTION\": \"" + name +
               "\" } }";
  }
  return objects;
}

std::string ModelText(const WorldOptions& options, const TemporaryFolder& folder) {
  SettingLines settings = options.settings;
  for (const std::string& line :
       {"ExchangePath=" + folder.Path("exchange"), "LanguageFile=" + folder.Path("catalogue")})
    settings["Path"].push_back(line);
  std::string objects;
  std::string links;
  AddSettings("anna", "Initialization", settings, objects, links);
  AddSettings("acme", "DRAXASettings", options.companySettings, objects, links);
  AddSettings("smith", "DRAXASettings", options.contactSettings, objects, links);
  return "{" + std::string(kMetaData) + FolderStructureClass(options.folderStructures) + kLinkClasses +
         kObjects + objects + MoreParts(folder, options.moreParts) + "],\n" + kLinks + links + "] }\n";
}

std::string MadeModelFolder(const TemporaryFolder& folder) {
  for (const char* name : {"gearbox", "shaft", "bolt", "nameless"})
    folder.Write("model/" + std::string(name) + ".stp", name);
  for (const char* name : {"assembly", "part"})
    folder.Write("model/icons/" + std::string(name) + ".png", name);
  folder.Write("catalogue/error.Kestrix_GER", kErrorTexts);
  folder.Write("catalogue/protocol.Kestrix_GER", kProtocolTexts);
  folder.MakeFolder("exchange");
  return folder.Path("model");
}

PosixPlatformOptions PlatformOptions(const TemporaryFolder& folder) {
  PosixPlatformOptions options;
  options.drivesDirectory = folder.MakeFolder("drives");
  options.program = ProgramLocation{folder.MakeFolder("program"), "prjTessel"};
  return options;
}

Platform PlatformOf(World& world) {
  const Platform& posix = world.posix.Services();
  return {posix.files,    posix.encodings, world.clock,   world.pauser,      world.reportingLauncher,
          posix.profiles, posix.system,    posix.program, posix.ansiCodePage};
}

embedded::HostOptions HostOptionsOf(World& world) {
  embedded::HostOptions options;
  options.files = &world.platform.files;
  options.dialogs = &world.driver;
  options.vaultPath = world.folder.MakeFolder("vault");
  return options;
}

class RecordingAdditionalValues : public AdditionalValues {
 public:
  explicit RecordingAdditionalValues(AdditionalValuesCalls& calls) : calls_(calls) {}
  int Edit(const AdditionalValuesRequest& request) override { return Record("edit", request); }
  int Apply(const AdditionalValuesRequest& request) override { return Record("apply", request); }

 private:
  int Record(const std::string& operation, const AdditionalValuesRequest& request) {
    calls_.push_back(operation + " " + ObjectKeyText(request.customer, ':') + " " +
                     ObjectKeyText(request.contact, ':') + " " + request.directory);
    return 0;
  }
  AdditionalValuesCalls& calls_;
};

}  // namespace

World::World(const WorldOptions& options)
    : posix(PlatformOptions(folder)),
      platform(PlatformOf(*this)),
      host(ModelText(options, folder), MadeModelFolder(folder), HostOptionsOf(*this)),
      program(
          platform, toolkit, host, [this] { return trace; },
          [this] { return std::make_unique<RecordingAdditionalValues>(additionalValues); }),
      session(host.OpenSession("anna")) {
  host.SetLfcStage2(
      [this](const PcSessionPtr& caller, const std::string& operation, const PcRecordListPtr& first,
             const PcRecordListPtr& second,
             PcRecordListPtr third) { application.LFCStage2(caller, operation, first, second, third); });
}

PcRecordListPtr World::ObjectList(const std::vector<ObjectKey>& keys) {
  auto list = host.CreateRecordList();
  list->AddColumn("OBJECT_ID", 4, 3);
  list->AddColumn("CLASS_ID", 2, 2);
  list->AddColumn("STATE", 2, 2);
  for (const ObjectKey& key : keys) {
    const int row = list->RowCount();
    list->SetValue("OBJECT_ID", row, Value(key.objectId));
    list->SetValue("CLASS_ID", row, Value(key.classId));
    list->SetValue("STATE", row, Value(std::int16_t{3}));
  }
  return list;
}

void World::Select(const std::vector<ObjectKey>& keys) {
  PcRecordListPtr third;
  application.CollectSelObjs(session, "", ObjectList(keys), nullptr, third);
}

std::int16_t World::Export(const std::string& operation) {
  PcRecordListPtr third;
  return application.StartExport(session, operation, nullptr, nullptr, third);
}

Window& World::PageWindow(const std::string& name) const {
  return *Required(toolkit.FindWindow(name), name.c_str());
}

std::string World::GlobalText(const std::string& name) const {
  const Value value = session->GlobalData().Get(name);
  return value.IsNull() ? "Null" : value.AsText();
}

}  // namespace tessel::test
