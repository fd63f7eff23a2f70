#include "qt/dialog_parts.h"

#include <QCloseEvent>
#include <QPushButton>
#include <QScreen>

#include "qt/logo.h"

namespace tessel::qt {
namespace {

constexpr QSize kFrame{12, 40};  // room for the border and the title bar

}  // namespace

QSize OnScreen(const QSize& size, const QWidget& window) {
  return size.boundedTo(window.screen()->availableSize() - kFrame);
}

HostDialog::HostDialog(const QString& name, const QString& title, QWidget* parent)
    : QDialog(parent), rows_(new QVBoxLayout(this)) {
  setObjectName(name);
  setAccessibleName(title);
  setWindowTitle(title);
  setWindowIcon(LogoIcon());
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

QDialogButtonBox* HostDialog::AddButtons(Language language, bool withCancel) {
  auto* buttons = new QDialogButtonBox(this);
  QPushButton* ok = buttons->addButton(kOkText.In(language), QDialogButtonBox::AcceptRole);
  ok->setObjectName("ok");
  ok->setDefault(true);
  if (withCancel) {
    buttons->addButton(kCancelText.In(language), QDialogButtonBox::RejectRole)->setObjectName("cancel");
  }
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  rows_->addWidget(buttons);
  return buttons;
}

int HostDialog::Ask() {
  switch (exec()) {
    case Accepted:
      return kOk;
    case kClosed:
      return kClosed;
    default:
      return kCancelled;
  }
}

void HostDialog::showEvent(QShowEvent* event) {
  if (!event->spontaneous()) resize(OnScreen(size(), *this));
  QDialog::showEvent(event);
}

void HostDialog::closeEvent(QCloseEvent* event) {
  event->accept();
  done(kClosed);
}

}  // namespace tessel::qt
