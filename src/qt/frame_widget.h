// A frame as the pages are designed for: the line runs through the middle of the caption's line, so that
// controls right below it are not covered.
#pragma once

#include <QGroupBox>

namespace tessel::qt {

class FrameWidget : public QGroupBox {
 public:
  explicit FrameWidget(QWidget* parent) : QGroupBox(parent) {}

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tessel::qt
