// Tessel_0, the start page of the wizard.
#pragma once

#include "wizard/page.h"

namespace tessel {

class Tessel_0 : public Page {
 public:
  explicit Tessel_0(const PageContext& context) : Page(context, PageId::kStart) {}

 protected:
  void Build() override;
  void Activate() override;
  void Layout() override;

 private:
  void BuildBranding();

  Frame* frame3_ = nullptr;
  Button* command1_ = nullptr;
  Button* command2_ = nullptr;
};

}  // namespace tessel
