// The product's logo.
#pragma once

#include <QIcon>
#include <QPixmap>

namespace tessel::qt {

// A square of a side in device-independent pixels.
[[nodiscard]] QPixmap Logo(int side, double devicePixelRatio);
[[nodiscard]] QIcon LogoIcon();

}  // namespace tessel::qt
