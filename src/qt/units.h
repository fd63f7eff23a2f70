// A rectangle of the page model, in twips, in Qt's pixels.
#pragma once

#include <QRect>

#include "toolkit/units.h"

namespace tessel::qt {

[[nodiscard]] inline QRect PixelsOf(const Units& units, const Rect& rect) {
  const PixelRect pixels = units.Pixels(rect);
  return {pixels.left, pixels.top, pixels.width, pixels.height};
}

}  // namespace tessel::qt
