#include "entry/export_run.h"

#include <utility>

#include "dispatch/recovery.h"
#include "entry/hook_trace.h"
#include "entry/program.h"
#include "host/names.h"
#include "hostlib/my_common_functions.h"
#include "messages/guard.h"
#include "selection/selection.h"

namespace tessel {
namespace {

constexpr std::int16_t kDone = 0;
constexpr std::int16_t kNotDone = 1;

void ShowCatalogueMessage(Program& program, const char* code, MessageIcon icon) {
  program.services.toolkit.ShowMessage({program.errors.ErrorHandle(code), "Kestrix", icon});
}

// An export that an error ended without clean-up has left its pages loaded and its directory named. Used
// anew, the pages would show that export's selection, and the copy would look for a directory under its name.
void ForgetBrokenExport(Program& program) {
  GuardedRun(program.trace, "Error while unloading the pages (StartExport/StartApplication)",
             [&] { program.wizard.DiscardPages(); });
  CommonXFunctions::ForgetExchangeDirectory(program.exchange);
}

void ResetFlags(Program& program) {
  program.declarations.startup.FolderStructureMode = false;
  WizardState& state = program.wizard.state;
  state.UseFolderStructure = false;
  state.ExportCancelled = false;
  state.KeepSelection = false;
  state.ExportFinished = false;
  state.outcome = {};
  program.trace.problems.Clear();
}

void EndExchangeDirectory(Program& program, PcSession& session) {
  if (program.wizard.state.ExportCancelled) {
    program.trace.Write("Delete exchange folder if exist");
    DiscardExchangeDirectory(program.platform.files, session, program.exchange);
  } else if (program.wizard.state.outcome.dispatch != DispatchEnd::kFinished) {
    GuardedRun(
        program.trace, "Error while clearing the exchange directory (StartExport/StartApplication)",
        [&] { DiscardExchangeDirectory(program.platform.files, session, program.exchange); },
        ProblemKind::kAside);
  }
  program.exchange.journal.reset();
}

void CleanUp(Program& program, PcSession& session) {
  const WizardState& state = program.wizard.state;
  if (!state.KeepSelection) {
    program.trace.Write("delete selected elements in global data variable");
    CommonXFunctions::RemoveSelection(session.GlobalData());
    CommonXFunctions::RemoveIfPresent(session.GlobalData(), global_data::kCopyRunning);
  }
  program.trace.Write("Terminate all existing objects and windows");
  CommonXFunctions::TerminateObjs(program.services, program);
  EndExchangeDirectory(program, session);
}

}  // namespace

void RecoverCutOffExports(Program& program, const PcSessionPtr& session) {
  // A start-up that failed has read no exchange path.
  if (!session || program.declarations.startup.session != session) return;
  const std::string& path = program.declarations.configuration.ExchangeDirectory;
  if (!path.empty())
    static_cast<void>(RecoverExports(program.trace, program.platform.files, *session, path, {}));
}

std::int16_t RunExport(Program& program, const PcSessionPtr& session, const std::string& operation) {
  ForgetBrokenExport(program);
  ResetFlags(program);
  WizardState& state = program.wizard.state;
  bool& folderStructureMode = program.declarations.startup.FolderStructureMode;

  StartHookTrace(program, "_Client_GUI");
  if (!myCommonFunctions::CheckDBMechanismExists(program.trace, *Required(session.get(), "PcSession"),
                                                 kSupplierExchange)) {
    ShowCatalogueMessage(program, "e9010", MessageIcon::kCritical);
    return kNotDone;
  }
  if (operation == "StructureMode") folderStructureMode = true;
  program.trace.Write(std::string("Folder structure mode is: ") + BooleanText(folderStructureMode));
  if (!CommonXFunctions::Init(program.services, session)) return kNotDone;
  RecoverCutOffExports(program, session);

  program.trace.Write("Check whether there are objects selected for transmitting!");
  const Value count = session->GlobalData().Get(global_data::kCount);
  if (count.IsNull()) {
    ShowCatalogueMessage(program, "e0010", MessageIcon::kInformation);
    return kNotDone;
  }
  if (folderStructureMode) {
    if (count.AsInt32() != 1) {
      ShowCatalogueMessage(program, "e0120", MessageIcon::kInformation);
      CleanUp(program, *session);
      return kNotDone;
    }
    state.UseFolderStructure = true;
  }
  program.errors.WriteProtocolString("p0001");
  const PcUserPtr user = Required(session->CurrentUser(), "current user");
  program.errors.WriteProtocolString("p0002", FileTimeText(program.platform.clock.Now()), user->LoginName());
  program.trace.Flush();
  program.wizard.Show();
  CleanUp(program, *session);
  return state.ExportCancelled ? kNotDone : kDone;
}

void KeepExportOutcome(Program& program) noexcept {
  IgnoringErrors([&] {
    ExportOutcome& outcome = program.exportOutcome;
    outcome = std::exchange(program.wizard.state.outcome, {});
    outcome.cancelled = program.wizard.state.ExportCancelled;
    outcome.problems = program.trace.problems.Kept();
    outcome.problemCount = program.trace.problems.Count();
  });
}

void ShowExportFailure(Program& program) {
  program.services.toolkit.ShowMessage(
      {"could not read ini values for Kestrix", "Kestrix Error", MessageIcon::kCritical});
}

}  // namespace tessel
