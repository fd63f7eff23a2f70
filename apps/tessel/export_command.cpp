#include <ostream>

#include "host/error.h"
#include "platform/caught_signals.h"
#include "selection/selection.h"
#include "tessel/commands.h"
#include "tessel/export_driver.h"
#include "tessel/outcome_report.h"
#include "tessel/readiness.h"
#include "tessel/workbench.h"

namespace tessel::cli {
namespace {

struct NamedMode {
  const char* name;
  SendMode mode;
};

constexpr NamedMode kModes[] = {
    {"mail", SendMode::kMail},      {"mail-structure", SendMode::kMailStructure},
    {"odette", SendMode::kOdette},  {"custom", SendMode::kCustom},
    {"no-send", SendMode::kNoSend},
};

ExportPlan PlanOf(const Export& command) {
  ExportPlan plan;
  plan.documents = static_cast<int>(command.objects.size());
  for (const NamedMode& named : kModes) {
    if (command.mode == named.name) plan.mode = named.mode;
  }
  plan.recipients = command.recipients;
  plan.subject = command.subject;
  plan.content = command.content.value_or("");
  for (const std::string& field : command.fields) {
    const auto equals = field.find('=');
    plan.fields[ParseInt32(field.substr(0, equals))] = field.substr(equals + 1);
  }
  plan.folderStructure = command.folderStructure;
  plan.dryRun = command.dryRun;
  return plan;
}

int SelectedCount(PcSession& session) {
  const Value count = session.GlobalData().Get(global_data::kCount);
  return count.IsNull() ? 0 : count.AsInt32();
}

// Hands the documents to the selection. False, with the reason told, unless every one may be exported.
bool Select(Workbench& workbench, const PcRecordListPtr& objects, Streams& streams) {
  PcRecordListPtr none;
  workbench.Entry().CollectSelObjs(workbench.Session(), "", objects, nullptr, none);
  const int refused = objects->RowCount() - SelectedCount(*workbench.Session());
  if (refused == 0) return true;
  ReportProblems(workbench.LoadedProgram().trace.problems.Kept(), streams);
  streams.err << "refused: " << refused << " of " << objects->RowCount()
              << " documents may not be exported; nothing was exported\n";
  return false;
}

// A run that was ended by a signal, or as a dry run ends, must leave nothing. The clean-up forgets the
// directory when it has deleted it.
int EndedStatus(Workbench& workbench, bool bySignal, Streams& streams) {
  const int status = bySignal ? StatusOfSignal(CaughtSignals::Caught()) : kDone;
  const std::string& left = workbench.LoadedProgram().exchange.directoryPath;
  if (left.empty()) return status;
  streams.err << "the copied files could not be deleted: " << left << "\n";
  return bySignal ? status : kRefused;
}

int Report(Workbench& workbench, const ExportDriver& driver, Streams& streams) {
  const ExportOutcome& outcome = workbench.LoadedProgram().exportOutcome;
  const FileSystem& files = workbench.LoadedProgram().platform.files;
  const bool ended = CaughtSignals::Caught() != 0 && driver.GaveUp() && outcome.directories.empty();
  const bool rehearsed = driver.RehearsalEnded() && !driver.GaveUp();
  const int status =
      ended || rehearsed ? EndedStatus(workbench, ended, streams) : ReportExport(outcome, files, streams);
  if (status == kRefused || status == kIncomplete) TellTraceFile(workbench, streams);
  if (!streams.json) return status;
  return WriteResult(streams, "export", status, rehearsed ? driver.Rehearsal() : JsonOf(outcome, files));
}

}  // namespace

int RunExport(const Export& command, Streams& streams) {
  ExportDriver driver(PlanOf(command), streams);
  Workbench workbench(command.login, driver);
  RequireReady(workbench, command.login, streams);
  driver.Walk(workbench.LoadedProgram());
  const CaughtSignals signals;
  workbench.SetCopyWatch([&driver](const embedded::CopyStep& step) { return driver.CopyRuns(step); });
  if (!Select(workbench, workbench.ObjectRows(command.objects), streams)) {
    TellTraceFile(workbench, streams);
    if (streams.json) WriteResult(streams, "export", kRefused, {{"error", "documents may not be exported"}});
    return kRefused;
  }
  const char* operation = command.folderStructure.empty() ? "" : "StructureMode";
  PcRecordListPtr none;
  static_cast<void>(workbench.Entry().StartExport(workbench.Session(), operation, nullptr, nullptr, none));
  return Report(workbench, driver, streams);
}

}  // namespace tessel::cli
