#include "locking/batch_continuation.h"

#include <optional>
#include <string>

#include "host/error.h"
#include "hostlib/qel_function_pool.h"
#include "messages/guard.h"
#include "platform/paths.h"

namespace tessel::CommonXFunctions {
namespace {

constexpr const char* kPhase = "VRKX_DX_PROCESS_PHASE";
constexpr const char* kRootDirectory = "VRKX_DX_EXCHANGE_ROOT_DIR";
constexpr std::int32_t kStopped = 3;
constexpr std::int32_t kContinued = 2;
constexpr int kRefreshMode = 1;
constexpr int kRaised = -1;
constexpr const char* kRenameFailed = "e0100";
constexpr const char* kUpdateFailed = "e0090";
constexpr const char* kErrorText = "Fehlerabbruch im Modul (ContinueBatchMode/CommonXFunctions)";

struct FolderNames {
  std::string old;
  std::string renamed;
};

// Every "Break", also one in the name of a folder above.
std::string WithNewName(std::string path) {
  constexpr std::string_view kBreak = "Break";
  constexpr std::string_view kNew = "New";
  for (std::size_t at = path.find(kBreak); at != std::string::npos;
       at = path.find(kBreak, at + kNew.size())) {
    path.replace(at, kBreak.size(), kNew);
  }
  return path;
}

// The exchange's folder stands before the last separator of the root directory; nothing without a separator.
std::optional<FolderNames> FoldersOf(const std::string& rootDirectory) {
  const std::size_t separator = paths::LastSeparator(rootDirectory);
  if (separator == std::string::npos) return std::nullopt;
  const std::string old = rootDirectory.substr(0, separator);
  return FolderNames{old, WithNewName(old)};
}

// False, traced, when the folder keeps its name.
bool Rename(Services& services, const std::string& from, const std::string& to) {
  return Guarded(services.trace, kErrorText, false, [&] {
    services.platform.files.Move(from, to);
    return true;
  });
}

void ShowFailure(Services& services, const char* code) {
  services.toolkit.ShowMessage(
      {.text = services.errors.ErrorHandle(code), .title = "Kestrix", .icon = MessageIcon::kExclamation});
}

bool WriteStatus(Services& services, PcObject& exchange) {
  return Guarded(services.trace, kErrorText, kRaised, [&] {
           exchange.SetValue(kPhase, kContinued);
           return exchange.Update(
               *Required(services.declarations.startup.DefaultBehavior, "DefaultBehavior"));
         }) == 0;
}

void TraceRenamed(Services& services, const FolderNames& folders) {
  // A failing trace never leaves the folder without its status.
  IgnoringErrors(
      [&] { services.trace.Write("Folder renamed: (old) " + folders.old + " (new) " + folders.renamed); });
}

void RefreshWindow(Services& services, const PcObject& exchange) {
  services.trace.Write("update data ex obj with new continue status (2)");
  const QelFunctionPool pool(services.platform, services.runtime);
  pool.RefreshActivePelicoreWindow(exchange, kRefreshMode);
}

void TakeBack(Services& services, const FolderNames& folders) {
  IgnoringErrors(
      [&] { services.trace.Write("Failed to update the continue status - attribute in the data ex obj"); });
  if (Rename(services, folders.renamed, folders.old)) TraceRenamed(services, folders);
  ShowFailure(services, kUpdateFailed);
}

void Continue(Services& services, PcSession& session, const PcRecordList& rows) {
  services.trace.Write("initialization ended successfully");
  services.trace.Write(std::string("Read continue status: ") + kPhase);
  const Value phase = rows.GetValue(kPhase, 0);
  if (phase.IsNull() || phase.AsInt32() != kStopped) return;
  services.trace.Write("current Process phase is: 'Stopped'");
  const PcObjectPtr exchange =
      Required(session.ObjectStore()->Object(rows.KeyOfRow(0)), "data exchange object");
  exchange->ReadData();
  const auto folders = FoldersOf(rows.GetValue(kRootDirectory, 0).AsText());
  if (!folders) return;
  if (!Rename(services, folders->old, folders->renamed)) {
    ShowFailure(services, kRenameFailed);
    return;
  }
  TraceRenamed(services, *folders);
  if (WriteStatus(services, *exchange)) {
    RefreshWindow(services, *exchange);
  } else {
    TakeBack(services, *folders);
  }
}

}  // namespace

int ContinueBatchMode(Services& services, StartUpState& state, const PcSessionPtr& session,
                      const PcRecordListPtr& first) {
  GuardedRun(services.trace, kErrorText, [&] {
    if (!Init(services, state, session)) return;
    Continue(services, *session, *Required(first.get(), "first record list"));
  });
  return 0;
}

}  // namespace tessel::CommonXFunctions
