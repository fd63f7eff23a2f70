#include "support/export_world.h"

#include "config/admin_configuration_reader.h"

namespace tessel::test {
namespace {

constexpr const char* kModelBegin = R"json({
  "alias": "WORLD", "language": "ENG",
  "databaseMechanisms": ["Supplier Exchange", "Admin"],
  "classMechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC", "VRKX_DX_TRANSMITTAL", "VRKX_DX_SUPPLIER_COMPANY",
                      "VRKX_DX_SUPPLIER_CONT_PERSON", "VRKX_DX_FOLDER_STRUCTURE"],
  "sequences": [{ "name": "Exchange", "pattern": "DX-%03d", "start": 7 }],
  "attributeSets": { "document": [
    { "name": "VRK_ID", "type": "text", "identifying": true },
    { "name": "VRK_DESCRIPTION", "type": "text" },
    { "name": "MATERIAL", "type": "text" },
    { "name": "FILE_NAME", "type": "text" },
    { "name": "CAD_REF_FILE_NAME", "type": "text" }
  ] },
  "classes": [
    { "id": 10, "name": "USERS", "table": "USERS",
      "attributes": [{ "name": "LOGIN", "type": "text", "identifying": true }] },
    { "id": 20, "name": "Admin Setting", "table": "ADMIN_SETTING", "attributes": [
      { "name": "VRKX_ID", "type": "text", "identifying": true },
      { "name": "VRKX_VALUE_1", "type": "text" }, { "name": "VRKX_VALUE_LONG", "type": "longText" }] },
    { "id": 900, "name": "Data Exchange", "table": "DATA_EXCHANGE", "mechanisms": ["VRKX_DX_TRANSMITTAL"],
      "attributes": [
        { "name": "REVISION", "type": "text", "identifying": true },
        { "name": "VRK_ID", "type": "text", "identifying": true, "sequence": "Exchange" },
        { "name": "VRKX_DX_PROCESS_PHASE", "type": "long" },
        { "name": "VRKX_DX_STATUS_INFO", "type": "text" },
        { "name": "VRKX_DX_EXCHANGE_TYPE", "type": "integer" },
        { "name": "VRKX_DX_EXCH_PROTOCOL", "type": "longText" },
        { "name": "VRKX_DX_SEND_TO_COMPANY", "type": "text" },
        { "name": "VRKX_DX_SEND_TO_CONT_PERS", "type": "text" }] },
    { "id": 901, "name": "Company", "table": "COMPANY", "mechanisms": ["VRKX_DX_SUPPLIER_COMPANY"],
      "attributes": [{ "name": "VRK_ID", "type": "text", "identifying": true },
                     { "name": "CITY", "type": "text" }] },
    { "id": 902, "name": "Contact Person", "table": "CONTACT_PERSON",
      "mechanisms": ["VRKX_DX_SUPPLIER_CONT_PERSON"],
      "attributes": [{ "name": "VRK_ID", "type": "text", "identifying": true },
                     { "name": "CN_FIRST_NAME", "type": "text" }] },
    { "id": 910, "name": "Folder Structure", "table": "FOLDER_STRUCTURE",
      "mechanisms": ["VRKX_DX_FOLDER_STRUCTURE"],
      "attributes": [{ "name": "VRK_ID", "type": "text", "identifying": true }] },
    { "id": 1201, "name": "Assembly", "table": "ASSEMBLY", "fileBased": true, "icon": "assembly.png",
      "mechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC"], "attributeSets": ["document"],
      "hierarchicalLink": "Product Structure" },
    { "id": 1202, "name": "Part", "table": "PART", "fileBased": true, "icon": "../part.png",
      "mechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC"], "attributeSets": ["document"],
      "hierarchicalLink": "Product Structure" },
    { "id": 1203, "name": "Note", "table": "NOTE", "fileBased": true,
      "attributes": [{ "name": "CN_DESCRIPTION", "type": "text" }] },
    { "id": 1204, "name": "Item", "table": "ITEM", "mechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC"],
      "attributes": [{ "name": "VRK_ID", "type": "text", "identifying": true }] }
  ],
  "linkClasses": [
    { "id": 2000, "name": "General Link", "table": "GENERAL_LINK" },
    { "id": 2001, "name": "Product Structure", "table": "PRODUCT_STRUCTURE",
      "first": ["Assembly"], "second": ["Part"] }
  ],
  "users": [{ "login": "anna", "object": "anna" }],
  "configuration": { "$Local\\Directory Structure\\ICONS_DIR": "${MODEL_DIR}/icons" },
  "objects": [
    { "class": "USERS", "id": 31, "name": "anna", "values": { "LOGIN": "anna" } },
    { "class": "Assembly", "id": 1, "name": "gearbox", "file": "gearbox.stp",
      "values": { "VRK_ID": "A-1", "VRK_DESCRIPTION": "Gearbox", "MATERIAL": "mixed" } },
    { "class": "Part", "id": 2, "name": "shaft", "file": "shaft.stp",
      "values": { "VRK_ID": "P-2", "VRK_DESCRIPTION": "Shaft", "MATERIAL": "C45 \"hard\"" } },
    { "class": "Part", "id": 3, "values": { "VRK_ID": "P-3", "VRK_DESCRIPTION": "Sketch" } },
    { "class": "Note", "id": 4, "values": { "CN_DESCRIPTION": "Minutes" } },
    { "class": "Item", "id": 5, "values": { "VRK_ID": "I-5" } },
    { "class": "Company", "id": 11, "name": "acme", "values": { "VRK_ID": "Acme", "CITY": "Hull" } },
    { "class": "Company", "id": 12, "name": "bolt", "values": { "VRK_ID": "Bolt" } },
    { "class": "Contact Person", "id": 21, "name": "smith",
      "values": { "VRK_ID": "Smith", "CN_FIRST_NAME": "Jo" } },
    { "class": "Contact Person", "id": 22, "name": "jones",
      "values": { "VRK_ID": "Jones", "CN_FIRST_NAME": "Al" } })json";

constexpr const char* kModelLinks = R"json(
  ],
  "links": [
    { "class": "Product Structure", "from": "gearbox", "to": "shaft" })json";

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char character : text) {
    if (character == '"' || character == '\\') quoted += '\\';
    quoted += character;
  }
  return quoted + "\"";
}

// An admin setting object of a name, and its link from its owner.
struct Setting {
  std::string owner;
  std::string name;
  std::vector<std::string> lines;
};

std::string SettingObject(const Setting& setting) {
  std::string lines;
  for (const std::string& line : setting.lines)
    lines += Quoted(line) + ", ";
  const std::string label = Quoted("settings of " + setting.owner);
  return ",\n    { \"class\": \"Admin Setting\", \"name\": " + label +
         ", \"values\": { \"VRKX_ID\": " + label + ", \"VRKX_VALUE_1\": " + Quoted(setting.name) +
         ", \"VRKX_VALUE_LONG\": [" + lines + "\"\"] } }";
}

std::string SettingLink(const Setting& setting) {
  return ",\n    { \"class\": \"General Link\", \"from\": " + Quoted(setting.owner) +
         ", \"to\": " + Quoted("settings of " + setting.owner) + " }";
}

std::string ModelText(const WorldSettings& settings) {
  const Setting all[] = {{"anna", "Initialization", settings.initialization},
                         {"acme", "DRAXASettings", settings.company},
                         {"smith", "DRAXASettings", settings.contact}};
  std::string objects;
  std::string links;
  for (const Setting& setting : all) {
    if (setting.lines.empty()) continue;
    objects += SettingObject(setting);
    links += SettingLink(setting);
  }
  return kModelBegin + objects + kModelLinks + links + "\n  ]\n}\n";
}

std::string MadeModelFolder(const TemporaryFolder& folder) {
  folder.Write("model/gearbox.stp", "gearbox");
  folder.Write("model/shaft.stp", "shaft");
  folder.Write("model/icons/assembly.png", "icon");
  return folder.Path("model");
}

PosixPlatformOptions PlatformOptions(const TemporaryFolder& folder) {
  PosixPlatformOptions options;
  options.drivesDirectory = folder.Path("drives");
  options.program = ProgramLocation{folder.MakeFolder("program"), "prjTessel"};
  return options;
}

embedded::HostOptions HostOptionsOf(ExportWorld& world) {
  embedded::HostOptions options;
  options.files = &world.platform.files;
  options.dialogs = &world.dialogs;
  options.vaultPath = world.folder.MakeFolder("vault");
  return options;
}

}  // namespace

MessageAnswer RecordingToolkit::ShowMessage(const MessageRequest& request) {
  constexpr const char* kIcons[] = {"none", "information", "exclamation", "critical"};
  boxes.push_back(kIcons[static_cast<int>(request.icon)] + ("|" + request.title + "|" + request.text));
  return MessageAnswer::kOk;
}

std::int32_t RecordingLauncher::Start(const std::string& program, const std::vector<std::string>& arguments) {
  std::string line = program;
  for (const std::string& argument : arguments)
    line += " [" + argument + "]";
  starts.push_back(line);
  return processId;
}

ExportWorld::ExportWorld(const WorldSettings& settings)
    : posix(PlatformOptions(folder)),
      platform{posix.Services().files,
               posix.Services().encodings,
               clock,
               pauser,
               launcher,
               posix.Services().profiles,
               posix.Services().system,
               posix.Services().program,
               posix.Services().ansiCodePage},
      host(ModelText(settings), MadeModelFolder(folder), HostOptionsOf(*this)),
      declarations(trace.trace, toolkit, platform.program.directory,
                   [this] { return std::make_shared<AdminConfigurationReader>(trace.trace); }),
      ansi(platform.encodings.Open(platform.ansiCodePage)),
      errors(platform.files, *ansi, declarations),
      services{trace.trace, errors, toolkit, declarations, platform, host},
      session(host.OpenSession("anna")) {}

PcRecordListPtr ExportWorld::ObjectList(const std::vector<ObjectKey>& keys,
                                        const std::vector<Value>& states) {
  auto list = host.CreateRecordList();
  list->AddColumn("OBJECT_ID", 4, 3);
  list->AddColumn("CLASS_ID", 2, 2);
  if (!states.empty()) list->AddColumn("STATE", 2, 2);
  for (int row = 0; row < static_cast<int>(keys.size()); ++row) {
    const auto position = static_cast<std::size_t>(row);
    list->SetValue("OBJECT_ID", row, Value(keys[position].objectId));
    list->SetValue("CLASS_ID", row, Value(keys[position].classId));
    if (position < states.size()) list->SetValue("STATE", row, states[position]);
  }
  return list;
}

std::string ExportWorld::Stored(const ObjectKey& key, const std::string& attribute) {
  return Required(session->ObjectStore()->Object(key), "stored object")->GetText(attribute);
}

std::vector<std::string> ExportWorld::LinkedTo(const ObjectKey& key) {
  const auto query = session->ObjectStore()->NewQuery();
  query->SetSql(
      "select CLASS_ID2, OBJECT_ID2 from GENERAL_LINK where CLASS_ID1 = " + std::to_string(key.classId) +
      " and OBJECT_ID1 = " + std::to_string(key.objectId) + " order by OBJECT_ID");
  const auto rows = query->Run();
  std::vector<std::string> ends;
  for (int row = 0; row < rows->RowCount(); ++row) {
    ends.push_back(rows->GetValue(0, row).AsText() + ":" + rows->GetValue(1, row).AsText());
  }
  return ends;
}

}  // namespace tessel::test
