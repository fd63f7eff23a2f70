// Tessel_4, the custom input page: one labelled text box for each entry of the section "CustomFormIni".
#pragma once

#include <string>
#include <vector>

#include "wizard/page.h"

namespace tessel {

class Tessel_4 : public Page {
 public:
  explicit Tessel_4(const PageContext& context) : Page(context, PageId::kCustomInput) {}

  // What was typed, in field order; empty when the page is not loaded.
  [[nodiscard]] std::vector<std::string> Texts() const;

 protected:
  void Build() override;
  void Load() override;
  void Activate() override;
  void Layout() override;
  bool QueryClose(CloseReason reason) override { return ConfirmClose(reason); }

 private:
  struct Field {
    int number;  // of its entry, from 1
    Label* label;
    TextBox* box;
  };

  // Makes the fields once; what follows from them comes in FinishBuild, when all controls are there.
  void MakeFields();
  void FinishBuild();
  // Makes the field of an entry; nothing for an entry that makes none.
  void MakeField(int number, const std::string& entry);
  void SetCaptions();
  void LayOutFields();
  [[nodiscard]] int MultiLineCount() const;

  Frame* frame3_ = nullptr;
  Button* command1_ = nullptr;
  Label* label1_ = nullptr;   // the template of the labels
  TextBox* text1_ = nullptr;  // of the single-line boxes
  TextBox* text2_ = nullptr;  // of the multi-line boxes
  std::vector<Field> fields_;
  int entryCount_ = 0;
  bool built_ = false;
};

}  // namespace tessel
