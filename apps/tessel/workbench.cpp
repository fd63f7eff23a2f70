#include "tessel/workbench.h"

#include <array>

#include "host/error.h"
#include "platform/paths.h"

namespace tessel::cli {
namespace {

using Hook = std::int16_t (StartApplication::*)(const PcSessionPtr&, const std::string&,
                                                const PcRecordListPtr&, const PcRecordListPtr&,
                                                PcRecordListPtr&);

struct NamedHook {
  const char* name;
  Hook hook;
};

constexpr std::array<NamedHook, 6> kHooks{{
    {"StartExport", &StartApplication::StartExport},
    {"CollectSelObjs", &StartApplication::CollectSelObjs},
    {"LFCStage2", &StartApplication::LFCStage2},
    {"LockObject", &StartApplication::LockObject},
    {"UnlockObject", &StartApplication::UnlockObject},
    {"ContinueBatchMode", &StartApplication::ContinueBatchMode},
}};
constexpr const char* kLatestHook = "GetLatestDataExObj";

struct ColumnShape {
  int length;
  ColumnType type;
};

ColumnShape ShapeOf(const std::string& name, const Value& value) {
  if (name.starts_with("CLASS_ID") || name == "STATE" || name == "OPERATION_ID") {
    return {2, ColumnType::kInteger};
  }
  if (value.IsText()) return {255, ColumnType::kText};
  if (value.IsBoolean()) return {2, ColumnType::kBoolean};
  if (value.IsDouble()) return {8, ColumnType::kDouble};
  return {4, ColumnType::kLong};
}

ClassId ParseClass(const PcMetaData& metaData, const std::string& text) {
  const ClassId byName = metaData.ClassIdByName(text);
  return byName != 0 ? byName : ParseInt16(text);
}

// The same services, with programs started through another launcher.
Platform WithLauncher(const Platform& services, ProcessLauncher& launcher) {
  return {services.files,    services.encodings, services.clock,   services.pauser,      launcher,
          services.profiles, services.system,    services.program, services.ansiCodePage};
}

PosixPlatformOptions WithoutPauses() {
  PosixPlatformOptions options;
  options.pauses = false;
  return options;
}

embedded::HostOptions OptionsOf(const Platform& platform, Driver& driver) {
  embedded::HostOptions options;
  options.files = &platform.files;
  options.dialogs = &driver;
  return options;
}

}  // namespace

Workbench::Workbench(const Login& login, Driver& driver)
    : system_(WithoutPauses()),
      traceFile_(system_.Services().files,
                 system_.Services().encodings.Open(system_.Services().ansiCodePage)),
      toolkit_(driver),
      launcher_(system_.Services().processes, driver),
      platform_(WithLauncher(system_.Services(), launcher_)),
      host_(login.database, OptionsOf(platform_, driver)),
      program_(platform_, toolkit_, host_, traceFile_.Factory(), MakeTracingAdditionalValues),
      entry_(program_),
      session_(host_.OpenSession(login.user, login.password, login.language)) {
  host_.SetLfcStage2([this](const PcSessionPtr& session, const std::string& operation,
                            const PcRecordListPtr& first, const PcRecordListPtr& second,
                            const PcRecordListPtr& third) {
    PcRecordListPtr thirdRecords = third;
    entry_.LFCStage2(session, operation, first, second, thirdRecords);
  });
}

std::vector<std::string> Workbench::HookNames() const {
  std::vector<std::string> names;
  for (const NamedHook& hook : kHooks)
    names.emplace_back(hook.name);
  names.emplace_back(kLatestHook);
  return names;
}

int Workbench::Call(const HookCall& call) {
  const PcRecordListPtr first = ToRecordList(call.first);
  if (call.hook == kLatestHook) return entry_.GetLatestDataExObj(session_, call.operation, first);
  const PcRecordListPtr second = ToRecordList(call.second);
  PcRecordListPtr third = ToRecordList(call.third);
  for (const NamedHook& hook : kHooks) {
    if (call.hook == hook.name) return (entry_.*hook.hook)(session_, call.operation, first, second, third);
  }
  throw HostError("There is no hook \"" + call.hook + "\"");
}

Value Workbench::GlobalValue(const std::string& name) const {
  return session_->GlobalData().Get(name);
}

PcRecordListPtr Workbench::ToRecordList(const std::optional<PlainRecords>& records) {
  if (!records) return nullptr;
  PcRecordListPtr list = host_.CreateRecordList();
  int row = 0;
  for (const PlainRow& cells : *records) {
    for (const auto& [name, value] : cells) {
      if (!list->HasColumn(name)) {
        const ColumnShape shape = ShapeOf(name, value);
        list->AddColumn(name, shape.length, static_cast<int>(shape.type));
      }
      list->SetValue(std::string_view(name), row, value);
    }
    ++row;
  }
  return list;
}

PcRecordListPtr Workbench::ObjectRows(const std::vector<std::string>& objects) {
  PlainRecords records;
  const PcMetaDataPtr metaData = session_->MetaData();
  for (const std::string& text : objects) {
    const auto colon = text.rfind(':');
    if (colon == std::string::npos) throw HostError("\"" + text + "\" is no CLASS:OBJECT");
    ObjectKey key;
    try {
      key = {ParseClass(*metaData, text.substr(0, colon)), ParseInt32(text.substr(colon + 1))};
    } catch (const RuntimeError&) {
      throw HostError("\"" + text + "\" is no CLASS:OBJECT");
    }
    const PcObjectPtr object = session_->ObjectStore()->Object(key);
    if (!object) throw HostError("there is no object " + text);
    object->ReadData();
    PlainRow row{{"CLASS_ID", key.classId}, {"OBJECT_ID", key.objectId}};
    const PcClassPtr objectClass = object->Class();
    for (int index = 0; index < objectClass->AttributeCount(); ++index) {
      const std::string name = objectClass->Attribute(index)->Name();
      if (name != "CLASS_ID" && name != "OBJECT_ID") row.emplace_back(name, object->GetValue(name));
    }
    records.push_back(std::move(row));
  }
  return ToRecordList(records);
}

}  // namespace tessel::cli
