// Walks the pages of an export as a person would, by a plan made beforehand.
#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "dispatch/dispatch.h"
#include "headless/headless_toolkit.h"
#include "headless/user_actions.h"

namespace tessel::cli {

struct ExportPlan {
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
  // Messages go to `messages`, a progress bar to `progress` (null for none), the plan of a dry run to
  // `report`.
  ExportDriver(ExportPlan plan, std::ostream& messages, std::ostream* progress, std::ostream& report)
      : plan_(std::move(plan)), messages_(messages), progress_(progress), report_(report) {}

  // Whether the walk was given up, with the reason told; or ended as a dry run ends.
  [[nodiscard]] bool GaveUp() const { return gaveUp_; }
  [[nodiscard]] bool RehearsalEnded() const { return rehearsalEnded_; }

  void Act(HeadlessToolkit& toolkit) override;
  [[nodiscard]] MessageAnswer Answer(const MessageRequest& request) override;
  void WindowRedrawn(const Window& window) override;
  void WindowHidden(const Window& window) override;
  void ProcessStarted(const std::string& program, const std::vector<std::string>& arguments,
                      std::int32_t processId) override;
  void ShowSystemMessage(const std::vector<std::string>& texts) override;

 private:
  void OnStartPage(HeadlessToolkit& toolkit);
  void OnSendModePage(HeadlessToolkit& toolkit);
  void OnSendDataPage(HeadlessToolkit& toolkit, Window& window);
  void OnRecipientPage(HeadlessToolkit& toolkit, Window& window);
  void OnCustomInputPage(HeadlessToolkit& toolkit, Window& window);
  void OnFolderStructurePage(HeadlessToolkit& toolkit, Window& window);
  void OnMailPage(HeadlessToolkit& toolkit, Window& window);

  // Picks one CUSTOMER:CONTACT in the page's lists. False, with the reason told, when it is not exactly one.
  bool PickRecipient(HeadlessToolkit& toolkit, Window& window, const std::string& recipient);
  void Say(const std::string& text);
  // Tells why and leaves the wizard by cancelling.
  void GiveUp(HeadlessToolkit& toolkit, const std::string& reason);
  void Leave(HeadlessToolkit& toolkit);
  // Performs an action that has to be possible; gives up when it is not.
  void Do(HeadlessToolkit& toolkit, const Refusal& refusal);
  // Presses a button that would start the dispatch; a dry run stops here.
  void PressForDispatch(HeadlessToolkit& toolkit, Window& window, const std::string& button);
  void ReportRehearsal(const Window& window);
  void EndProgress();

  ExportPlan plan_;
  std::ostream& messages_;
  std::ostream* progress_;
  std::ostream& report_;
  bool copyStarted_ = false;
  bool leaving_ = false;
  bool gaveUp_ = false;
  bool rehearsalEnded_ = false;
  bool progressDrawn_ = false;
  std::size_t mailsWritten_ = 0;
  std::vector<std::string> documents_;  // texts of the send-data page
  std::vector<std::string> chosen_;     // texts of the picked recipients
};

}  // namespace tessel::cli
