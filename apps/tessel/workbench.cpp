#include "tessel/workbench.h"

#include <array>

#include "embedded/client/object_rows.h"
#include "host/error.h"

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

ClassId ParseClass(const PcMetaData& metaData, const std::string& text) {
  const ClassId byName = metaData.ClassIdByName(text);
  return byName != 0 ? byName : ParseInt16(text);
}

NativePlatformOptions WithoutPauses() {
  NativePlatformOptions options;
  options.pauses = false;
  return options;
}

ObjectKey ParseObject(const PcMetaData& metaData, const std::string& text) {
  const auto colon = text.rfind(':');
  if (colon != std::string::npos) {
    try {
      return {ParseClass(metaData, text.substr(0, colon)), ParseInt32(text.substr(colon + 1))};
    } catch (const RuntimeError&) {
      throw HostError("\"" + text + "\" is no CLASS:OBJECT");
    }
  }
  throw HostError("\"" + text + "\" is no CLASS:OBJECT");
}

}  // namespace

Workbench::Workbench(const Login& login, Driver& driver)
    : system_(WithoutPauses()),
      toolkit_(driver),
      launcher_(system_.Services().processes, driver),
      hosted_({login.database, login.user, login.password, login.language},
              WithServices(system_.Services(), system_.Services().pauser, launcher_), toolkit_, driver) {}

std::vector<std::string> Workbench::HookNames() const {
  std::vector<std::string> names;
  for (const NamedHook& hook : kHooks)
    names.emplace_back(hook.name);
  names.emplace_back(kLatestHook);
  return names;
}

int Workbench::Call(const HookCall& call) {
  const PcRecordListPtr first = ToRecordList(call.first);
  if (call.hook == kLatestHook) return Entry().GetLatestDataExObj(Session(), call.operation, first);
  const PcRecordListPtr second = ToRecordList(call.second);
  PcRecordListPtr third = ToRecordList(call.third);
  for (const NamedHook& hook : kHooks) {
    if (call.hook == hook.name) {
      return (Entry().*hook.hook)(Session(), call.operation, first, second, third);
    }
  }
  throw HostError("There is no hook \"" + call.hook + "\"");
}

Value Workbench::GlobalValue(const std::string& name) const {
  return Session()->GlobalData().Get(name);
}

PcRecordListPtr Workbench::ToRecordList(const std::optional<PlainRecords>& records) {
  if (!records) return nullptr;
  PcRecordListPtr list = hosted_.NewRecordList();
  int row = 0;
  for (const PlainRow& cells : *records) {
    for (const auto& [name, value] : cells)
      embedded::SetCell(*list, row, name, value);
    ++row;
  }
  return list;
}

PcRecordListPtr Workbench::ObjectRows(const std::vector<std::string>& objects) {
  std::vector<ObjectKey> keys;
  const PcMetaDataPtr metaData = Session()->MetaData();
  for (const std::string& object : objects)
    keys.push_back(ParseObject(*metaData, object));
  return hosted_.ObjectRows(keys);
}

}  // namespace tessel::cli
