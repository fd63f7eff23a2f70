#include <algorithm>
#include <iterator>
#include <ostream>

#include "common/sender_start.h"
#include "platform/caught_signals.h"
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

// A signal ends a command behind the object in hand.
bool Ended() {
  return CaughtSignals::Caught() != 0;
}

void Append(LockOutcome& all, LockOutcome one) {
  all.started = one.started;
  all.changed = all.changed || one.changed;
  std::ranges::move(one.documents, std::back_inserter(all.documents));
  std::ranges::move(one.problems, std::back_inserter(all.problems));
}

// One object a call, so that a signal finds no more than one in hand.
int RunLocks(HookDesk& desk, LockHook hook, const char* command, const char* done) {
  Workbench& workbench = desk.workbench;
  (void)workbench.ObjectRows(desk.objects);  // a wrong one is told before the first is locked
  LockOutcome outcome;
  outcome.started = true;
  for (const std::string& object : desk.objects) {
    if (Ended() || !outcome.started) break;
    PcRecordListPtr none;
    (workbench.Entry().*hook)(workbench.Session(), "", workbench.ObjectRows({object}), nullptr, none);
    Append(outcome, workbench.LoadedProgram().lockOutcome);
    ++desk.done;
  }
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
    if (Ended()) break;
    PcRecordListPtr none;
    Workbench& workbench = desk.workbench;
    const FileSystem& files = workbench.LoadedProgram().platform.files;
    const PcRecordListPtr rows = workbench.ObjectRows({object});
    workbench.Entry().ContinueBatchMode(workbench.Session(), "", rows, nullptr, none);
    const ContinueOutcome& outcome = workbench.LoadedProgram().continueOutcome;
    worst = std::max(worst, ReportContinue(outcome, rows->KeyOfRow(0), files, desk.streams));
    exchanges.push_back(JsonOf(outcome, rows->KeyOfRow(0)));
    if (outcome.result == ContinueResult::kContinued &&
        StartSenderFor(workbench.Hosted(), rows->KeyOfRow(0)) == SenderStart::kFailed)
      desk.streams.err << "the server monitor was not started: the exchange waits for one\n";
    ++desk.done;
  }
  return desk.streams.json ? WriteResult(desk.streams, "continue", worst, {{"exchanges", exchanges}}) : worst;
}

int RunLatest(HookDesk& desk) {
  const MessageDriver& driver = desk.driver;
  Json problems = Json::array();
  for (const std::string& object : desk.objects) {
    if (Ended()) break;
    ++desk.done;
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
  const CaughtSignals signals;
  HookDesk desk{workbench, driver, command.objects, streams};
  const int status = action(desk);
  if (const int signal = CaughtSignals::Caught(); signal != 0) {
    streams.err << "ended by " << CaughtSignals::Name(signal) << " after " << desk.done << " of "
                << command.objects.size() << " objects\n";
    return StatusOfSignal(signal);
  }
  if (status != kDone) TellTraceFile(workbench, streams);
  return status;
}

}  // namespace tessel::cli
