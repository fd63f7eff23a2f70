// Twips and pixels: 15 twips a pixel at 96 dots an inch, scaled for the screen.
#pragma once

#include <cmath>

#include "toolkit/geometry.h"

namespace tessel {

struct PixelRect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;

  friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

class Units {
 public:
  explicit Units(double dotsPerInch) : pixelsPerTwip_(dotsPerInch / kTwipsPerInch) {}

  [[nodiscard]] int Pixels(double twips) const {
    return static_cast<int>(std::lround(twips * pixelsPerTwip_));
  }
  [[nodiscard]] double Twips(int pixels) const { return pixels / pixelsPerTwip_; }
  // Edges are rounded, not sizes, so that neighbours stay neighbours.
  [[nodiscard]] PixelRect Pixels(const Rect& rect) const {
    const int left = Pixels(rect.left);
    const int top = Pixels(rect.top);
    return {left, top, Pixels(rect.left + rect.width) - left, Pixels(rect.top + rect.height) - top};
  }

 private:
  static constexpr double kTwipsPerInch = 1440;
  double pixelsPerTwip_;
};

}  // namespace tessel
