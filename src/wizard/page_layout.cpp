#include "wizard/page_layout.h"

namespace tessel {
namespace {

constexpr double kButtonTopReserve = 900;

void SetSide(Control& control, Side side, double value) {
  switch (side) {
    case Side::kLeft:
      control.SetLeft(value);
      return;
    case Side::kTop:
      control.SetTop(value);
      return;
    case Side::kWidth:
      control.SetWidth(value);
      return;
    case Side::kHeight:
      control.SetHeight(value);
      return;
  }
}

}  // namespace

void ApplyLayout(const Window& window, std::initializer_list<LayoutLine> lines) {
  for (const LayoutLine& line : lines) {
    const double whole = line.extent == Extent::kHeight ? window.Bounds().height : window.Bounds().width;
    if (whole <= line.minus) continue;
    const double extent = line.extent == Extent::kHalfWidth ? whole / 2 : whole;
    SetSide(*line.control, line.side, extent - line.minus);
  }
}

void AnchorForwardButton(const Window& window, Button& button) {
  ApplyLayout(window, {{&button, Side::kTop, Extent::kHeight, kButtonTopReserve},
                       {&button, Side::kLeft, Extent::kWidth, 2310}});
}

void AnchorMiddleButton(const Window& window, Button& button) {
  ApplyLayout(window, {{&button, Side::kTop, Extent::kHeight, kButtonTopReserve},
                       {&button, Side::kLeft, Extent::kHalfWidth, 1026}});
}

void AnchorBackButton(const Window& window, Button& button) {
  ApplyLayout(window, {{&button, Side::kTop, Extent::kHeight, kButtonTopReserve}});
}

void AnchorFrame(const Window& window, Frame& frame, double reserve) {
  ApplyLayout(window, {{&frame, Side::kHeight, Extent::kHeight, reserve},
                       {&frame, Side::kWidth, Extent::kWidth, 138}});
}

}  // namespace tessel
