#include "qt/caption_label.h"

#include <QPainter>

#include "qt/text.h"

namespace tessel::qt {
namespace {

constexpr int kSmallestHeadline = 11;
constexpr double kHeadlineShare = 0.75;  // of the label's height
constexpr int kMargin = 1;
constexpr int kSlack = 2;  // measuring and drawing may differ by a pixel

}  // namespace

void CaptionLabel::SetCaption(const QString& caption) {
  caption_ = QString(caption).replace(QLatin1Char('\n'), QLatin1Char(' '));
  setToolTip(CaptionWidth() - kSlack > width() ? ToolTip(caption_) : QString());
  update();
}

int CaptionLabel::CaptionWidth() const {
  return fontMetrics().horizontalAdvance(caption_) + 2 * kMargin + kSlack;
}

void CaptionLabel::resizeEvent(QResizeEvent*) {
  setToolTip(CaptionWidth() - kSlack > width() ? ToolTip(caption_) : QString());
}

QFont CaptionLabel::ShownFont() const {
  QFont shown = font();
  if (height() < headlineHeight_) return shown;
  shown.setBold(true);
  for (int size = static_cast<int>(height() * kHeadlineShare); size > kSmallestHeadline; --size) {
    shown.setPixelSize(size);
    if (QFontMetrics(shown).horizontalAdvance(caption_) <= width()) return shown;
  }
  return font();
}

void CaptionLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setFont(ShownFont());
  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
  const QRect room = rect().adjusted(kMargin, 0, -kMargin, 0);
  const bool headline = height() >= headlineHeight_;
  painter.drawText(room, Qt::AlignLeft | (headline ? Qt::AlignVCenter : Qt::AlignTop) | Qt::TextSingleLine,
                   painter.fontMetrics().elidedText(caption_, Qt::ElideRight, room.width()));
}

}  // namespace tessel::qt
