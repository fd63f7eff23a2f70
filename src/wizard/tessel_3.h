// Tessel_3, the recipient page: a company of the partner list with one of its contact persons, or several
// such pairs collected in a third list.
#pragma once

#include <memory>

#include "dispatch/recipients.h"
#include "wizard/page.h"

namespace tessel {

class Tessel_3 : public Page {
 public:
  explicit Tessel_3(const PageContext& context) : Page(context, PageId::kRecipient) {}

 protected:
  void Build() override;
  void Load() override;
  void Activate() override;
  void Layout() override;
  bool QueryClose(CloseReason reason) override;

 private:
  void BuildLists();
  void BuildButtons();
  [[nodiscard]] bool MultiRecipient() const { return Settings().b_AllowMultiRecipientSelection; }
  [[nodiscard]] bool PairSelected() const;
  // Adds the pair selected in the two lists to the collected ones.
  void AddPair();
  void CollectPair();
  void RemovePair();
  void Send();
  [[nodiscard]] bool ReadyToSend();
  void FillRecipientList();
  void ReleaseButton(MouseButton button);
  void EditAdditionalValues();

  Frame* frame3_ = nullptr;
  Label* label1_ = nullptr;
  Label* label2_ = nullptr;
  TreeList* treeView1_ = nullptr;
  TreeList* treeView2_ = nullptr;
  TreeList* treeView3_ = nullptr;
  Button* command1_ = nullptr;
  Button* command2_ = nullptr;
  Button* command3_ = nullptr;
  Button* command4_ = nullptr;
  Button* command5_ = nullptr;
  PopupMenu mnuKontext_;
  double heightReserve_ = 0;
  bool nodeClicked_ = false;
  std::unique_ptr<AdditionalValues> lastAdditionalValues_;
};

}  // namespace tessel
