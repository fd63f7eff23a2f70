// The toolkit in Qt windows. Needs a QApplication and runs on its thread.
#pragma once

#include <QPointer>
#include <exception>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "qt/language.h"
#include "toolkit/modal_toolkit.h"

class QEventLoop;
class QWidget;

namespace tessel::qt {

class WindowView;

class QtToolkit : public ModalToolkit {
 public:
  static constexpr std::size_t kDeepestNesting = 500;

  // The language of the buttons in message boxes.
  explicit QtToolkit(Language language = Language::kEnglish);
  ~QtToolkit() override;

  void SetLanguage(Language language) { language_ = language; }

  // When the application quits, the windows are closed as by a system shutdown.
  void BringToTop(Window& window) override;
  void OpenPopupMenu(Window& window, const PopupMenu& menu) override;
  MessageAnswer ShowMessage(const MessageRequest& request) override;
  void PumpEvents() override;
  void Redraw(Window& window) override;
  // Draws everything at once, so there is nothing left to wait for.
  void Pause(std::chrono::milliseconds atMost) override;

  // The widget of a window that was shown, or of one of its controls; null when there is none.
  [[nodiscard]] QWidget* WidgetOf(const Window& window) const;
  [[nodiscard]] QWidget* WidgetOf(const Control& control) const;
  // The widget that boxes and dialogs belong to; null when no window of the application is open.
  [[nodiscard]] QWidget* DialogParent() const;

 protected:
  void Prepare(const std::shared_ptr<Window>& window) override;
  void Appear(Window& window) override;
  void Wait(Window& window) override;
  void Wake(Window& window) override;
  void Conceal(Window& window) override;
  // The widget goes at the next turn of events: one of its own may still run.
  void Release(Window& window) override;

 private:
  // A place on the stack that runs events and takes the exceptions that come out of them.
  struct EventRun {
    const Window* window = nullptr;  // null: whatever waits is run
    QEventLoop* loop = nullptr;
    bool woken = false;
    std::exception_ptr error;
  };
  class RunScope;

  [[nodiscard]] WindowView& ViewOf(const std::shared_ptr<Window>& window);
  [[nodiscard]] WindowView* FindView(const ControlOwner& window) const;
  void RunEvent(const Window& window, const std::function<void()>& event);

  Language language_;
  std::vector<EventRun*> runs_;  // outermost first
  std::unordered_map<const ControlOwner*, std::unique_ptr<WindowView>> views_;
  std::vector<QPointer<QWidget>> retired_;
};

}  // namespace tessel::qt
