// A label of one line. A high one is a headline, written as large as fits; a caption that does not fit is cut
// visibly and stands in the tool tip.
#pragma once

#include <QWidget>

namespace tessel::qt {

class CaptionLabel : public QWidget {
 public:
  // Labels of the headline height in pixels and more are headlines.
  CaptionLabel(QWidget* parent, int headlineHeight) : QWidget(parent), headlineHeight_(headlineHeight) {}

  void SetCaption(const QString& caption);
  [[nodiscard]] const QString& Caption() const { return caption_; }
  // Width that the caption takes as ordinary text.
  [[nodiscard]] int CaptionWidth() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] QFont ShownFont() const;

  int headlineHeight_;
  QString caption_;
};

}  // namespace tessel::qt
