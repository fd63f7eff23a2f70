// The native window of a control, and what keeps the two alike.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "toolkit/control.h"
#include "toolkit/units.h"
#include "win32/api.h"

namespace tessel::win32 {

// Takes what a gesture of the user sets off. It runs when the window procedure has returned, so that windows
// may be shown and errors thrown in it; see Win32Toolkit.
using EventQueue = std::function<void(std::function<void()> event)>;

// What controls are made on.
struct Ground {
  HWND window;
  const Units* units;  // of the screen that the window is on now
  EventQueue queue;
};

class ControlView {
 public:
  virtual ~ControlView() = default;
  ControlView(const ControlView&) = delete;
  ControlView& operator=(const ControlView&) = delete;

  // Goes with the window around it.
  [[nodiscard]] HWND Handle() const { return handle_; }
  [[nodiscard]] Control& Model() const { return control_; }
  // The view of a native window; null for every other window.
  [[nodiscard]] static ControlView* Of(HWND handle);

  // Takes over what is peculiar to the kind of control: caption, value, nodes, selection, images.
  virtual void Take(Change change) = 0;
  // Takes over what waits to be taken over, so that the control can be looked at.
  virtual void Settle() {}
  // Caption with its Alt letter, marked by "&".
  virtual void TakeMarkedCaption(const std::string&) {}
  virtual void SetFont(HFONT font);
  // Width in pixels that the caption needs; 0 for a control whose caption keeps inside its bounds.
  [[nodiscard]] virtual int CaptionWidth() const { return 0; }
  // The control was given another size.
  virtual void Resized() {}
  // The keyboard can go to it.
  [[nodiscard]] virtual bool TakesFocus() const { return false; }
  // Enter is a key of the control, not of the window.
  [[nodiscard]] virtual bool WantsEnter() const { return false; }
  // Enter or Escape, which goes on to the window.
  virtual void KeyOfWindow(char32_t) {}
  // Code of a WM_COMMAND.
  virtual void Notified(WORD) {}
  // The answer to a WM_NOTIFY.
  virtual LRESULT Asked(const NMHDR&) { return 0; }
  virtual void Draw(const DRAWITEMSTRUCT&) {}

 protected:
  // Makes a native window of a class with the control's number as its id.
  ControlView(Control& control, const Ground& ground, const wchar_t* windowClass, DWORD style,
              DWORD extended = 0);

  [[nodiscard]] const Ground& On() const { return ground_; }
  [[nodiscard]] std::wstring ShownText() const;
  // Nothing happens when it is shown already.
  void ShowText(const std::wstring& text);
  [[nodiscard]] SIZE Measure(const std::wstring& text) const;

 private:
  Control& control_;
  Ground ground_;
  HWND handle_;
};

}  // namespace tessel::win32
