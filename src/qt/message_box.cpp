#include "qt/message_box.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <algorithm>

#include "qt/text.h"

namespace tessel::qt {
namespace {

constexpr BothTexts kOk{"OK", "OK"};
constexpr BothTexts kYes{"Yes", "Ja"};
constexpr BothTexts kNo{"No", "Nein"};

QMessageBox::Icon IconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kInformation:
      return QMessageBox::Information;
    case MessageIcon::kExclamation:
      return QMessageBox::Warning;
    case MessageIcon::kCritical:
      return QMessageBox::Critical;
    case MessageIcon::kNone:
      break;
  }
  return QMessageBox::NoIcon;
}

// With the mouse what is marked, by its key what is marked or else the whole text: people pass errors on.
void LetCopy(QMessageBox& box) {
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  const auto* copy = new QShortcut(QKeySequence::Copy, &box);
  QObject::connect(copy, &QShortcut::activated, &box, [&box] {
    const auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    const QString marked = label == nullptr ? QString() : label->selectedText();
    QGuiApplication::clipboard()->setText(marked.isEmpty() ? box.text() : marked);
  });
}

// A text that is higher than the screen is scrolled, so that the buttons stay on it.
void FitOnScreen(QMessageBox& box) {
  constexpr int kFrame = 40;
  auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
  const int most = box.screen()->availableSize().height() - kFrame;
  const int over = box.sizeHint().height() - most;
  if (label == nullptr || over <= 0) return;
  const QSize whole = label->sizeHint();
  auto* area = new QScrollArea(&box);
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setMinimumSize(whole.width() + area->verticalScrollBar()->sizeHint().width(),
                       std::max(whole.height() - over, label->fontMetrics().lineSpacing()));
  delete box.layout()->replaceWidget(label, area);
  area->setWidget(label);
}

// Without a window manager's help the keys would go nowhere once the box is gone.
void Run(QMessageBox& box, QWidget* parent) {
  const QPointer<QWidget> before = parent == nullptr ? nullptr : parent->window();
  box.exec();
  if (before && before->isVisible()) before->activateWindow();
}

}  // namespace

MessageAnswer ShowMessageBox(const MessageRequest& request, Language language, QWidget* parent) {
  QMessageBox box(parent);
  box.setWindowFlag(Qt::WindowStaysOnTopHint);
  box.setWindowTitle(ToQt(request.title.empty() ? kDefaultMessageTitle : request.title));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQt(request.text));
  box.setIcon(IconOf(request.icon));
  LetCopy(box);
  const bool ok = request.buttons == MessageButtons::kOk;
  QPushButton* yes = ok ? box.addButton(kOk.In(language), QMessageBox::AcceptRole)
                        : box.addButton(kYes.In(language), QMessageBox::YesRole);
  if (!ok) {
    box.setDefaultButton(yes);
    box.setEscapeButton(box.addButton(kNo.In(language), QMessageBox::NoRole));
  }
  FitOnScreen(box);
  Run(box, parent);
  if (ok) return MessageAnswer::kOk;
  return box.clickedButton() == yes ? MessageAnswer::kYes : MessageAnswer::kNo;
}

}  // namespace tessel::qt
