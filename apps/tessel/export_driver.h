// Walks the pages of an export as a person would, by a plan made beforehand.
#pragma once

#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "common/outcome_words.h"
#include "dispatch/dispatch.h"
#include "embedded/session/host_options.h"
#include "entry/program.h"
#include "headless/headless_toolkit.h"
#include "headless/user_actions.h"
#include "tessel/copy_progress.h"
#include "tessel/json_result.h"

namespace tessel {
class TreeList;
}

namespace tessel::cli {

struct ExportPlan {
  int documents = 0;  // how many were selected; the send-data page must list them all
  SendMode mode = SendMode::kNoSend;
  std::vector<std::string> recipients;  // CUSTOMER:CONTACT, each by tag (class id "_" object id) or by text
  std::string subject;
  std::string content;
  std::map<int, std::string> fields;  // texts of the custom form by field number from 1
  std::string folderStructure;        // tag or text of the folder structure
  bool dryRun = false;
};

class ExportDriver : public Driver {
 public:
  // Messages go to the streams' error stream, a progress bar, too, when it is a terminal; what a dry run
  // found to the output stream.
  ExportDriver(ExportPlan plan, Streams& streams)
      : plan_(std::move(plan)), streams_(streams), progress_(streams) {}

  // The program whose pages are walked; named before the walk begins.
  void Walk(Program& program) {
    program_ = &program;
    program.wizard.tell = [this](const CopyFailure& failure) { Say(WordsOf(failure, Speech::kEnglish)); };
  }

  // Whether the walk was given up, with the reason told; or ended as a dry run ends.
  [[nodiscard]] bool GaveUp() const { return gaveUp_; }
  [[nodiscard]] bool RehearsalEnded() const { return rehearsalEnded_; }

  // What a dry run found.
  [[nodiscard]] Json Rehearsal() const;

  // A copy within the host: told to the progress bar. False when a signal asked the run to end.
  [[nodiscard]] bool CopyRuns(const embedded::CopyStep& step);

  void Act(HeadlessToolkit& toolkit) override;
  void EventsPumped(HeadlessToolkit& toolkit) override;
  [[nodiscard]] MessageAnswer Answer(const MessageRequest& request) override;
  void WindowRedrawn(const Window& window) override;
  void WindowHidden(const Window& window) override;
  void ProcessStarted(const std::string& program, const std::vector<std::string>& arguments,
                      std::int32_t processId) override;
  void ShowSystemMessage(const std::vector<std::string>& texts) override;

 private:
  void ActOn(PageId page, HeadlessToolkit& toolkit, Window& window);
  void OnStartPage(HeadlessToolkit& toolkit);
  void OnSendModePage(HeadlessToolkit& toolkit);
  void OnSendDataPage(HeadlessToolkit& toolkit, Window& window);
  void StartCopy(HeadlessToolkit& toolkit, const TreeList& list);
  void OnRecipientPage(HeadlessToolkit& toolkit, Window& window);
  void OnCustomInputPage(HeadlessToolkit& toolkit, Window& window);
  void OnFolderStructurePage(HeadlessToolkit& toolkit, Window& window);
  void OnMailPage(HeadlessToolkit& toolkit, Window& window);

  [[nodiscard]] FlowSettings PathSettings() const;
  // Whether the send mode and the configuration lead through a page.
  [[nodiscard]] bool Passes(PageId page) const { return LeadsThrough(page, plan_.mode, PathSettings()); }

  // Why the plan cannot be walked; empty when it can. Finds the recipients, so that nothing is copied for a
  // plan that names unknown ones.
  [[nodiscard]] std::string FindObstacle();
  [[nodiscard]] std::string FindRecipients();
  [[nodiscard]] std::string FindUntypeable() const;

  struct FoundRecipient {
    std::string customerTag;
    std::string contactTag;
    std::string text;
  };
  void Say(const std::string& text);
  // Says what was held back.
  void SayHeld();
  // Tells why and leaves the wizard by cancelling.
  void GiveUp(const std::string& reason);
  void Leave(HeadlessToolkit& toolkit);
  // An action that has to be possible; gives up, and returns false, when it was refused.
  bool Did(const Refusal& refusal);
  // Presses Command1 of a page. When that starts the dispatch, a dry run stops here.
  void GoForward(HeadlessToolkit& toolkit, PageId page);
  bool Press(HeadlessToolkit& toolkit);
  void PrintRehearsal();
  // Gives up when a signal asked for that.
  void HeedSignals();

  Program* program_ = nullptr;
  ExportPlan plan_;
  Streams& streams_;
  CopyProgress progress_;
  bool copyStarted_ = false;
  // What is said while a name is tried that somebody else may have been faster with.
  std::optional<std::vector<std::string>> held_;
  bool leaving_ = false;
  bool gaveUp_ = false;
  bool rehearsalEnded_ = false;
  std::size_t mailsWritten_ = 0;
  std::vector<std::string> documents_;  // texts of the send-data page
  std::vector<FoundRecipient> recipients_;
};

}  // namespace tessel::cli
