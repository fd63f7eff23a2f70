#include <ostream>

#include "host/error.h"
#include "selection/selection.h"
#include "tessel/commands.h"
#include "tessel/export_driver.h"
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

}  // namespace

int RunExport(const Export& command, Streams& streams) {
  ExportDriver driver(PlanOf(command), streams.err, streams.errIsTerminal ? &streams.err : nullptr,
                      streams.out);
  Workbench workbench(command.login, driver);
  driver.Walk(workbench.LoadedProgram());
  PcRecordListPtr none;
  const PcRecordListPtr objects = workbench.ObjectRows(command.objects);
  workbench.Entry().CollectSelObjs(workbench.Session(), "", objects, nullptr, none);
  const int selected = SelectedCount(*workbench.Session());
  if (selected != objects->RowCount()) {
    streams.err << "refused: " << objects->RowCount() - selected << " of " << objects->RowCount()
                << " documents may not be exported; nothing was exported\n";
    return kRefused;
  }
  const char* operation = command.folderStructure.empty() ? "" : "StructureMode";
  const std::int16_t status =
      workbench.Entry().StartExport(workbench.Session(), operation, nullptr, nullptr, none);
  if (driver.RehearsalEnded() && !driver.GaveUp()) {
    // The clean-up forgets the directory when it has deleted it.
    const std::string& left = workbench.LoadedProgram().exchange.directoryPath;
    if (left.empty()) return kDone;
    streams.err << "the copied files could not be deleted: " << left << "\n";
    return kRefused;
  }
  const WizardState& state = workbench.LoadedProgram().wizard.state;
  const bool complete = status == 0 && !state.DispatchFailed && !driver.GaveUp() &&
                        !state.finishedDirectories.empty() && state.unrecordedDirectories.empty();
  // Directories that an export left behind before it failed are final all the same.
  for (const std::string& directory : state.finishedDirectories) {
    (complete ? streams.out : streams.err << "already final: ")
        << workbench.LoadedProgram().platform.files.NativePath(directory) << "\n";
  }
  if (complete) return kDone;
  for (const std::string& directory : state.unrecordedDirectories)
    streams.err << "not recorded completely in the database: " << directory << "\n";
  if (!workbench.LastError().empty()) streams.err << workbench.LastError() << "\n";
  streams.err << "the export was not completed\n";
  return kRefused;
}

}  // namespace tessel::cli
