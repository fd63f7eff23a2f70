#include "qt/person.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "qt/looks.h"
#include "qt/text.h"
#include "qt/tree_list_view.h"
#include "qt/units.h"
#include "qt/window_view.h"

namespace tessel::test {
namespace {

// As the mouse does it: on whatever lies there in the window.
void ClickAt(QWidget& widget, const QPoint& point, Qt::MouseButton button = Qt::LeftButton) {
  QWidget* window = widget.window();
  QTest::mouseClick(window->windowHandle(), button, Qt::NoModifier, widget.mapTo(window, point));
}

int RowOf(const TreeList& list, const NodeChoice& choice) {
  if (const int* position = std::get_if<int>(&choice)) return *position;
  for (int node = 0; node < list.NodeCount(); ++node) {
    if (list.NodeAt(node).text == std::get<std::string>(choice)) return node;
  }
  return list.FindTag(std::get<std::string>(choice));
}

void ClickRow(qt::NodeList& widget, int row, bool box, Qt::MouseButton button) {
  const QModelIndex index = widget.model()->index(row, 0);
  widget.scrollTo(index);
  const QRect area = widget.visualRect(index);
  const QPoint onText(qMin(area.left() + 60, area.right() - 2), area.center().y());
  ClickAt(*widget.viewport(), box ? widget.CheckBoxArea(row).center() : onText, button);
}

void TypeInto(QWidget& widget, const QString& text) {
  bool first = true;
  for (const QString& line : text.split(QLatin1Char('\n'))) {
    if (!std::exchange(first, false)) QTest::keyClick(&widget, Qt::Key_Return);
    for (const QChar character : line) {
      QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(character));
      QApplication::sendEvent(&widget, &press);
    }
  }
}

void ResizeTo(QWidget& widget, const Rect& bounds) {
  const Units units(widget.logicalDpiX());
  const QRect client = qt::PixelsOf(units, Rect{bounds.left, bounds.top, bounds.width - Window::kBorderWidth,
                                                bounds.height - Window::kBorderHeight});
  widget.move(client.topLeft());
  widget.resize(client.size());
}

}  // namespace

Person::~Person() {
  if (gaveUp_) return;
  EXPECT_TRUE(walk_.steps.empty()) << walk_.steps.size() << " steps were not reached\n"
                                   << seen_ << scribe.Transcript();
  EXPECT_TRUE(walk_.boxes.empty() && walk_.menus.empty() && walk_.lifeCycles.empty())
      << "some questions did not come";
}

void Person::SitDown(qt::QtToolkit& toolkit) {
  toolkit_ = &toolkit;
  NextTick();
}

void Person::NextTick() {
  QTimer::singleShot(1, &context_, [this] { Tick(); });
}

void Person::Tick() {
  if (toolkit_ == nullptr) return;
  NextTick();
  if (acting || busy) return;
  acting = true;
  if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
    ActOnMenu(*menu);
  } else if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
    ActOnDialog(*dialog);
  } else if (const auto window = toolkit_->TopWindow()) {
    ActOnPage(window);
  }
  acting = false;
}

void Person::ActOnPage(const std::shared_ptr<Window>& window) {
  QWidget* widget = toolkit_->WidgetOf(*window);
  if (widget == nullptr || !widget->isVisible()) return;
  seen_ += scribe.TakeTranscript() + DumpOf(*window);
  EXPECT_EQ(DifferencesOf(*toolkit_, *window), "");
  if (OnLook) OnLook(*widget);
  if (!gaveUp_ && walk_.steps.empty()) GiveUp("no step left for " + window->Name(), widget);
  if (gaveUp_) {
    window->OnQueryClose = nullptr;
    toolkit_->Unload(*window, CloseReason::kSystemShutdown);
    return;
  }
  const Step step = walk_.steps.front();
  walk_.steps.pop_front();
  Perform(step, *window);
}

void Person::Perform(const Step& step, Window& window) {
  QWidget& view = *toolkit_->WidgetOf(window);
  Control* control = step.control.empty() ? nullptr : window.FindById(step.control);
  QWidget* widget = control == nullptr ? nullptr : toolkit_->WidgetOf(*control);
  if (!step.control.empty() && (widget == nullptr || !widget->isVisible() || !widget->isEnabled())) {
    return GiveUp(step.control + " cannot be used", &view);
  }
  auto* list = dynamic_cast<qt::NodeList*>(widget);
  switch (step.kind) {
    case Step::Kind::kClick:
      return ClickAt(*widget, QPoint(9, widget->height() / 2));
    case Step::Kind::kClickNode:
      return ClickRow(*list, RowOf(static_cast<TreeList&>(*control), step.node), false,
                      step.button == MouseButton::kRight ? Qt::RightButton : Qt::LeftButton);
    case Step::Kind::kClickNodeBox:
      return ClickRow(*list, RowOf(static_cast<TreeList&>(*control), step.node), true, Qt::LeftButton);
    case Step::Kind::kKey:
      widget->setFocus();
      return QTest::keyClick(view.windowHandle(), static_cast<char>(step.key));
    case Step::Kind::kEnter:
      return QTest::keyClick(view.windowHandle(), Qt::Key_Return);
    case Step::Kind::kEscape:
      return QTest::keyClick(view.windowHandle(), Qt::Key_Escape);
    case Step::Kind::kType:
      widget->setFocus();
      QTest::keyClick(view.windowHandle(), Qt::Key_A, Qt::ControlModifier);
      return TypeInto(*widget, qt::ToQt(step.text));
    case Step::Kind::kResize:
      return ResizeTo(view, step.bounds);
    case Step::Kind::kClose:
      view.close();
      return;
  }
}

void Person::ActOnDialog(QDialog& dialog) {
  if (OnLook) OnLook(dialog);
  if (auto* box = qobject_cast<QMessageBox*>(&dialog)) {
    MessageAnswer answer =
        SafeAnswer({{}, {}, {}, box->buttons().size() > 1 ? MessageButtons::kYesNo : MessageButtons::kOk});
    if (!gaveUp_ && walk_.boxes.empty()) GiveUp("no answer for the box " + box->text().toStdString(), box);
    if (!gaveUp_) {
      answer = walk_.boxes.front();
      walk_.boxes.pop_front();
    }
    const QMessageBox::ButtonRole role = answer == MessageAnswer::kYes  ? QMessageBox::YesRole
                                         : answer == MessageAnswer::kNo ? QMessageBox::NoRole
                                                                        : QMessageBox::AcceptRole;
    for (QAbstractButton* button : box->buttons()) {
      if (box->buttonRole(button) == role) return ClickAt(*button, button->rect().center());
    }
    return GiveUp("the box offers no such answer", box);
  }
  int answer = 1;
  if (dialog.objectName() == "lifeCycleView" && !walk_.lifeCycles.empty()) {
    answer = walk_.lifeCycles.front();
    walk_.lifeCycles.pop_front();
  }
  PressEnd(dialog, answer);
}

void Person::PressEnd(QDialog& dialog, int answer) {
  if (answer == 7) {
    dialog.close();
  } else {
    auto* button = dialog.findChild<QPushButton*>(answer == 1 ? "ok" : "cancel");
    ClickAt(*button, button->rect().center());
  }
}

void Person::ActOnMenu(QMenu& menu) {
  if (OnLook) OnLook(menu);
  const std::string choice = walk_.menus.empty() ? std::string() : walk_.menus.front();
  if (!walk_.menus.empty()) walk_.menus.pop_front();
  for (QAction* action : menu.actions()) {
    if (action->objectName().toStdString() != choice) continue;
    QTest::mouseClick(&menu, Qt::LeftButton, Qt::NoModifier, menu.actionGeometry(action).center());
    return;
  }
  menu.close();
}

void Person::GiveUp(const std::string& reason, QWidget*) {
  gaveUp_ = true;
  ADD_FAILURE() << reason << "\nseen so far:\n" << seen_ << scribe.Transcript();
}

int WatchedDialogs::ConfirmLifeCycle(const embedded::LifeCycleRequest& request) {
  person_.Waiting();
  person_.scribe.AnswerLifeCycle(QtHostDialogs::ConfirmLifeCycle(request));
  return person_.scribe.ConfirmLifeCycle(request);
}

int WatchedDialogs::ShowObject(const embedded::ObjectDialogRequest& request) {
  person_.Waiting();
  person_.scribe.AnswerObject(QtHostDialogs::ShowObject(request));
  return person_.scribe.ShowObject(request);
}

void WatchedDialogs::RefreshObject(const ObjectKey& key, int mode) {
  person_.scribe.RefreshObject(key, mode);
}

}  // namespace tessel::test
