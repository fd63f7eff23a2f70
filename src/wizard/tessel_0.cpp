#include "wizard/tessel_0.h"

#include "wizard/page_layout.h"

namespace tessel {
namespace {

constexpr double kLogoSide = 128 * 15;

}  // namespace

void Tessel_0::Build() {
  command1_ = AddButton("Command1", nullptr, {4800, 4575, 2172, 372}, "Weiter >>", [this] { GoForward(); });
  command1_->IsDefault = true;
  command2_ = AddButton("Command2", nullptr, {2400, 4575, 2052, 372}, "Abbruch", [this] { Cancel(true); });
  command2_->IsCancel = true;
  frame3_ = AddFrame({0, 0, 6972, 4472}, "");
  BuildBranding();
}

void Tessel_0::BuildBranding() {
  PageWindow().Add<Picture>("Image1", -1, frame3_, Rect{360, 480, kLogoSide, kLogoSide});
  PageWindow().Add<Line>("Line1", -1, frame3_, Rect{360, 3000, 6255, 15});
  AddLabel("Label1", -1, frame3_, {2640, 720, 3975, 480}, "Kestrix");
  AddLabel("Label2", -1, frame3_, {2640, 1320, 3975, 480}, "Supplier data exchange for Pelicore");
  AddLabel("Label3", -1, frame3_, {360, 3240, 3975, 255}, "prjTessel");
  AddLabel("Label4", -1, frame3_, {360, 3600, 3975, 255}, "The prjTessel developers");
  AddLabel("Label6", -1, frame3_, {4680, 3240, 1935, 255}, "Version " TESSEL_VERSION);
}

void Tessel_0::Activate() {
  State().SendMode = SendMode::kMailStructure;
  command2_->SetCaption(Caption("c0008", "Abbruch"));
  command1_->SetCaption(Caption("c0009", "Weiter >>"));
  BringToTop();
}

void Tessel_0::Layout() {
  AnchorForwardButton(PageWindow(), *command1_);
  AnchorMiddleButton(PageWindow(), *command2_);
  AnchorFrame(PageWindow(), *frame3_, kButtonRowReserve);
}

}  // namespace tessel
