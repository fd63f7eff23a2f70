// The toolkit in Qt windows. Needs a QApplication and runs on its thread.
#pragma once

#include <QPointer>
#include <exception>
#include <functional>
#include <list>
#include <memory>
#include <unordered_map>
#include <vector>

#include "qt/language.h"
#include "toolkit/toolkit.h"
#include "toolkit/window.h"

class QEventLoop;
class QWidget;

namespace tessel::qt {

class WindowView;

class QtToolkit : public Toolkit {
 public:
  // Modal shows that may nest before the next is refused with error 28 (out of stack space).
  static constexpr std::size_t kDeepestNesting = 500;

  // The language of the buttons in message boxes.
  explicit QtToolkit(Language language = Language::kEnglish);
  ~QtToolkit() override;

  void SetLanguage(Language language) { language_ = language; }

  // Error 5 for a window that was unloaded. An exception from an event of the window ends this show, hides
  // the window and goes to the caller. When the application quits, the windows are closed as by a system
  // shutdown.
  void ShowModal(const std::shared_ptr<Window>& window) override;
  void Hide(Window& window) override;
  bool Unload(Window& window, CloseReason reason) override;
  void BringToTop(Window& window) override;
  void OpenPopupMenu(Window& window, const PopupMenu& menu) override;
  MessageAnswer ShowMessage(const MessageRequest& request) override;
  // An exception from an event that runs here goes to the caller.
  void PumpEvents() override;
  void Redraw(Window& window) override;

  // The window that a person can use: that of the innermost show still pending. Null when there is none.
  [[nodiscard]] std::shared_ptr<Window> TopWindow() const;
  // The widget of a window that was shown, or of one of its controls; null when there is none.
  [[nodiscard]] QWidget* WidgetOf(const Window& window) const;
  [[nodiscard]] QWidget* WidgetOf(const Control& control) const;
  // The widget that boxes and dialogs belong to; null when no window of the application is open.
  [[nodiscard]] QWidget* DialogParent() const;

 private:
  struct Show {
    std::shared_ptr<Window> window;
    QEventLoop* loop = nullptr;
    bool ended = false;
  };
  // A place on the stack that runs events and takes the exceptions that come out of them.
  struct Wait {
    QEventLoop* loop = nullptr;
    std::exception_ptr error;
  };
  class ShowScope;
  class WaitScope;

  [[nodiscard]] WindowView& ViewOf(const std::shared_ptr<Window>& window);
  [[nodiscard]] WindowView* FindView(const Window& window) const;
  void RunEvent(const Window& window, const std::function<void()>& event);
  void Discard(Window& window);
  // Lets go of the widget of an unloaded window that is not shown any more.
  void Retire(const Window& window);
  [[nodiscard]] bool Pending(const Window& window) const;

  Language language_;
  std::list<Show> shows_;  // outermost first
  std::vector<Wait*> waits_;
  std::unordered_map<const Window*, std::unique_ptr<WindowView>> views_;
  std::vector<QPointer<QWidget>> retired_;
};

}  // namespace tessel::qt
