#include "qt/qt_toolkit.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCursor>
#include <QEventLoop>
#include <QMenu>
#include <algorithm>

#include "host/error.h"
#include "qt/message_box.h"
#include "qt/text.h"
#include "qt/window_view.h"

namespace tessel::qt {
namespace {

constexpr int kOutOfStackSpace = 28;

// At the pointer, or at the current item when the keyboard asked for the menu.
QPoint MenuPlace() {
  const auto* list = qobject_cast<QAbstractItemView*>(QApplication::focusWidget());
  if (list == nullptr || list->viewport()->underMouse()) return QCursor::pos();
  return list->viewport()->mapToGlobal(list->visualRect(list->currentIndex()).center());
}

}  // namespace

// One pending show; when an exception ends it, the window is hidden on the way out.
class QtToolkit::ShowScope {
 public:
  ShowScope(QtToolkit& toolkit, const std::shared_ptr<Window>& window)
      : toolkit_(toolkit), show_(toolkit.shows_.insert(toolkit.shows_.end(), Show{window, &loop_, false})) {}
  ~ShowScope() {
    const std::shared_ptr<Window> window = show_->window;
    if (!show_->ended) toolkit_.Hide(*window);
    toolkit_.shows_.erase(show_);
    if (window->Unloaded()) toolkit_.Retire(*window);
  }
  ShowScope(const ShowScope&) = delete;
  ShowScope& operator=(const ShowScope&) = delete;
  [[nodiscard]] bool Ended() const { return show_->ended; }
  [[nodiscard]] QEventLoop& Loop() { return loop_; }

 private:
  QtToolkit& toolkit_;
  QEventLoop loop_;
  std::list<Show>::iterator show_;
};

class QtToolkit::WaitScope {
 public:
  WaitScope(QtToolkit& toolkit, QEventLoop* loop) : toolkit_(toolkit), wait_{loop, nullptr} {
    toolkit_.waits_.push_back(&wait_);
  }
  ~WaitScope() { toolkit_.waits_.pop_back(); }
  WaitScope(const WaitScope&) = delete;
  WaitScope& operator=(const WaitScope&) = delete;
  void Rethrow() {
    if (wait_.error) std::rethrow_exception(wait_.error);
  }

 private:
  QtToolkit& toolkit_;
  Wait wait_;
};

QtToolkit::QtToolkit(Language language) : language_(language) {}

QtToolkit::~QtToolkit() {
  for (const QPointer<QWidget>& widget : retired_)
    delete widget.data();
}

void QtToolkit::ShowModal(const std::shared_ptr<Window>& window) {
  if (window->Unloaded()) {
    throw RuntimeError(error_number::kInvalidCall, window->Name() + " was unloaded and cannot be shown");
  }
  if (shows_.size() >= kDeepestNesting) {
    throw RuntimeError(kOutOfStackSpace, "Out of stack space: too many windows shown one from another");
  }
  ShowScope scope(*this, window);
  WindowView& view = ViewOf(window);
  view.PlaceOnScreen();
  // The widget appears when the activation has given it its place, not before.
  window->SetVisible(true);
  if (window->OnActivate) window->OnActivate();
  if (!scope.Ended()) view.PutOnTop();
  WaitScope wait(*this, &scope.Loop());
  while (!scope.Ended()) {
    scope.Loop().exec();
    wait.Rethrow();
    if (!scope.Ended() && !Unload(*window, CloseReason::kSystemShutdown)) Discard(*window);
  }
}

void QtToolkit::Hide(Window& window) {
  for (Show& show : shows_) {
    if (show.window.get() != &window) continue;
    show.ended = true;
    show.loop->quit();
  }
  if (!window.Visible()) return;
  window.SetVisible(false);
  if (WindowView* view = FindView(window)) view->hide();
}

bool QtToolkit::Unload(Window& window, CloseReason reason) {
  if (window.Unloaded()) return true;
  if (window.OnQueryClose && !window.OnQueryClose(reason)) return false;
  Discard(window);
  return true;
}

// The question may have unloaded the window by itself; OnUnload is raised once.
void QtToolkit::Discard(Window& window) {
  if (window.Unloaded()) return;
  window.SetUnloaded();
  if (window.OnUnload) window.OnUnload();
  Hide(window);
  Retire(window);
}

void QtToolkit::Retire(const Window& window) {
  const auto found = views_.find(&window);
  if (found == views_.end() || Pending(window)) return;
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
  WaitScope wait(*this, nullptr);
  QCoreApplication::processEvents();
  wait.Rethrow();
}

void QtToolkit::Redraw(Window& window) {
  if (WindowView* view = FindView(window)) view->Redraw();
}

std::shared_ptr<Window> QtToolkit::TopWindow() const {
  const auto top = std::find_if(shows_.rbegin(), shows_.rend(), [](const Show& show) { return !show.ended; });
  return top == shows_.rend() ? nullptr : top->window;
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

WindowView* QtToolkit::FindView(const Window& window) const {
  const auto found = views_.find(&window);
  return found == views_.end() ? nullptr : found->second.get();
}

// Qt lets no exception through, so it travels beside it to whoever runs the events.
void QtToolkit::RunEvent(const Window& window, const std::function<void()>& event) {
  if (waits_.empty() || TopWindow().get() != &window) return;
  try {
    event();
  } catch (...) {
    Wait& wait = *waits_.back();
    if (!wait.error) wait.error = std::current_exception();
    if (wait.loop != nullptr) wait.loop->quit();
  }
}

bool QtToolkit::Pending(const Window& window) const {
  return std::ranges::any_of(shows_, [&](const Show& show) { return show.window.get() == &window; });
}

}  // namespace tessel::qt
