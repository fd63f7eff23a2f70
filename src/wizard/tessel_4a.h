// Tessel_4a, the folder-structure page: picks one of the folder structures related to the selected object.
#pragma once

#include "wizard/page.h"

namespace tessel {

class Tessel_4a : public Page {
 public:
  explicit Tessel_4a(const PageContext& context) : Page(context, PageId::kFolderStructure) {}

 protected:
  void Build() override;
  void Activate() override;
  void Layout() override;
  bool QueryClose(CloseReason reason) override { return ConfirmClose(reason); }

 private:
  void ListLinkedFolderStruct();
  void ReadSelectedObject();
  [[nodiscard]] PcRecordListPtr RelatedFolderStructures() const;
  void Send();

  Frame* frame3_ = nullptr;
  Label* label1_ = nullptr;
  TreeList* treeView1_ = nullptr;
  Button* command1_ = nullptr;
  Button* command2_ = nullptr;
  PcObjectPtr selectedObject_;  // of the last fill
};

}  // namespace tessel
