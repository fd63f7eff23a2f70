#include "qt/message_box.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>

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
  if (request.buttons == MessageButtons::kOk) {
    box.addButton(kOk.In(language), QMessageBox::AcceptRole);
    Run(box, parent);
    return MessageAnswer::kOk;
  }
  QPushButton* yes = box.addButton(kYes.In(language), QMessageBox::YesRole);
  QPushButton* no = box.addButton(kNo.In(language), QMessageBox::NoRole);
  box.setDefaultButton(yes);
  box.setEscapeButton(no);
  Run(box, parent);
  return box.clickedButton() == yes ? MessageAnswer::kYes : MessageAnswer::kNo;
}

}  // namespace tessel::qt
