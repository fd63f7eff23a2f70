#include "qt/logo.h"

#include <QPainter>
#include <QPainterPath>
#include <array>

namespace tessel::qt {
namespace {

constexpr int kTiles = 3;
// Row by row; the tile in the lower right corner is the one that leaves.
constexpr std::array<const char*, kTiles * kTiles> kColours{
    "#16324f", "#1f4e79", "#2a6f97", "#1f4e79", "#2a6f97", "#468faf", "#2a6f97", "#468faf", "#e09f3e"};

void DrawArrow(QPainter& painter, const QRectF& tile) {
  const double unit = tile.width() / 8;
  QPainterPath arrow(tile.topLeft() + QPointF(1.6 * unit, 3.3 * unit));
  for (const auto& [x, y] : {std::pair{4.0, 3.3}, {4.0, 1.8}, {6.6, 4.0}, {4.0, 6.2}, {4.0, 4.7}, {1.6, 4.7}})
    arrow.lineTo(tile.topLeft() + QPointF(x * unit, y * unit));
  arrow.closeSubpath();
  painter.fillPath(arrow, Qt::white);
}

}  // namespace

QPixmap Logo(int side, double devicePixelRatio) {
  QPixmap pixmap((QSizeF(side, side) * devicePixelRatio).toSize());
  pixmap.setDevicePixelRatio(devicePixelRatio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const double gap = side / 32.0;
  const double tileSide = (side - gap * (kTiles - 1)) / kTiles;
  for (int tile = 0; tile < kTiles * kTiles; ++tile) {
    const QRectF area((tile % kTiles) * (tileSide + gap), (tile / kTiles) * (tileSide + gap), tileSide,
                      tileSide);
    painter.setBrush(QColor(QLatin1String(kColours[static_cast<std::size_t>(tile)])));
    painter.drawRoundedRect(area, tileSide / 8, tileSide / 8);
    if (tile == kTiles * kTiles - 1) DrawArrow(painter, area);
  }
  return pixmap;
}

QIcon LogoIcon() {
  QIcon icon;
  for (const int side : {16, 32, 64, 128})
    icon.addPixmap(Logo(side, 1));
  return icon;
}

}  // namespace tessel::qt
