// Tessel_1, the send-mode page: one box for each send mode that the configuration offers.
#pragma once

#include <array>

#include "wizard/page.h"

namespace tessel {

class Tessel_1 : public Page {
 public:
  explicit Tessel_1(const PageContext& context) : Page(context, PageId::kSendMode) {}

 protected:
  void Build() override;
  void Load() override { inClick_ = false; }
  void Activate() override;
  void Layout() override;

 private:
  static constexpr int kBoxCount = 5;

  void LeaveForward();
  void SetCaptions();
  void OfferModes();
  void FollowCheckedBox();
  // The boxes are one exclusive choice that cannot be emptied.
  void ClickBox(int index);
  // Index from 1, the box's value of SendMode.
  [[nodiscard]] CheckBox& Box(int index) const { return *boxes_[static_cast<std::size_t>(index - 1)]; }

  std::array<CheckBox*, kBoxCount> boxes_{};
  Frame* frame3_ = nullptr;
  Button* command1_ = nullptr;
  Button* command2_ = nullptr;
  bool inClick_ = false;
};

}  // namespace tessel
