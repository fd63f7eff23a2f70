#include "support/company.h"

namespace tessel::test {
namespace {

// Pieces of the model's text. Between them come the class mechanism of folder structures, or nothing, twice,
// and the name of the description attribute of lock records.
constexpr const char* kMetaData = R"json(
  "alias": "WORLD", "language": "GER",
  "databaseMechanisms": ["Supplier Exchange", "Admin"],
  "sequences": [{ "name": "Exchange", "pattern": "DX-%03d", "start": 7 }],
  "attributeSets": {
    "identity": [{ "name": "VRK_ID", "type": "text", "identifying": true }],
    "document": [
      { "name": "REVISION", "type": "text", "identifying": true, "default": "A" },
      { "name": "REVISION_STG", "type": "integer", "default": 1 },
      { "name": "STATE", "type": "integer", "default": 3 },
      { "name": "VRK_DESCRIPTION", "type": "text" },
      { "name": "MATERIAL", "type": "text" },
      { "name": "FILE_NAME", "type": "text" },
      { "name": "CAD_REF_FILE_NAME", "type": "text" },
      { "name": "UNDER_OPERATION", "type": "integer" },
      { "name": "VRKX_DX_LOCK_STATE", "type": "boolean" },
      { "name": "VRKX_DX_LOCK_DESCRIPTION", "type": "text" },
      { "name": "VRKX_DX_LOCKED_BY", "type": "reference", "target": "USERS" },
      { "name": "VRKX_DX_FIRST_LOCK_USE", "type": "boolean" }] },
  "classMechanisms": [)json";

constexpr const char* kClasses = R"json("VRKX_DX_SUPPLIER_EXCH_DOC", "VRKX_DX_TRANSMITTAL",
                      "VRKX_DX_SUPPLIER_COMPANY", "VRKX_DX_SUPPLIER_CONT_PERSON"],
  "classes": [
    { "id": 10, "name": "USERS", "table": "USERS", "attributes": [
      { "name": "LOGIN", "type": "text", "identifying": true }, { "name": "USER_EMAIL", "type": "text" }] },
    { "id": 20, "name": "Admin Setting", "table": "ADMIN_SETTING", "attributes": [
      { "name": "VRKX_ID", "type": "text", "identifying": true },
      { "name": "VRKX_VALUE_1", "type": "text" }, { "name": "VRKX_VALUE_LONG", "type": "longText" }] },
    { "id": 900, "name": "Data Exchange", "table": "DATA_EXCHANGE", "desktop": true,
      "mechanisms": ["VRKX_DX_TRANSMITTAL"], "hierarchicalLink": "General Link", "attributes": [
      { "name": "REVISION", "type": "text", "identifying": true },
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
      "hierarchicalLink": "Company Contact", "attributeSets": ["identity"], "attributes": [
      { "name": "CITY", "type": "text" }, { "name": "VRKX_DX_INACTIVE", "type": "boolean" }] },
    { "id": 902, "name": "Contact Person", "table": "CONTACT_PERSON", "hierarchicalLink": "Company Contact",
      "mechanisms": ["VRKX_DX_SUPPLIER_CONT_PERSON"], "attributeSets": ["identity"], "attributes": [
      { "name": "CN_FIRST_NAME", "type": "text" },
      { "name": "VRKX_DX_SUPPLIER_EMAIL", "type": "text" },
      { "name": "VRKX_DX_INACTIVE", "type": "boolean" }] },
    { "id": 1201, "name": "Assembly", "table": "ASSEMBLY", "fileBased": true, "icon": "assembly.png",
      "desktop": true, "mechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC"], "attributeSets": ["identity", "document"],
      "hierarchicalLink": "Product Structure" },
    { "id": 1202, "name": "Part", "table": "PART", "fileBased": true, "icon": "part.png", "desktop": true,
      "mechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC"], "attributeSets": ["identity", "document"],
      "hierarchicalLink": "Product Structure" },
    { "id": 1203, "name": "Note", "table": "NOTE", "fileBased": true, "icon": "../note.png",
      "attributes": [{ "name": "CN_DESCRIPTION", "type": "text" }] },
    { "id": 1204, "name": "Item", "table": "ITEM", "mechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC"],
      "attributeSets": ["identity"] },
    { "id": 1205, "name": "Drawing", "table": "DRAWING", "attributeSets": ["document"],
      "attributes": [{ "name": "CN_ID", "type": "text", "identifying": true }] },
    { "id": 910, "name": "Folder Structure", "table": "FOLDER_STRUCTURE",
      "attributes": [{ "name": "VRK_DESCRIPTION", "type": "text", "identifying": true }], "mechanisms": [)json";

constexpr const char* kMoreClasses = R"json(] },
    { "id": 30, "name": "Object Locking", "table": "OBJECT_LOCKING",
      "unique": [["OPER_CLASS_ID", "OPER_OBJECT_ID"]], "attributes": [
      { "name": "OPER_CLASS_ID", "type": "integer" }, { "name": "OPER_OBJECT_ID", "type": "long" },
      { "name": "LOCK_TYPE", "type": "integer" }, { "type": "text", "name": )json";

constexpr const char* kLinkClasses = R"json( }] }
  ],
  "linkClasses": [
    { "id": 2000, "name": "General Link", "table": "GENERAL_LINK" },
    { "id": 2001, "name": "Product Structure", "table": "PRODUCT_STRUCTURE",
      "first": ["Assembly"], "second": ["Assembly", "Part"] },
    { "id": 2002, "name": "Company Contact", "table": "COMPANY_CONTACT",
      "first": ["Company", "Contact Person"], "second": ["Contact Person"] }
  ],
  "users": [{ "login": "anna", "object": "anna" }, { "login": "bert", "object": "bert" },
            { "login": "rolf", "object": "rolf", "roles": ["Designer", "Unlock"] },
            { "login": "ruth", "object": "ruth", "roles": ["unlock"] },
            { "login": "admin", "object": "admin", "administrator": true }],
  "configuration": { "$Local\\Directory Structure\\ICONS_DIR": "${MODEL_DIR}/icons" },)json";

constexpr const char* kObjects = R"json(
  "objects": [
    { "class": "USERS", "id": 31, "name": "anna", "values": { "LOGIN": "anna", "USER_EMAIL": "anna@home" } },
    { "class": "USERS", "id": 32, "name": "bert", "values": { "LOGIN": "bert" } },
    { "class": "USERS", "id": 33, "name": "rolf", "values": { "LOGIN": "rolf" } },
    { "class": "USERS", "id": 34, "name": "ruth", "values": { "LOGIN": "ruth" } },
    { "class": "USERS", "id": 35, "name": "admin", "values": { "LOGIN": "admin" } },
    { "class": "Assembly", "id": 1, "name": "gearbox", "file": "gearbox.stp",
      "values": { "VRK_ID": "A-1", "VRK_DESCRIPTION": "Gearbox", "MATERIAL": "mixed" } },
    { "class": "Part", "id": 2, "name": "shaft", "file": "shaft.stp",
      "values": { "VRK_ID": "P-2", "VRK_DESCRIPTION": "Shaft", "MATERIAL": "C45 \"hard\"" } },
    { "class": "Part", "id": 3, "file": "bolt.stp", "values": { "VRK_ID": "P-3", "VRK_DESCRIPTION": "Bolt" } },
    { "class": "Part", "id": 4, "file": "nameless.stp", "values": { "VRK_ID": "P-4" } },
    { "class": "Part", "id": 5, "values": { "VRK_ID": "P-5", "VRK_DESCRIPTION": "Sketch" } },
    { "class": "Note", "id": 4, "values": { "CN_DESCRIPTION": "Minutes" } },
    { "class": "Item", "id": 5, "values": { "VRK_ID": "I-5" } },
    { "class": "Drawing", "id": 8, "values": { "CN_ID": "D-8" } },
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
    "e0010 Nothing selected\r\ne0070 Choose a recipient\r\ne0090 Not updated\r\ne0100 Not renamed\r\ne0120 "
    "One object only\r\n"
    "e0130 Choose a folder structure\r\ne0150 Already chosen\r\ne0190 The export is cancelled\r\n"
    "e0195 No files\r\ne9010 No exchange here\r\ne9020 No configuration\r\ne9030 No start\r\n";
constexpr const char* kProtocolTexts = "p0001 Export\r\np0002 {0} {1}\r\np0003 Directory {0}\r\n";

// A settings object and the links from its owners.
void AddSettings(const std::vector<std::string>& owners, const std::string& name,
                 const SettingLines& sections, std::string& objects, std::string& links) {
  if (sections.empty()) return;
  std::string lines;
  for (const auto& [section, entries] : sections) {
    lines += Quoted("[" + section + "]") + ", ";
    for (const std::string& entry : entries)
      lines += Quoted(entry) + ", ";
  }
  const std::string object = Quoted("settings of " + owners.front());
  objects += R"(, { "class": "Admin Setting", "name": )" + object + R"(, "values": { "VRKX_ID": )" + object +
             R"(, "VRKX_VALUE_1": )" + Quoted(name) + R"(, "VRKX_VALUE_LONG": [)" + lines + "\"\"] } }";
  for (const std::string& owner : owners)
    links += R"(, { "class": "General Link", "from": )" + Quoted(owner) + R"(, "to": )" + object + " }";
}

SettingLines AllSettings(SettingLines settings, const TemporaryFolder& folder) {
  for (const std::string& line :
       {"ExchangePath=" + folder.Path("exchange"), "LanguageFile=" + folder.Path("catalogue")})
    settings["Path"].push_back(line);
  return settings;
}

}  // namespace

std::string CompanyModel(const TemporaryFolder& folder, const CompanyOptions& options) {
  for (const char* name : {"gearbox", "shaft", "bolt", "nameless"})
    folder.Write("model/" + std::string(name) + ".stp", name);
  for (const char* name : {"assembly", "part"})
    folder.Write("model/icons/" + std::string(name) + ".png", name);
  folder.Write("catalogue/error.Kestrix_GER", kErrorTexts);
  folder.Write("catalogue/protocol.Kestrix_GER", kProtocolTexts);
  folder.MakeFolder("exchange");

  const std::string structures = options.folderStructures ? "\"VRKX_DX_FOLDER_STRUCTURE\"" : "";
  std::string objects = options.objects;
  std::string links = options.links;
  if (options.settings) {
    AddSettings({"anna", "bert", "rolf", "ruth", "admin"}, "Initialization",
                AllSettings(*options.settings, folder), objects, links);
  }
  AddSettings({"acme"}, "DRAXASettings", options.companySettings, objects, links);
  AddSettings({"smith"}, "DRAXASettings", options.contactSettings, objects, links);
  return "{" + std::string(kMetaData) + structures + (structures.empty() ? "" : ", ") + kClasses +
         structures + kMoreClasses + Quoted(options.lockDescription) + kLinkClasses + kObjects + objects +
         "],\n" + kLinks + links + "] }\n";
}

Company::Company(embedded::HostDialogs& dialogs, const CompanyOptions& options)
    : HostedMachine(dialogs, [&](const TemporaryFolder& machineFolder) {
        return CompanyModel(machineFolder, options);
      }) {}

PcRecordListPtr Company::ObjectList(const std::vector<ObjectKey>& keys, const std::vector<Value>& states) {
  auto list = host.CreateRecordList();
  list->AddColumn("OBJECT_ID", 4, 3);
  list->AddColumn("CLASS_ID", 2, 2);
  if (!states.empty()) list->AddColumn("STATE", 2, 2);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const int row = static_cast<int>(i);
    list->SetValue("OBJECT_ID", row, Value(keys[i].objectId));
    list->SetValue("CLASS_ID", row, Value(keys[i].classId));
    if (i < states.size()) list->SetValue("STATE", row, states[i]);
  }
  return list;
}

}  // namespace tessel::test
