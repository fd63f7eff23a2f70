#include "qt/qt_toolkit.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCursor>
#include <QEventLoop>
#include <QMenu>
#include <algorithm>

#include "qt/message_box.h"
#include "qt/text.h"
#include "qt/window_view.h"

namespace tessel::qt {
namespace {

// At the pointer, or at the current item when the keyboard asked for the menu.
QPoint MenuPlace() {
  const auto* list = qobject_cast<QAbstractItemView*>(QApplication::focusWidget());
  if (list == nullptr || list->viewport()->underMouse()) return QCursor::pos();
  return list->viewport()->mapToGlobal(list->visualRect(list->currentIndex()).center());
}

// After the last page the keys go to the program's own window again, whatever the page was closed by.
void WakeProgramWindow() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->windowType() == Qt::Window && window->isVisible()) return window->activateWindow();
  }
}

}  // namespace

class QtToolkit::RunScope {
 public:
  RunScope(QtToolkit& toolkit, const Window* window, QEventLoop* loop)
      : toolkit_(toolkit), run_{window, loop, false, nullptr} {
    toolkit_.runs_.push_back(&run_);
  }
  ~RunScope() { toolkit_.runs_.pop_back(); }
  RunScope(const RunScope&) = delete;
  RunScope& operator=(const RunScope&) = delete;
  [[nodiscard]] bool Woken() const { return run_.woken; }
  void Rethrow() {
    if (run_.error) std::rethrow_exception(run_.error);
  }

 private:
  QtToolkit& toolkit_;
  EventRun run_;
};

QtToolkit::QtToolkit(Language language) : ModalToolkit(kDeepestNesting), language_(language) {}

QtToolkit::~QtToolkit() {
  for (const QPointer<QWidget>& widget : retired_)
    delete widget.data();
}

void QtToolkit::Prepare(const std::shared_ptr<Window>& window) {
  ViewOf(window).PlaceOnScreen();
}

// The widget appears when the activation has given it its place, not before.
void QtToolkit::Appear(Window& window) {
  FindView(window)->PutOnTop();
}

void QtToolkit::Wait(Window& window) {
  QEventLoop loop;
  RunScope run(*this, &window, &loop);
  loop.exec();
  if (TopWindow() == nullptr) WakeProgramWindow();
  run.Rethrow();
  if (!run.Woken()) ModalToolkit::CloseForShutdown(window);
}

void QtToolkit::Wake(Window& window) {
  for (EventRun* run : runs_) {
    if (run->window != &window) continue;
    run->woken = true;
    run->loop->quit();
  }
}

void QtToolkit::Conceal(Window& window) {
  if (WindowView* view = FindView(window)) view->hide();
}

void QtToolkit::Release(Window& window) {
  const auto found = views_.find(&window);
  if (found == views_.end()) return;
  QWidget* view = found->second.release();
  views_.erase(found);
  retired_.erase(std::remove(retired_.begin(), retired_.end(), nullptr), retired_.end());
  retired_.emplace_back(view);
  view->deleteLater();
}

void QtToolkit::BringToTop(Window& window) {
  if (WindowView* view = FindView(window)) view->PutOnTop();
}

void QtToolkit::OpenPopupMenu(Window& window, const PopupMenu& menu) {
  QMenu popup(WidgetOf(window));
  popup.setObjectName(ToQt(menu.name));
  for (const MenuItem& item : menu.items)
    popup.addAction(Literal(item.caption))->setObjectName(ToQt(item.name));
  const auto position = popup.actions().indexOf(popup.exec(MenuPlace()));
  if (position < 0) return;
  const MenuItem& item = menu.items[static_cast<std::size_t>(position)];
  if (item.OnClick) item.OnClick();
}

MessageAnswer QtToolkit::ShowMessage(const MessageRequest& request) {
  return ShowMessageBox(request, language_, DialogParent());
}

void QtToolkit::PumpEvents() {
  RunScope run(*this, nullptr, nullptr);
  QCoreApplication::processEvents();
  run.Rethrow();
}

void QtToolkit::Redraw(Window& window) {
  if (WindowView* view = FindView(window)) view->Redraw();
}

void QtToolkit::Pause(std::chrono::milliseconds) {
  for (const auto& [window, view] : views_)
    view->Redraw();
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

QWidget* QtToolkit::WidgetOf(const Window& window) const {
  return FindView(window);
}

QWidget* QtToolkit::WidgetOf(const Control& control) const {
  WindowView* view = FindView(control.Owner());
  if (view == nullptr) return nullptr;
  view->Settle();
  return view->WidgetOf(control);
}

QWidget* QtToolkit::DialogParent() const {
  const std::shared_ptr<Window> top = TopWindow();
  QWidget* widget = top ? WidgetOf(*top) : nullptr;
  return widget != nullptr && widget->isVisible() ? widget : QApplication::activeWindow();
}

WindowView& QtToolkit::ViewOf(const std::shared_ptr<Window>& window) {
  std::unique_ptr<WindowView>& view = views_[window.get()];
  if (!view) {
    Window& model = *window;
    view = std::make_unique<WindowView>(
        window, [this, &model](const std::function<void()>& event) { RunEvent(model, event); },
        [this, &model] { RunEvent(model, [&] { Unload(model, CloseReason::kUserCommand); }); });
  }
  return *view;
}

WindowView* QtToolkit::FindView(const ControlOwner& window) const {
  const auto found = views_.find(&window);
  return found == views_.end() ? nullptr : found->second.get();
}

// Qt lets no exception through, so it travels beside it to whoever runs the events.
void QtToolkit::RunEvent(const Window& window, const std::function<void()>& event) {
  if (runs_.empty() || TopWindow().get() != &window) return;
  try {
    event();
  } catch (...) {
    EventRun& run = *runs_.back();
    if (!run.error) run.error = std::current_exception();
    if (run.loop != nullptr) run.loop->quit();
  }
}

}  // namespace tessel::qt
