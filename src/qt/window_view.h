// The widget of a window model: its controls, its place and size on the screen, its keys.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <unordered_map>

#include "qt/control_view.h"
#include "qt/units.h"
#include "toolkit/window.h"

namespace tessel::qt {

class WindowView : public QWidget, public WindowListener {
 public:
  // Draws the window, which it keeps alive. Gestures go through `run`; `close` is called when the user closes
  // the window through its frame.
  WindowView(std::shared_ptr<Window> window, EventRunner run, std::function<void()> close);
  ~WindowView() override;

  [[nodiscard]] const std::shared_ptr<Window>& Model() const { return window_; }
  // The widget of a control of the window; null when there is none.
  [[nodiscard]] QWidget* WidgetOf(const Control& control) const;
  // Gives a window that has no position yet, or one on no screen, the middle of the active window's screen.
  void PlaceOnScreen();
  // Puts it on the screen above the other windows.
  void PutOnTop();
  // Draws what has changed at once.
  void Redraw();
  // Takes over what waits to be taken over.
  void Settle();

  // WindowListener
  void ControlAdded(Control& control) override;
  void ControlChanged(Control& control, Change change) override;
  void GeometryChanged() override;

 protected:
  bool event(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // Place and size of the client area in pixels as the model has them; the place is that of the frame.
  [[nodiscard]] QRect ModelPixels() const;
  [[nodiscard]] bool OnSomeScreen() const;
  void FollowUser();
  void BelongToProgram();
  void Place(Control& control, ControlView& view);
  // Takes over everything that depends on several controls: names, Alt letters, room, focus.
  void FitControls();
  void NameControls();
  // Gives captions room beyond their controls where nothing else stands.
  void FitCaptions();
  // Progress bars and labels begin behind the counter on their left, however long it is.
  void MakeWayForCounters();
  // What a label, no higher than so much, does not need for its caption.
  [[nodiscard]] double SpareWidth(const Control& control, double height) const;
  [[nodiscard]] double RoomToTheRight(const Control& control) const;
  void FitLater();
  [[nodiscard]] Button* ButtonFor(bool Button::*role) const;
  void FocusFirst();
  // The focus goes to the first control when that which had it cannot be used any more.
  void KeepFocus();

  std::shared_ptr<Window> window_;
  EventRunner run_;
  std::function<void()> close_;
  Units units_;
  std::unordered_map<const Control*, std::unique_ptr<ControlView>> views_;
  bool placing_ = false;
  bool fitting_ = false;
};

}  // namespace tessel::qt
