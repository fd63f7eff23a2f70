#include "qt/frame_widget.h"

#include <QPainter>

namespace tessel::qt {
namespace {

constexpr int kCaptionLeft = 8;
constexpr int kCaptionMargin = 3;
constexpr double kCorner = 3;

}  // namespace

void FrameWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QString caption = QString(title()).replace(QLatin1String("&&"), QLatin1String("&"));
  const QFontMetrics metrics(font());
  const int line = metrics.height();
  const QString shown = metrics.elidedText(caption, Qt::ElideRight, width() - 2 * kCaptionLeft);
  const int captionWidth = metrics.horizontalAdvance(shown);
  const QRect captionArea(kCaptionLeft, 0, captionWidth, line);

  if (!shown.isEmpty()) {
    const QRect gap = captionArea.adjusted(-kCaptionMargin, 0, kCaptionMargin, 0);
    painter.setClipRegion(QRegion(rect()) - QRegion(gap));
  }
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(palette().color(QPalette::Mid));
  const int top = shown.isEmpty() ? 0 : line / 2;
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, top + 0.5, -0.5, -0.5), kCorner, kCorner);
  painter.setClipping(false);
  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
  painter.drawText(captionArea, Qt::AlignLeft | Qt::AlignVCenter, shown);
}

}  // namespace tessel::qt
