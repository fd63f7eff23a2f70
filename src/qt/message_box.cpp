#include "qt/message_box.h"

#include <QMessageBox>
#include <QPushButton>

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

}  // namespace

MessageAnswer ShowMessageBox(const MessageRequest& request, Language language, QWidget* parent) {
  QMessageBox box(parent);
  box.setWindowFlag(Qt::WindowStaysOnTopHint);
  box.setWindowTitle(ToQt(request.title.empty() ? kDefaultMessageTitle : request.title));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQt(request.text));
  box.setIcon(IconOf(request.icon));
  if (request.buttons == MessageButtons::kOk) {
    box.addButton(kOk.In(language), QMessageBox::AcceptRole);
    box.exec();
    return MessageAnswer::kOk;
  }
  QPushButton* yes = box.addButton(kYes.In(language), QMessageBox::YesRole);
  QPushButton* no = box.addButton(kNo.In(language), QMessageBox::NoRole);
  box.setDefaultButton(yes);
  box.setEscapeButton(no);
  box.exec();
  return box.clickedButton() == yes ? MessageAnswer::kYes : MessageAnswer::kNo;
}

}  // namespace tessel::qt
