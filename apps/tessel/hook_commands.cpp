#include <ostream>

#include "dispatch/exchange_object.h"
#include "tessel/commands.h"
#include "tessel/message_driver.h"
#include "tessel/workbench.h"

namespace tessel::cli {
namespace {

// Values of "VRKX_DX_PROCESS_PHASE".
constexpr std::int32_t kContinued = 2;

bool Locked(const PcObject& object) {
  constexpr const char* kLockState = "VRKX_DX_LOCK_STATE";
  return object.HasAttribute(kLockState) && !object.GetValue(kLockState).IsNull() &&
         object.GetValue(kLockState).AsBoolean();
}

bool Continued(const PcObject& object) {
  const char* phase = exchange_attribute::kProcessPhase;
  return object.HasAttribute(phase) && !object.GetValue(phase).IsNull() &&
         object.GetValue(phase).AsInt32() == kContinued;
}

// The hooks report nothing to their caller, and skip a document silently in some cases: what the database
// says afterwards decides.
bool AllAsWished(const std::string& hook, PcSession& session, const PcRecordList& objects,
                 std::ostream& err) {
  bool all = true;
  for (int row = 0; row < objects.RowCount(); ++row) {
    const PcObjectPtr object = session.ObjectStore()->Object(objects.KeyOfRow(row));
    if (!object) continue;
    object->ReadData();
    const bool wished = hook == "LockObject"     ? Locked(*object)
                        : hook == "UnlockObject" ? !Locked(*object)
                                                 : Continued(*object);
    if (!wished) {
      const char* outcome = hook == "LockObject"     ? "was not locked"
                            : hook == "UnlockObject" ? "was not unlocked"
                                                     : "was not continued";
      err << "object " << ObjectKeyText(object->Key(), ':') << " " << outcome << "\n";
    }
    all = all && wished;
  }
  return all;
}

void CallHook(const std::string& hook, Workbench& workbench, const PcRecordListPtr& objects) {
  PcRecordListPtr none;
  StartApplication& entry = workbench.Entry();
  if (hook == "LockObject") {
    entry.LockObject(workbench.Session(), "", objects, nullptr, none);
  } else if (hook == "UnlockObject") {
    entry.UnlockObject(workbench.Session(), "", objects, nullptr, none);
  } else if (hook == "ContinueBatchMode") {
    entry.ContinueBatchMode(workbench.Session(), "", objects, nullptr, none);
  } else {
    entry.GetLatestDataExObj(workbench.Session(), "", objects);
  }
}

}  // namespace

int RunHook(const NamedHookCall& command, Streams& streams) {
  MessageDriver driver(streams.err, streams.out);
  Workbench workbench(command.login, driver);
  const PcRecordListPtr objects = workbench.ObjectRows(command.objects);
  // Continuing and looking up take one object a call.
  const bool oneByOne = command.hook == "ContinueBatchMode" || command.hook == "GetLatestDataExObj";
  if (oneByOne) {
    for (const std::string& object : command.objects) {
      CallHook(command.hook, workbench, workbench.ObjectRows({object}));
    }
  } else {
    CallHook(command.hook, workbench, objects);
  }
  if (command.hook == "GetLatestDataExObj") {
    const bool shown = driver.Dialogs() == objects->RowCount();
    if (!shown && driver.Messages() == 0) {
      if (!workbench.LastError().empty()) streams.err << workbench.LastError() << "\n";
      streams.err << "no exchange object could be shown\n";
    }
    return shown && driver.Messages() == 0 ? kDone : kRefused;
  }
  const bool wished = AllAsWished(command.hook, *workbench.Session(), *objects, streams.err);
  return wished && driver.Messages() == 0 ? kDone : kRefused;
}

}  // namespace tessel::cli
