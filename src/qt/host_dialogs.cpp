#include "qt/host_dialogs.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>

#include "qt/dialog_parts.h"
#include "qt/message_box.h"
#include "qt/object_dialog.h"
#include "qt/object_list.h"
#include "qt/text.h"

namespace tessel::qt {
namespace {

constexpr BothTexts kCopyTitle{"Life cycle: copy files", "Lebenszyklus: Dateien kopieren"};
constexpr BothTexts kLifeCycleTitle{"Life cycle: %1", "Lebenszyklus: %1"};
constexpr BothTexts kCopied{"These objects and their files are copied:",
                            "Diese Objekte und ihre Dateien werden kopiert:"};
constexpr BothTexts kAffected{"The operation runs on these objects:",
                              "Die Operation wird auf diesen Objekten ausgeführt:"};
constexpr BothTexts kDirectory{"Target directory:", "Zielverzeichnis:"};
constexpr BothTexts kCount{"Objects: %1", "Objekte: %1"};
constexpr BothTexts kSelectTitle{"Select objects", "Objekte auswählen"};
constexpr BothTexts kFilter{"Filter", "Filtern"};
constexpr BothTexts kLoginTitle{"Log in", "Anmelden"};
constexpr BothTexts kUser{"User:", "Benutzer:"};
constexpr BothTexts kPassword{"Password:", "Kennwort:"};
constexpr BothTexts kSystemMessage{"Message", "Meldung"};
constexpr QSize kListSize{560, 420};
constexpr int kLoginWidth = 320;

QLabel* PlainLabel(const QString& text) {
  auto* label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

// The objects asked for stand out from those that come along.
void Emphasise(QTreeWidget& list, std::size_t count) {
  for (int row = 0; row < list.topLevelItemCount() && row < static_cast<int>(count); ++row) {
    QFont font = list.font();
    font.setBold(true);
    list.topLevelItem(row)->setFont(0, font);
  }
}

void ShowFitting(QTreeWidget& list, const QString& text) {
  for (int row = 0; row < list.topLevelItemCount(); ++row) {
    QTreeWidgetItem* item = list.topLevelItem(row);
    item->setHidden(!item->text(0).contains(text, Qt::CaseInsensitive) &&
                    !item->text(1).contains(text, Qt::CaseInsensitive));
  }
}

}  // namespace

QtHostDialogs::~QtHostDialogs() {
  for (const QPointer<QDialog>& dialog : modeless_)
    delete dialog.data();
}

QIcon QtHostDialogs::Icon(const ObjectKey& key) const {
  return IconOf ? IconOf(key.classId) : QIcon();
}

int QtHostDialogs::ConfirmLifeCycle(const embedded::LifeCycleRequest& request) {
  const bool copy = !request.directory.empty();
  const QString title =
      copy ? kCopyTitle.In(language_) : kLifeCycleTitle.In(language_).arg(ToQt(request.operation));
  HostDialog dialog("lifeCycleView", title, toolkit_.DialogParent());
  dialog.Rows().addWidget(PlainLabel((copy ? kCopied : kAffected).In(language_)));
  QTreeWidget* list = MakeObjectList(
      request.affected, [this](const ObjectKey& key) { return Icon(key); }, language_, &dialog);
  Emphasise(*list, request.objects.size());
  dialog.Rows().addWidget(list, 1);
  dialog.Rows().addWidget(
      PlainLabel(kCount.In(language_).arg(static_cast<qulonglong>(request.affected.size()))));
  if (copy) {
    dialog.Rows().addWidget(
        PlainLabel(kDirectory.In(language_) + QLatin1Char('\n') + ToQt(request.directory)));
  }
  dialog.AddButtons(language_, true);
  dialog.resize(kListSize);
  return dialog.Ask();
}

int QtHostDialogs::ShowObject(const embedded::ObjectDialogRequest& request) {
  const QIcon icon = request.objects.empty() ? QIcon() : Icon(request.objects.front());
  HostDialog* dialog = MakeObjectDialog(request, icon, language_, toolkit_.DialogParent());
  if (request.modal) {
    const std::unique_ptr<HostDialog> owned(dialog);
    return dialog->Ask() == HostDialog::kOk ? HostDialog::kOk : HostDialog::kCancelled;
  }
  modeless_.erase(std::remove(modeless_.begin(), modeless_.end(), nullptr), modeless_.end());
  modeless_.emplace_back(dialog);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->show();
  return HostDialog::kOk;
}

std::vector<std::size_t> QtHostDialogs::SelectObjects(const embedded::SelectionDialogRequest& request) {
  const QString title = request.title.empty() ? kSelectTitle.In(language_) : ToQt(request.title);
  HostDialog dialog("selectionDialog", title, toolkit_.DialogParent());
  auto* filter = new QLineEdit;
  filter->setPlaceholderText(kFilter.In(language_));
  filter->setAccessibleName(kFilter.In(language_));
  filter->setClearButtonEnabled(true);
  dialog.Rows().addWidget(filter);
  QTreeWidget* list = MakeObjectList(
      request.candidates, [this](const ObjectKey& key) { return Icon(key); }, language_, &dialog);
  list->setSelectionMode(request.multiple ? QTreeWidget::ExtendedSelection : QTreeWidget::SingleSelection);
  dialog.Rows().addWidget(list, 1);
  dialog.AddButtons(language_, true);
  dialog.resize(kListSize);
  QObject::connect(filter, &QLineEdit::textChanged, list,
                   [list](const QString& text) { ShowFitting(*list, text); });
  QObject::connect(list, &QTreeWidget::itemDoubleClicked, &dialog, &QDialog::accept);
  std::vector<std::size_t> picked;
  if (dialog.Ask() != HostDialog::kOk) return picked;
  for (const QTreeWidgetItem* item : list->selectedItems())
    picked.push_back(PositionOf(*item));
  std::sort(picked.begin(), picked.end());
  return picked;
}

embedded::LoginAnswer QtHostDialogs::Login() {
  HostDialog dialog("login", kLoginTitle.In(language_), toolkit_.DialogParent());
  auto* user = new QLineEdit(user_);
  user->setObjectName("user");
  auto* password = new QLineEdit;
  password->setObjectName("password");
  password->setEchoMode(QLineEdit::Password);
  auto* form = new QFormLayout;
  form->addRow(kUser.In(language_), user);
  form->addRow(kPassword.In(language_), password);
  dialog.Rows().addLayout(form);
  if (!loginHint_.isEmpty()) {
    auto* hint = new QLabel(loginHint_);
    hint->setObjectName("hint");
    hint->setTextFormat(Qt::PlainText);
    hint->setWordWrap(true);
    dialog.Rows().addWidget(hint);
  }
  dialog.setMinimumWidth(kLoginWidth);
  dialog.AddButtons(language_, true);
  if (!user_.isEmpty()) password->setFocus();
  if (dialog.Ask() != HostDialog::kOk) return {};
  return {true, FromQt(user->text()), FromQt(password->text())};
}

void QtHostDialogs::ShowSystemMessage(const std::vector<std::string>& texts) {
  std::string text;
  for (const std::string& line : texts)
    text += (text.empty() ? "" : "\n") + line;
  static_cast<void>(ShowMessageBox(
      {text, FromQt(kSystemMessage.In(language_)), MessageIcon::kInformation, MessageButtons::kOk}, language_,
      toolkit_.DialogParent()));
}

void QtHostDialogs::RefreshObject(const ObjectKey& key, int) {
  if (OnRefresh) OnRefresh(key);
}

}  // namespace tessel::qt
