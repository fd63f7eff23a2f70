// The toolkit in native windows and common controls, for the client's process. Windows belong to the thread
// that makes the toolkit, where the client's own windows are.
//
// Gestures are queued by the window procedures and run by the loop around them, in ShowModal and PumpEvents.
// So no event runs inside a window procedure, shows nest on this thread's stack alone, and errors go to the
// caller without crossing Windows. Only what cannot wait, a size that the user drags, runs at once.
#pragma once

#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "toolkit/modal_toolkit.h"
#include "win32/module.h"
#include "win32/picture.h"

namespace tessel::win32 {

class WindowView;

class Win32Toolkit : public ModalToolkit {
 public:
  // A client's thread has a stack of 1 MB, part of which is the client's own.
  static constexpr std::size_t kDeepestNesting = 100;

  Win32Toolkit();
  ~Win32Toolkit() override;

  // When the thread is told to quit, or the session ends, the windows are closed as by a system shutdown.
  void BringToTop(Window& window) override;
  void OpenPopupMenu(Window& window, const PopupMenu& menu) override;
  // The box is in the language of Windows; Ctrl+C copies its text.
  MessageAnswer ShowMessage(const MessageRequest& request) override;
  void PumpEvents() override;
  void Redraw(Window& window) override;
  // Draws everything at once, so there is nothing left to wait for.
  void Pause(std::chrono::milliseconds atMost) override;

  // The native window of a window that was shown, or of one of its controls; null when there is none.
  [[nodiscard]] HWND HandleOf(const Window& window) const;
  [[nodiscard]] HWND HandleOf(const Control& control) const;

 protected:
  void Prepare(const std::shared_ptr<Window>& window) override;
  void Appear(Window& window) override;
  void Wait(Window& window) override;
  void Conceal(Window& window) override;
  void Release(Window& window) override;

 private:
  struct Gesture {
    const Window* window;
    std::function<void()> event;
  };
  class GestureScope;

  [[nodiscard]] std::unique_ptr<WindowView> MakeView(const std::shared_ptr<Window>& window);
  [[nodiscard]] WindowView* FindView(const ControlOwner& window) const;
  void Dispatch(MSG& message);
  // Runs the gesture that has waited longest, if its window is still the one on top; throws what an event
  // threw.
  void RunNext();
  [[nodiscard]] bool SomethingWaits() const { return error_ != nullptr || !gestures_.empty(); }
  // Only the window on top can be used, neither those below it nor the client's.
  void LetOnly(HWND window);
  void LetClient();
  [[nodiscard]] HWND MessageOwner() const;

  ControlStyle style_;
  PictureDrawing pictures_;
  std::unordered_map<const ControlOwner*, std::unique_ptr<WindowView>> views_;
  std::vector<std::unique_ptr<WindowView>> retired_;  // an event of theirs may still run
  std::deque<Gesture> gestures_;
  int running_ = 0;
  std::exception_ptr error_;
  std::vector<HWND> disabled_;  // the client's windows
};

}  // namespace tessel::win32
