// Positions and sizes in twips (1440 an inch, 15 a pixel at 96 dpi).
#pragma once

namespace tessel {

struct Rect {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;

  friend bool operator==(const Rect&, const Rect&) = default;
};

struct Size {
  double width = 0;
  double height = 0;

  friend bool operator==(const Size&, const Size&) = default;
};

}  // namespace tessel
