#include "locking/locking_world.h"

#include "config/admin_configuration_reader.h"
#include "host/error.h"
#include "locking/object_locking.h"

namespace tessel::test {
namespace {

constexpr const char* kModel = R"json({
  "alias": "LOCKS", "language": "GER",
  "classMechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC", "VRKX_DX_TRANSMITTAL"],
  "attributeSets": { "document": [
    { "name": "STATE", "type": "integer", "default": 1 },
    { "name": "REVISION_STG", "type": "integer", "default": 1 },
    { "name": "UNDER_OPERATION", "type": "integer" },
    { "name": "VRKX_DX_LOCK_STATE", "type": "boolean" },
    { "name": "VRKX_DX_LOCK_DESCRIPTION", "type": "text" },
    { "name": "VRKX_DX_LOCKED_BY", "type": "reference", "target": "USERS" },
    { "name": "VRKX_DX_FIRST_LOCK_USE", "type": "boolean" } ] },
  "classes": [
    { "id": 10, "name": "USERS", "table": "USERS",
      "attributes": [{ "name": "LOGIN", "type": "text", "identifying": true }] },
    { "id": 20, "name": "Admin Setting", "table": "ADMIN_SETTING", "attributes": [
      { "name": "VRKX_ID", "type": "text", "identifying": true },
      { "name": "VRKX_VALUE_1", "type": "text" }, { "name": "VRKX_VALUE_LONG", "type": "longText" }] },
    { "id": 30, "name": "Object Locking", "table": "OBJECT_LOCKING",
      "unique": [["OPER_CLASS_ID", "OPER_OBJECT_ID"]],
      "attributes": [
        { "name": "OPER_CLASS_ID", "type": "integer" }, { "name": "OPER_OBJECT_ID", "type": "long" },
        { "name": "LOCK_TYPE", "type": "integer" }, { "name": "$DESCRIPTION$", "type": "text" }] },
    { "id": 900, "name": "Data Exchange", "table": "DATA_EXCHANGE", "mechanisms": ["VRKX_DX_TRANSMITTAL"],
      "attributes": [
        { "name": "VRK_ID", "type": "text", "identifying": true },
        { "name": "VRKX_DX_PROCESS_PHASE", "type": "long" },
        { "name": "VRKX_DX_EXCHANGE_ROOT_DIR", "type": "text" }] },
    { "id": 1201, "name": "Assembly", "table": "ASSEMBLY", "mechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC"],
      "attributes": [{ "name": "VRK_ID", "type": "text", "identifying": true }],
      "attributeSets": ["document"] },
    { "id": 1202, "name": "Part", "table": "PART",
      "attributes": [{ "name": "CN_ID", "type": "text", "identifying": true }],
      "attributeSets": ["document"] }
  ],
  "linkClasses": [{ "id": 2000, "name": "General Link", "table": "GENERAL_LINK" }],
  "users": [{ "login": "anna", "object": "anna" }, { "login": "bert", "object": "bert" },
            { "login": "rolf", "object": "rolf", "roles": ["Designer", "Unlock"] },
            { "login": "ruth", "object": "ruth", "roles": ["unlock"] },
            { "login": "admin", "object": "admin", "administrator": true }],
  "objects": [
    { "class": "USERS", "id": 51, "name": "anna", "values": { "LOGIN": "anna" } },
    { "class": "USERS", "id": 52, "name": "bert", "values": { "LOGIN": "bert" } },
    { "class": "USERS", "id": 53, "name": "rolf", "values": { "LOGIN": "rolf" } },
    { "class": "USERS", "id": 54, "name": "ruth", "values": { "LOGIN": "ruth" } },
    { "class": "USERS", "id": 55, "name": "admin", "values": { "LOGIN": "admin" } },
    { "class": "Admin Setting", "id": 60, "name": "settings",
      "values": { "VRKX_VALUE_1": "Initialization", "VRKX_VALUE_LONG": [$SETTINGS$, ""] } },
    { "class": "Assembly", "id": 1, "name": "A-1", "values": { "VRK_ID": "A-1" } },
    { "class": "Assembly", "id": 2, "values": { "VRK_ID": "A-2" } },
    { "class": "Part", "id": 3, "values": { "CN_ID": "P-3" } },
    { "class": "Data Exchange", "id": 17, "name": "17", "values": { "VRK_ID": "DX-17" } },
    { "class": "Data Exchange", "id": 42, "name": "42", "values": { "VRK_ID": "DX-42" } },
    { "class": "Data Exchange", "id": 30, "name": "30", "values": { "VRK_ID": "DX-30" } }
  ],
  "links": [
    { "class": "General Link", "from": "anna", "to": "settings" },
    { "class": "General Link", "from": "bert", "to": "settings" },
    { "class": "General Link", "from": "rolf", "to": "settings" },
    { "class": "General Link", "from": "ruth", "to": "settings" },
    { "class": "General Link", "from": "admin", "to": "settings" },
    { "class": "General Link", "from": "17", "to": "A-1" },
    { "class": "General Link", "from": "A-1", "to": "42" },
    { "class": "General Link", "from": "30", "to": "A-1" }
  ]
})json";

void Replace(std::string& text, const std::string& mark, const std::string& value) {
  text.replace(text.find(mark), mark.size(), value);
}

PosixPlatformOptions PlatformOptions(const TemporaryFolder& folder) {
  PosixPlatformOptions options;
  options.drivesDirectory = folder.Path("drives");
  options.pauses = false;
  options.program = ProgramLocation{folder.MakeFolder("program"), "prjTessel"};
  return options;
}

}  // namespace

MessageAnswer Onlooker::ShowMessage(const MessageRequest& request) {
  constexpr const char* kIcons[] = {"none", "information", "exclamation", "critical"};
  seen_ += "box \"" + request.title + "\" " + kIcons[static_cast<int>(request.icon)] + " \"" + request.text +
           "\"\n";
  return MessageAnswer::kOk;
}

int Onlooker::ShowObject(const embedded::ObjectDialogRequest& request) {
  seen_ += "object dialog mode " + std::to_string(request.displayMode) + " \"" + request.title + "\" page " +
           std::to_string(request.page) + (request.modal ? " modal" : " modeless");
  for (const ObjectKey& key : request.objects)
    seen_ += " " + ObjectKeyText(key, ':');
  seen_ += "\n";
  return 1;
}

void Onlooker::RefreshObject(const ObjectKey& key, int mode) {
  seen_ += "refresh " + ObjectKeyText(key, ':') + " mode " + std::to_string(mode) + "\n";
}

std::string LockingModel(const WorldOptions& options) {
  std::string text = kModel;
  Replace(text, "$DESCRIPTION$", options.lockDescription);
  Replace(text, "$SETTINGS$", options.settings);
  return text;
}

Machine::Machine() : posix(PlatformOptions(folder)) {
  folder.Write("program/error.Kestrix_GER", "e0090 not updated\r\ne0100 not renamed\r\ne9030 no start\r\n");
}

embedded::HostOptions Machine::HostOptions() {
  embedded::HostOptions options;
  options.files = &posix.Services().files;
  options.dialogs = &user;
  return options;
}

LoadedProgram::LoadedProgram(Machine& machine, embedded::EmbeddedHost& host, const std::string& login,
                             std::shared_ptr<RecordingTraceWriter> traceWriter)
    : trace{std::move(traceWriter)},
      session(host.OpenSession(login)),
      declarations(trace.trace, machine.user, machine.Services().program.directory,
                   [this] { return std::make_shared<AdminConfigurationReader>(trace.trace); }),
      ansi(machine.Services().encodings.Open(machine.Services().ansiCodePage)),
      errors(machine.Services().files, *ansi, declarations),
      services{trace.trace, errors, machine.user, declarations, machine.Services(), host} {}

bool LoadedProgram::Lock(const PcRecordListPtr& rows) {
  return CommonXFunctions::LockObject(services, startUp, session, rows, nullptr, nullptr);
}

bool LoadedProgram::Unlock(const PcRecordListPtr& rows) {
  return CommonXFunctions::UnlockObject(services, startUp, session, rows, nullptr, nullptr);
}

LockingWorld::LockingWorld(const WorldOptions& options)
    : host(LockingModel(options), machine.folder.Path(), machine.HostOptions()) {}

LoadedProgram& LockingWorld::Program(const std::string& login) {
  std::unique_ptr<LoadedProgram>& program = programs_[login];
  if (!program) program = std::make_unique<LoadedProgram>(machine, host, login);
  return *program;
}

PcObjectPtr LockingWorld::Object(ClassId classId, ObjectId id) {
  return Required(Program("anna").session->ObjectStore()->Object({classId, id}), "object of the test");
}

void LockingWorld::Set(ClassId classId, ObjectId id,
                       const std::vector<std::pair<std::string, Value>>& values) {
  const PcObjectPtr object = Object(classId, id);
  for (const auto& [name, value] : values)
    object->SetValue(name, value);
  if (object->Update(*Program("anna").session->NewBehavior()) != 0) throw HostError("The test cannot write");
}

PcRecordListPtr DocumentRows(HostRuntime& runtime, const std::vector<ObjectKey>& keys, const Value& state) {
  const PcRecordListPtr rows = runtime.CreateRecordList();
  rows->AddColumn("CLASS_ID", 2, static_cast<int>(ColumnType::kInteger));
  rows->AddColumn("OBJECT_ID", 4, static_cast<int>(ColumnType::kLong));
  rows->AddColumn("STATE", 2, static_cast<int>(ColumnType::kInteger));
  rows->AddColumn("VRK_ID", 40, static_cast<int>(ColumnType::kText));
  for (const ObjectKey& key : keys) {
    const int row = rows->RowCount();
    rows->SetValue("CLASS_ID", row, key.classId);
    rows->SetValue("OBJECT_ID", row, key.objectId);
    rows->SetValue("STATE", row, state);
    rows->SetValue("VRK_ID", row, "row " + std::to_string(row));
  }
  return rows;
}

LockingWorld::Snapshot LockingWorld::Database() {
  Snapshot snapshot;
  PcSession& session = *Program("anna").session;
  const PcMetaDataPtr metaData = session.MetaData();
  for (int i = 0; i < metaData->ClassCount(); ++i) {
    const std::string table = metaData->ClassAt(i)->TableName();
    const PcQueryPtr query = session.ObjectStore()->NewQuery();
    query->SetSql("select * from " + table);
    const PcRecordListPtr rows = query->Run();
    for (int row = 0; row < rows->RowCount(); ++row) {
      std::string text = table;
      for (int column = 0; column < rows->ColumnCount(); ++column) {
        const std::string value = rows->GetValue(column, row).AsText();
        if (!value.empty()) text += " " + rows->ColumnName(column) + "=" + value;
      }
      snapshot.insert(text);
    }
  }
  return snapshot;
}

std::string LockingWorld::Changes(const Snapshot& before) {
  const Snapshot after = Database();
  std::string changes;
  for (const std::string& row : before) {
    if (!after.contains(row)) changes += "- " + row + "\n";
  }
  for (const std::string& row : after) {
    if (!before.contains(row)) changes += "+ " + row + "\n";
  }
  return changes;
}

}  // namespace tessel::test
