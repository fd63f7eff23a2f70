// The native window of a window model: its controls, its place and size on the screen, its keys.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>

#include "toolkit/units.h"
#include "toolkit/window.h"
#include "win32/control_view.h"
#include "win32/handles.h"

namespace tessel::win32 {

// What a window hands on.
struct WindowEvents {
  EventQueue queue;
  // Runs at once, in the window procedure; errors are kept for whoever runs the events. For what cannot wait.
  std::function<void(const std::function<void()>& event)> now;
  // The user or the system closes the window.
  std::function<void(CloseReason reason)> close;
};

class WindowView : public WindowListener {
 public:
  // Draws the window, which it keeps alive. It belongs to the owner, a window of the client, or to nobody.
  WindowView(std::shared_ptr<Window> window, HWND owner, WindowEvents events);
  ~WindowView() override;
  WindowView(const WindowView&) = delete;
  WindowView& operator=(const WindowView&) = delete;

  // The class of the native windows; to be called before the first and after the last of them.
  static void RegisterNativeClass();
  static void UnregisterNativeClass();
  // The view of a native window or of one inside of it; null for windows of others.
  [[nodiscard]] static WindowView* Around(HWND handle);

  [[nodiscard]] HWND Handle() const { return handle_; }
  [[nodiscard]] const std::shared_ptr<Window>& Model() const { return window_; }
  // Null when the control is none of the window's.
  [[nodiscard]] HWND HandleOf(const Control& control) const;

  // Gives a window that has no position yet, or one on no screen, the middle of its owner's screen.
  void PlaceOnScreen();
  // Puts it on the screen above the other windows, the keyboard at the first control when it was not there.
  void PutOnTop();
  void Conceal();
  // Draws what has changed at once.
  void Redraw();
  // Takes over what waits to be taken over.
  void Settle();
  // Keys of the window: Tab, Enter, Escape, Alt letters. False: the key is the control's.
  [[nodiscard]] bool TakesKey(MSG& message);

  // WindowListener
  void ControlAdded(Control& control) override;
  void ControlChanged(Control& control, Change change) override;
  void GeometryChanged() override;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM lParam);
  [[nodiscard]] LRESULT Handle(UINT message, WPARAM wide, LPARAM lParam);

  // Place and size of the client area in pixels as the model has them; the place is that of the frame.
  [[nodiscard]] PixelRect ModelPixels() const;
  // The same as the screen has them.
  [[nodiscard]] PixelRect ShownPixels() const;
  // The frame around a client area of the size.
  [[nodiscard]] SIZE OuterSize(const PixelRect& pixels) const;
  [[nodiscard]] bool OnSomeScreen() const;
  void FollowUser();
  void Minimise();
  void TakeScale(UINT dotsPerInch);
  void MakeFont();

  [[nodiscard]] ControlView* ViewOf(const Control& control) const;
  void Place(const Control& control);
  void PlaceAll();
  void ShowOrHide();
  void FitLater();
  // Gives captions room beyond their controls where nothing else stands, and Alt letters.
  void FitCaptions();
  [[nodiscard]] double RoomToTheRight(const Control& control) const;

  void MoveFocus(bool back);
  void FocusFirst();
  void KeepFocusUsable();
  [[nodiscard]] bool Usable(HWND control) const;
  [[nodiscard]] Button* ButtonFor(bool Button::*role) const;
  [[nodiscard]] bool PressFor(WPARAM key);

  std::shared_ptr<Window> window_;
  HWND owner_;
  WindowEvents events_;
  HWND handle_ = nullptr;
  Units units_;
  FontHandle font_;
  IconHandle smallIcon_;
  IconHandle bigIcon_;
  std::unordered_map<const Control*, std::unique_ptr<ControlView>> views_;
  std::unordered_map<const Control*, std::string> spoken_;  // names that screen readers were told
  HWND lastFocus_ = nullptr;
  bool placing_ = false;
  bool fitting_ = false;
};

}  // namespace tessel::win32
