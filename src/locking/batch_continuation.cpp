#include "locking/batch_continuation.h"

#include <string>

#include "host/error.h"
#include "host/names.h"
#include "hostlib/active_window.h"
#include "locking/stopped_exchange.h"
#include "messages/guard.h"
#include "platform/paths.h"

namespace tessel::CommonXFunctions {
namespace {

constexpr int kRefreshMode = 1;
constexpr int kRaised = -1;
constexpr const char* kRenameFailed = "e0100";
constexpr const char* kUpdateFailed = "e0090";
constexpr const char* kErrorText = "Fehlerabbruch im Modul (ContinueBatchMode/CommonXFunctions)";

// False, traced, when the folder keeps its name.
bool Rename(Services& services, const std::string& from, const std::string& to) {
  return Guarded(services.trace, kErrorText, false, [&] {
    FileSystem& files = services.platform.files;
    files.Move(from, to);
    try {
      files.SyncFolder(paths::Parent(to));
    } catch (...) {
      IgnoringErrors([&] { files.Move(to, from); });
      throw;
    }
    return true;
  });
}

void ShowFailure(Services& services, const char* code) {
  services.toolkit.ShowMessage(
      {.text = services.errors.ErrorHandle(code), .title = "Kestrix", .icon = MessageIcon::kExclamation});
}

// Commits the unit of work, if there is one.
bool WriteStatus(Services& services, PcSession& session, PcObject& exchange, PcUnitOfWorkPtr& unit) {
  const int code = Guarded(services.trace, kErrorText, kRaised, [&] {
    exchange.SetValue(attribute::kProcessPhase, kPhaseContinued);
    const int refused =
        exchange.Update(*Required(services.declarations.startup.DefaultBehavior, "DefaultBehavior"));
    if (refused == 0 && unit) unit->Commit();
    return refused;
  });
  unit.reset();
  if (code != 0 && code != kRaised)
    services.trace.problems.Add({"Writing the status of the exchange", {}, code, session.ErrorText(code)});
  return code == 0;
}

void TraceRenamed(Services& services, const FolderNames& folders) {
  // A failing trace never leaves the folder without its status.
  IgnoringErrors(
      [&] { services.trace.Write("Folder renamed: (old) " + folders.old + " (new) " + folders.renamed); });
}

void RefreshWindow(Services& services, const PcObject& exchange) {
  services.trace.Write("update data ex obj with new continue status (2)");
  RefreshActiveWindow(*Required(exchange.Session(), "session of the exchange"), exchange.Key(), kRefreshMode);
}

void TakeBack(Services& services, const FolderNames& folders) {
  IgnoringErrors(
      [&] { services.trace.Write("Failed to update the continue status - attribute in the data ex obj"); });
  if (Rename(services, folders.renamed, folders.old)) TraceRenamed(services, folders);
  ShowFailure(services, kUpdateFailed);
}

// The phase in the database, behind which no other session can be while the unit of work lasts.
bool ContinuedMeanwhile(const PcObject& exchange) {
  const Value phase = exchange.GetValue(attribute::kProcessPhase);
  return phase.IsNull() || phase.AsInt32() != kPhaseStopped;
}

void Continue(Services& services, PcSession& session, const PcRecordList& rows, ContinueOutcome& outcome) {
  services.trace.Write("initialization ended successfully");
  services.trace.Write(std::string("Read continue status: ") + attribute::kProcessPhase);
  const Value phase = rows.GetValue(attribute::kProcessPhase, 0);
  outcome.result = ContinueResult::kNotStopped;
  if (phase.IsNull() || phase.AsInt32() != kPhaseStopped) return;
  outcome.result = ContinueResult::kFailed;
  services.trace.Write("current Process phase is: 'Stopped'");
  PcUnitOfWorkPtr unit = session.BeginUnitOfWork("");
  const PcObjectPtr exchange =
      Required(session.ObjectStore()->Object(rows.KeyOfRow(0)), "data exchange object");
  exchange->ReadData();
  if (unit && ContinuedMeanwhile(*exchange)) {
    outcome.result = ContinueResult::kNotStopped;
    return;
  }
  const auto folders = FoldersOf(rows.GetValue(attribute::kRootDirectory, 0).AsText());
  if (!folders) {
    outcome.result = ContinueResult::kNoFolder;
    return;
  }
  outcome.oldFolder = folders->old;
  outcome.newFolder = folders->renamed;
  if (!WasRenamed(services.platform.files, *folders) && !Rename(services, folders->old, folders->renamed)) {
    outcome.result = ContinueResult::kNotRenamed;
    unit.reset();
    ShowFailure(services, kRenameFailed);
    return;
  }
  TraceRenamed(services, *folders);
  if (WriteStatus(services, session, *exchange, unit)) {
    outcome.result = ContinueResult::kContinued;
    RefreshWindow(services, *exchange);
  } else {
    outcome.result = ContinueResult::kNotUpdated;
    TakeBack(services, *folders);
  }
}

}  // namespace

ContinueOutcome ContinueBatchMode(Services& services, const PcSessionPtr& session,
                                  const PcRecordListPtr& first) {
  ContinueOutcome outcome;
  GuardedRun(services.trace, kErrorText, [&] {
    if (!Init(services, session)) return;
    Continue(services, *session, *Required(first.get(), "first record list"), outcome);
  });
  outcome.problems = services.trace.problems.Kept();
  return outcome;
}

}  // namespace tessel::CommonXFunctions
