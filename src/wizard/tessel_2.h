// Tessel_2, the send-data page: the selection as a list, and the copy of its objects into the exchange
// directory.
#pragma once

#include <optional>
#include <string>

#include "wizard/copy_failure.h"
#include "wizard/page.h"

namespace tessel {

class Tessel_2 : public Page, public SendDataView {
 public:
  explicit Tessel_2(const PageContext& context) : Page(context, PageId::kSendData) {}

  // SendDataView
  [[nodiscard]] bool CopyAll() const override { return check1_->Checked(); }
  void HideForHostWindow() override { Hide(); }

 protected:
  void Build() override;
  void Load() override;
  void Activate() override;
  void Layout() override;

 private:
  // One press of the process button while objects are left to copy.
  struct CopyRun {
    bool single = false;                 // the object last copied was the selected one alone
    bool copied = false;                 // files reached the exchange directory
    std::optional<CopyFailure> failure;  // of a press that ended early
    std::size_t problems = 0;            // of the run when the press began
    std::size_t keptBefore = 0;          // problems that were kept when its last step began
  };

  void BuildProgress();
  void BuildButtons();
  void SetCaptions();
  void ListSelection();
  void ListObject(int number);
  void ClickCopyAll();
  void SetForwardCaption();

  // The user's gestures on check marks, which belong to the program.
  void KeyDown(char32_t key);
  void NodeCheck(int node);
  void TreeClick();

  // Command1.
  void Process();
  void RunCopy(CopyRun& run);
  // What made the press before this one fail is tried again: it is no problem of the run any more.
  void ForgetFailure();
  [[nodiscard]] bool PrepareDirectory(CopyRun& run);
  // False ends the run.
  [[nodiscard]] bool CopyNode(int node, CopyRun& run);
  // Ends the press with what is told about it, and the cause of what went wrong last in it.
  void Fail(CopyRun& run, CopyTrouble trouble, const std::string& document, const std::string& path) const;
  void MarkNode(int node);
  // The path as this machine has it; as it stands when it is none.
  [[nodiscard]] std::string NativeText(const std::string& path) const;
  void ShowProgress(int copied);
  void Complete();
  void ClearReadOnlyFlags();
  void LetEventsRun();
  void WaitABit();
  void Leave();
  void StartWithoutRecipient();
  [[nodiscard]] bool CopyComplete() const;
  // The user cancelled or closed the page.
  [[nodiscard]] bool Left() const { return State().ExportCancelled || !Loaded(); }

  Frame* frame3_ = nullptr;
  TreeList* treeView2_ = nullptr;
  ImageList imageList1_;
  CheckBox* check1_ = nullptr;
  Label* label1_ = nullptr;
  ProgressBar* progressBar1_ = nullptr;
  Label* label2_ = nullptr;
  Button* command1_ = nullptr;
  Button* command2_ = nullptr;
  Button* command3_ = nullptr;
  int clickedNode_ = -1;
  bool spacePressed_ = false;
  bool running_ = false;
  // Kept problems before and after the step that made the last press fail; equal when none did.
  std::size_t keptBeforeFailure_ = 0;
  std::size_t keptAfterFailure_ = 0;
};

}  // namespace tessel
