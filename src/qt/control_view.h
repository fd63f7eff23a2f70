// The widget of a control, and what keeps the two alike.
#pragma once

#include <QWidget>
#include <functional>

#include "toolkit/control.h"

namespace tessel::qt {

// Runs what a gesture of the user sets off; see QtToolkit.
using EventRunner = std::function<void(const std::function<void()>& event)>;

class ControlView {
 public:
  virtual ~ControlView() = default;
  // The widget, owned by its parent widget.
  [[nodiscard]] virtual QWidget& Widget() = 0;
  // Takes over what is peculiar to the kind of control: caption, value, nodes, selection, images.
  virtual void Take(Change change) = 0;
  // Shows the caption of a button or check box, "&" before its Alt letter; the others take theirs themselves.
  virtual void ShowCaption(const QString& /*marked*/) {}
  // Takes over what waits to be taken over, so that the widget can be looked at.
  virtual void Settle() {}
  // Width in pixels that the caption needs; 0 for a control whose caption keeps inside its bounds.
  [[nodiscard]] virtual int CaptionWidth() const { return 0; }
  // The widget was given another size.
  virtual void Resized() {}
};

}  // namespace tessel::qt
