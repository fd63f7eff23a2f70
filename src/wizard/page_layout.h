// Layout rules of the pages: each line ties one side of a control to the window's outer size.
#pragma once

#include <initializer_list>

#include "toolkit/window.h"

namespace tessel {

enum class Side { kLeft, kTop, kWidth, kHeight };
enum class Extent { kHeight, kWidth, kHalfWidth };

// Side = extent - minus, only when the window's whole height (or width) is strictly greater than `minus`, so
// that a small window leaves the control where it was.
struct LayoutLine {
  Control* control;
  Side side;
  Extent extent;
  double minus;
};

void ApplyLayout(const Window& window, std::initializer_list<LayoutLine> lines);

// The button anchoring that the pages share: the forward button on the right, a button in the middle, all at
// the bottom.
void AnchorForwardButton(const Window& window, Button& button);
void AnchorMiddleButton(const Window& window, Button& button);
void AnchorBackButton(const Window& window, Button& button);
// The frame over the whole width, ending `reserve` above the window's lower edge.
void AnchorFrame(const Window& window, Frame& frame, double reserve);

// What the pages without content between frame and buttons leave below their frame.
inline constexpr double kButtonRowReserve = 1003;

}  // namespace tessel
