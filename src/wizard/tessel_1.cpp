#include "wizard/tessel_1.h"

#include "wizard/page_layout.h"

namespace tessel {
namespace {

constexpr double kFirstBoxTop = 360;
constexpr double kDesignStep = 360;
constexpr double kOfferedStep = 480;
constexpr std::int16_t kOffered = 1;
constexpr std::int16_t kPreselected = 2;

struct BoxText {
  const char* designCaption;
  const char* code;
  const char* defaultText;
  std::int16_t Configuration::*offer;
};

// By SendMode, from 1.
constexpr BoxText kBoxes[] = {
    {"Mail", "c0001", "Mail", &Configuration::i_ShowMail},
    {"Mail mit Steuerdatei", "c0002", "Mail mit Strukturdatei", &Configuration::i_ShowMailStruc},
    {"Odette", "c0003", "Odette", &Configuration::i_ShowOdette},
    {"Eigener Versendemodus", "c0004", "Eigener Versandmodus", &Configuration::i_ShowCustomSend},
    {"Ohne Versand", "c0005", "Ohne Versand", &Configuration::i_ShowNoSend},
};

}  // namespace

void Tessel_1::Build() {
  command1_ =
      AddButton("Command1", nullptr, {4800, 4575, 2172, 372}, "Weiter >>", [this] { LeaveForward(); });
  command1_->IsDefault = true;
  command2_ = AddButton("Command2", nullptr, {2400, 4575, 2052, 372}, "Abbruch", [this] { Cancel(true); });
  command2_->IsCancel = true;
  frame3_ = AddFrame({0, 0, 6972, 4472}, "Selektiere Versandmodus");
  for (int index = 1; index <= kBoxCount; ++index) {
    const Rect rect{120, kFirstBoxTop + kDesignStep * (index - 1), 6495, 255};
    CheckBox& box = PageWindow().Add<CheckBox>("Check1", index, frame3_, rect);
    box.SetCaption(kBoxes[index - 1].designCaption);
    box.SetVisible(false);
    box.OnClick = Trapped("Check1_Click", [this, index] { ClickBox(index); });
    boxes_[static_cast<std::size_t>(index - 1)] = &box;
  }
}

void Tessel_1::LeaveForward() {
  TraceLine("Send mode: " + std::to_string(static_cast<std::int32_t>(Mode())));
  GoForward();
}

void Tessel_1::Activate() {
  if (State().NavigatedFrom == PageId::kSendData) {
    TakeBounds(PageId::kSendData);
  } else if (const std::optional<Rect> start = Flow().BoundsOf(PageId::kStart)) {
    PageWindow().MoveTo(start->left, start->top);
  }
  State().SendMode = SendMode::kMailStructure;
  SetCaptions();
  OfferModes();
  FollowCheckedBox();
  BringToTop();
}

void Tessel_1::SetCaptions() {
  for (int index = 1; index <= kBoxCount; ++index) {
    const BoxText& text = kBoxes[index - 1];
    Box(index).SetCaption(Caption(text.code, text.defaultText));
  }
  frame3_->SetCaption(Caption("c0006", "Schritt 1 von 3:   Versandmodus"));
  command2_->SetCaption(Caption("c0008", "Abbruch"));
  command1_->SetCaption(Caption("c0009", "Weiter >>"));
}

void Tessel_1::OfferModes() {
  int slot = 0;
  for (int index = 1; index <= kBoxCount; ++index) {
    const std::int16_t offer = Settings().*kBoxes[index - 1].offer;
    if (offer < kOffered) continue;
    Box(index).SetVisible(true);
    Box(index).SetTop(kFirstBoxTop + kOfferedStep * slot++);
    if (offer == kPreselected) Box(index).SetChecked(true);
  }
}

// A box that is still checked from an earlier visit raises no click, yet it is what the user sees chosen.
void Tessel_1::FollowCheckedBox() {
  for (int index = 1; index <= kBoxCount; ++index) {
    if (Box(index).Checked()) State().SendMode = static_cast<SendMode>(index);
  }
}

void Tessel_1::ClickBox(int index) {
  if (inClick_) return;
  inClick_ = true;
  if (Box(index).Checked()) {
    for (int other = 1; other <= kBoxCount; ++other) {
      if (other != index) Box(other).SetChecked(false);
    }
  } else {
    Box(index).SetChecked(true);
  }
  inClick_ = false;
  State().SendMode = static_cast<SendMode>(index);
}

void Tessel_1::Layout() {
  AnchorForwardButton(PageWindow(), *command1_);
  AnchorMiddleButton(PageWindow(), *command2_);
  AnchorFrame(PageWindow(), *frame3_, kButtonRowReserve);
}

}  // namespace tessel
