#include "locking/locking_world.h"

#include "locking/object_locking.h"

namespace tessel::test {

CompanyOptions LockingCompany(const SettingLines& settings) {
  return {.settings = settings,
          .objects = R"json(,
    { "class": "Assembly", "id": 6, "values": { "VRK_ID": "A-6" } },
    { "class": "Data Exchange", "id": 17, "name": "17", "values": { "VRK_ID": "DX-17" } },
    { "class": "Data Exchange", "id": 42, "name": "42", "values": { "VRK_ID": "DX-42" } },
    { "class": "Data Exchange", "id": 30, "name": "30", "values": { "VRK_ID": "DX-30" } })json",
          .links = R"json(,
    { "class": "General Link", "from": "17", "to": "gearbox" },
    { "class": "General Link", "from": "gearbox", "to": "42" },
    { "class": "General Link", "from": "30", "to": "gearbox" })json"};
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

LoadedProgram::LoadedProgram(Machine& machine, embedded::EmbeddedHost& host, Toolkit& toolkit,
                             const std::string& login, std::shared_ptr<RecordingTraceWriter> writer)
    : ProgramServices(machine, host, toolkit, std::move(writer)), session(host.OpenSession(login)) {}

bool LoadedProgram::Lock(const PcRecordListPtr& rows) {
  return CommonXFunctions::LockObject(services, session, rows, nullptr, nullptr).changed;
}

bool LoadedProgram::Unlock(const PcRecordListPtr& rows) {
  return CommonXFunctions::UnlockObject(services, session, rows, nullptr, nullptr).changed;
}

LockingWorld::LockingWorld(const CompanyOptions& options) : Company(user, options) {}

LoadedProgram& LockingWorld::Program(const std::string& login) {
  std::unique_ptr<LoadedProgram>& program = programs_[login];
  if (!program) program = std::make_unique<LoadedProgram>(*this, host, user, login);
  return *program;
}

LockingWorld::Snapshot LockingWorld::Database() {
  Snapshot snapshot;
  const PcMetaDataPtr metaData = session->MetaData();
  for (int i = 0; i < metaData->ClassCount(); ++i) {
    const std::string table = metaData->ClassAt(i)->TableName();
    const PcQueryPtr query = session->ObjectStore()->NewQuery();
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
