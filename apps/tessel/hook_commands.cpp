#include <algorithm>
#include <ostream>

#include "tessel/commands.h"
#include "tessel/json_result.h"
#include "tessel/message_driver.h"
#include "tessel/outcome_report.h"
#include "tessel/readiness.h"
#include "tessel/workbench.h"

namespace tessel::cli {
namespace {

using LockHook = std::int16_t (StartApplication::*)(const PcSessionPtr&, const std::string&,
                                                    const PcRecordListPtr&, const PcRecordListPtr&,
                                                    PcRecordListPtr&);

int RunLocks(HookDesk& desk, LockHook hook, const char* command, const char* done) {
  PcRecordListPtr none;
  Workbench& workbench = desk.workbench;
  (workbench.Entry().*hook)(workbench.Session(), "", workbench.ObjectRows(desk.objects), nullptr, none);
  const LockOutcome& outcome = workbench.LoadedProgram().lockOutcome;
  const int status = ReportLocks(outcome, done, desk.streams);
  return desk.streams.json ? WriteResult(desk.streams, command, status, JsonOf(outcome)) : status;
}

}  // namespace

int RunLock(HookDesk& desk) {
  return RunLocks(desk, &StartApplication::LockObject, "lock", "locked");
}

int RunUnlock(HookDesk& desk) {
  return RunLocks(desk, &StartApplication::UnlockObject, "unlock", "unlocked");
}

// Continuing and looking up take one object a call.
int RunContinue(HookDesk& desk) {
  int worst = kDone;
  Json exchanges = Json::array();
  for (const std::string& object : desk.objects) {
    PcRecordListPtr none;
    Workbench& workbench = desk.workbench;
    const PcRecordListPtr rows = workbench.ObjectRows({object});
    workbench.Entry().ContinueBatchMode(workbench.Session(), "", rows, nullptr, none);
    const ContinueOutcome& outcome = workbench.LoadedProgram().continueOutcome;
    worst = std::max(worst, ReportContinue(outcome, rows->KeyOfRow(0), desk.streams));
    exchanges.push_back(JsonOf(outcome, rows->KeyOfRow(0)));
  }
  return desk.streams.json ? WriteResult(desk.streams, "continue", worst, {{"exchanges", exchanges}}) : worst;
}

int RunLatest(HookDesk& desk) {
  const MessageDriver& driver = desk.driver;
  Json problems = Json::array();
  for (const std::string& object : desk.objects) {
    const std::size_t shown = driver.Objects().size();
    const std::size_t told = driver.Messages().size();
    Workbench& workbench = desk.workbench;
    workbench.Entry().GetLatestDataExObj(workbench.Session(), "", workbench.ObjectRows({object}));
    const std::vector<Problem>& kept = workbench.LoadedProgram().trace.problems.Kept();
    ReportProblems(kept, desk.streams);
    const Json more = JsonOf(kept);
    problems.insert(problems.end(), more.begin(), more.end());
    if (driver.Objects().size() == shown && driver.Messages().size() == told)
      desk.streams.err << "no exchange object could be shown\n";
  }
  const bool whole = driver.Objects().size() == desk.objects.size() && driver.Messages().empty();
  const int status = whole ? kDone : kRefused;
  if (desk.streams.json) {
    return WriteResult(
        desk.streams, "latest", status,
        {{"exchanges", JsonOf(driver.Objects())}, {"messages", driver.Messages()}, {"problems", problems}});
  }
  for (const embedded::ObjectDialogRequest& exchange : driver.Objects()) {
    desk.streams.out << exchange.title << "\n";
    for (const auto& [name, value] : exchange.attributes)
      desk.streams.out << name << ": " << value << "\n";
  }
  return status;
}

int RunHook(const NamedHookCall& command, HookRun action, Streams& streams) {
  MessageDriver driver(streams.err);
  Workbench workbench(command.login, driver);
  RequireReady(workbench, command.login, streams);
  HookDesk desk{workbench, driver, command.objects, streams};
  const int status = action(desk);
  if (status != kDone) TellTraceFile(workbench, streams);
  return status;
}

}  // namespace tessel::cli
