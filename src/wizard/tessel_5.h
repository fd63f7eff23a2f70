// Tessel_5, the mail data page. Its send operation is the dispatch, for the pages that skip it too.
#pragma once

#include <array>

#include "wizard/page.h"

namespace tessel {

class Tessel_5 : public Page {
 public:
  explicit Tessel_5(const PageContext& context) : Page(context, PageId::kMailData) {}

  // Performs the click of Command1, without showing the page.
  void ClickDepatchButton();

 protected:
  void Build() override;
  void Activate() override;
  void Layout() override;
  bool QueryClose(CloseReason reason) override { return ConfirmClose(reason); }

 private:
  // Positions of the four fields in Label1 and Text1.
  enum Field : std::size_t { kRecipient, kSender, kSubject, kContent, kFieldCount };

  void SetCaptions();
  void StartRecords();
  // The e-mail address of a row's contact person; empty when there is none.
  [[nodiscard]] std::string RecipientAddress(int row) const;
  [[nodiscard]] int RecipientCount() const;
  void ShowCounter(int index);
  // Keeps the fields for the current recipient. True when there is a next one, which is then shown.
  [[nodiscard]] bool StepToNextRecipient();
  void StoreFields(MailRecord& mail);
  void Dispatch();

  Frame* frame3_ = nullptr;
  std::array<Label*, kFieldCount> label1_{};
  std::array<TextBox*, kFieldCount> text1_{};
  Label* label2_ = nullptr;
  Button* command1_ = nullptr;
};

}  // namespace tessel
