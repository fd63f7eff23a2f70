// The process button of the send-data page: the copy run, and the way on from it.
#include <chrono>

#include "dispatch/recipients.h"
#include "host/error.h"
#include "messages/guard.h"
#include "platform/file_system.h"
#include "platform/paths.h"
#include "selection/selection.h"
#include "wizard/tessel_2.h"

namespace tessel {
namespace {

constexpr const char* kCompleteMark = "2";
constexpr std::chrono::milliseconds kPause{50};
constexpr const char* kProcessError = "Fehler beim Bearbeiten der Rootobjekte (Command1_Click/Tessel_2)";

// Sets a flag as long as it lives.
class FlagScope {
 public:
  explicit FlagScope(bool& flag) : flag_(flag) { flag_ = true; }
  ~FlagScope() { flag_ = false; }
  FlagScope(const FlagScope&) = delete;
  FlagScope& operator=(const FlagScope&) = delete;

 private:
  bool& flag_;
};

}  // namespace

bool Tessel_2::CopyComplete() const {
  return command1_->Tag == kCompleteMark;
}

void Tessel_2::Process() {
  // Events run during a copy; a press among them is ignored.
  if (running_) return;
  if (CopyComplete()) {
    GuardedRun(GetServices().trace, kProcessError, [this] { Leave(); });
    return;
  }
  // The user may close the window during the run.
  const std::shared_ptr<Window> kept = SharedWindow();
  CopyRun run;
  {
    const FlagScope scope(running_);
    ForgetFailure();
    run.keptBefore = GetServices().trace.problems.Kept().size();
    run.problems = GetServices().trace.problems.Count();
    const bool ended = Guarded(GetServices().trace, kProcessError, false, [&] {
      RunCopy(run);
      return true;
    });
    if (!ended && !run.failure) Fail(run, CopyTrouble::kNotProcessed, "", "");
    if (run.failure) {
      keptBeforeFailure_ = run.keptBefore;
      keptAfterFailure_ = GetServices().trace.problems.Kept().size();
    }
    if (run.copied) GuardedRun(GetServices().trace, kProcessError, [this] { ClearReadOnlyFlags(); });
  }
  // The rules end such a press without a word.
  if (!Left() && run.failure) Flow().Tell(*run.failure);
  // The host's copy window took the page's place.
  if (run.single && !Left() && !kept->Visible()) ShowAgain();
}

void Tessel_2::RunCopy(CopyRun& run) {
  const int selected = treeView2_->Selected();
  if (selected < 0) {
    Fail(run, CopyTrouble::kNothingToCopy, "", "");
    ThrowObjectNotSet("selected node");
  }
  if (treeView2_->NodeAt(selected).checked) {
    Fail(run, CopyTrouble::kCopiedAlready, treeView2_->NodeAt(selected).text, "");
    return;
  }
  const int count = treeView2_->NodeCount();
  if (check1_->Checked()) {
    progressBar1_->SetMaximum(count);
    progressBar1_->SetVisible(true);
  }
  if (!PrepareDirectory(run)) return;
  progressBar1_->SetValue(0);
  int done = 0;
  do {
    const bool copyAll = check1_->Checked();
    if (!copyAll) check1_->SetEnabled(false);
    run.single = !copyAll;
    const int node = copyAll ? done : selected;
    // A node that an earlier run has marked is in the directory and in the structure document already.
    if (!treeView2_->NodeAt(node).checked && !CopyNode(node, run)) return;
    ShowProgress(++done);
  } while (!Left() && check1_->Checked() && done < count);
}

void Tessel_2::ForgetFailure() {
  Problems& problems = GetServices().trace.problems;
  if (problems.Kept().size() == keptAfterFailure_) problems.ForgetBehind(keptBeforeFailure_);
  keptBeforeFailure_ = keptAfterFailure_ = 0;
}

bool Tessel_2::PrepareDirectory(CopyRun& run) {
  Services& services = GetServices();
  run.keptBefore = services.trace.problems.Kept().size();
  ExchangeState& exchange = Context().exchange;
  if (!CommonXFunctions::MakeExchangeDirectory(services, exchange)) {
    Fail(run, CopyTrouble::kNoDirectory, "", NativeText(Settings().ExchangeDirectory));
    return false;
  }
  services.Session().GlobalData().Set(global_data::kExchangeDirectory, exchange.directoryPath);
  TraceLine("Austauschverzeichnis fuer LFC Fenster gesetzt(Command1_Click/Tessel_2): " +
            exchange.directoryPath);
  services.errors.WriteProtocolString("p0003", exchange.directoryPath);
  return true;
}

bool Tessel_2::CopyNode(int node, CopyRun& run) {
  run.keptBefore = GetServices().trace.problems.Kept().size();
  const std::string tag = treeView2_->NodeAt(node).tag;
  const CopyResult result = CommonXFunctions::copyFile2ExDir(GetServices(), Context().exchange, *this, tag);
  TraceLine("Result of CopyFile Window (1=ok; 2=abord): " + std::to_string(static_cast<int>(result)));
  if (result == CopyResult::kFailed) {
    Fail(run, CopyTrouble::kNotCopied, treeView2_->NodeAt(node).text,
         NativeText(Context().exchange.directoryPath));
    return false;
  }
  if (result != CopyResult::kCopied) return true;
  run.copied = true;
  bool generate = Settings().GenStrucFile;
  if (!CommonXFunctions::CreateStructure(GetServices(), Context().exchange, Context().structure, generate,
                                         tag)) {
    TraceLine("Error during creation of structure file");
    Fail(run, CopyTrouble::kNotDescribed, treeView2_->NodeAt(node).text, "");
    return false;
  }
  MarkNode(node);
  if (Left()) return false;
  if (treeView2_->CheckedCount() == treeView2_->NodeCount()) Complete();
  return true;
}

void Tessel_2::Fail(CopyRun& run, CopyTrouble trouble, const std::string& document,
                    const std::string& path) const {
  run.failure = CopyFailure{trouble, document, path, 0, {}};
  const Problems& problems = GetServices().trace.problems;
  if (problems.Count() == run.problems || problems.Kept().empty()) return;
  run.failure->number = problems.Kept().back().number;
  run.failure->cause = problems.Kept().back().cause;
}

void Tessel_2::MarkNode(int node) {
  WaitABit();
  LetEventsRun();
  treeView2_->SetChecked(node, true);
  LetEventsRun();
  WaitABit();
}

void Tessel_2::ShowProgress(int copied) {
  WaitABit();
  LetEventsRun();
  progressBar1_->SetValue(copied);
  label1_->SetCaption(std::to_string(copied) + " / " + std::to_string(treeView2_->NodeCount()));
  LetEventsRun();
  WaitABit();
}

void Tessel_2::Complete() {
  command1_->Tag = kCompleteMark;
  progressBar1_->SetVisible(false);
  label2_->SetVisible(true);
  label2_->SetCaption(Caption("c0025", "Kopiervorgang erfolgreich"));
  SetForwardCaption();
  PcGlobalData& globalData = GetServices().Session().GlobalData();
  CommonXFunctions::RemoveSelection(globalData);
  CommonXFunctions::RemoveIfPresent(globalData, global_data::kCopyRunning);
}

std::string Tessel_2::NativeText(const std::string& path) const {
  return Guarded(GetServices().trace, "Path shown to the user", path,
                 [&] { return GetServices().platform.files.NativePath(path); });
}

// Once at the end of a press, not after each object: listing the directory each time would cost the square of
// the number of files.
void Tessel_2::ClearReadOnlyFlags() {
  FileSystem& files = GetServices().platform.files;
  const std::string& directory = Context().exchange.directoryPath;
  for (const std::string& name : files.ListFiles(directory)) {
    const std::string path = paths::Join(directory, name);
    if (files.IsReadOnly(path)) files.SetReadOnly(path, false);
  }
}

void Tessel_2::LetEventsRun() {
  GetServices().toolkit.PumpEvents();
  if (Loaded()) GetServices().toolkit.Redraw(PageWindow());
}

void Tessel_2::WaitABit() {
  GetServices().toolkit.Pause(kPause);
}

void Tessel_2::Leave() {
  check1_->SetEnabled(true);
  if (Next() != PageId::kRecipient) StartWithoutRecipient();
  GoForward();
}

// The export is finalised and recorded like any other, and no recipient of an earlier one leaks into it.
void Tessel_2::StartWithoutRecipient() {
  State().recipients = NewRecipientList(GetServices().runtime);
  AppendRecipient(*State().recipients, {{}, {}, Context().exchange.directoryPath});
}

}  // namespace tessel
