#include "database_choice.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>

#include "embedded/store/database_place.h"
#include "embedded/store/new_database.h"
#include "qt/dialog_parts.h"
#include "qt/logo.h"
#include "qt/text.h"
#include "tell.h"
#include "texts.h"

namespace tessel::client {
namespace {

// The model of the sample company: where it is installed beside the program, else in the source tree.
QString ExampleModel() {
  const QString installed =
      QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral(TESSEL_INSTALLED_EXAMPLE));
  for (const QString& model : {installed, QStringLiteral(TESSEL_SOURCE_EXAMPLE)}) {
    if (QFileInfo::exists(model)) return QFileInfo(model).canonicalFilePath();
  }
  return {};
}

QString DataDirectory() {
  const QString directory = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  QDir().mkpath(directory);
  return directory;
}

// The path of a database; empty when none was chosen.
QString Ask(QFileDialog& dialog, qt::Language language) {
  dialog.setNameFilters(texts::kDatabases.In(language).split(QStringLiteral(";;")));
  dialog.resize(qt::OnScreen(dialog.sizeHint(), dialog));
  return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

QString CreateExample(FileSystem& files, qt::Language language) {
  const QString model = ExampleModel();
  if (model.isEmpty()) {
    Tell(texts::kNoExample.In(language), language, nullptr);
    return {};
  }
  QFileDialog dialog(nullptr, texts::kChoiceCreate.In(language), DataDirectory());
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  dialog.selectFile(QStringLiteral("wendelau.db"));
  QString path = Ask(dialog, language);
  if (path.isEmpty()) return {};
  if (QFileInfo(path).suffix().isEmpty()) path += QLatin1String(".db");
  try {
    embedded::CreateDatabase(files, qt::FromQt(path), qt::FromQt(model));
    return path;
  } catch (const std::exception& error) {
    Tell(error, language, nullptr);
    return {};
  }
}

}  // namespace

QString AskForDatabase(const QString& last, qt::Language language) {
  QFileDialog dialog(nullptr, texts::kOpenTitle.In(language),
                     last.isEmpty() ? DataDirectory() : QFileInfo(last).path());
  dialog.setFileMode(QFileDialog::ExistingFile);
  return Ask(dialog, language);
}

DatabaseChoice ChooseDatabase(const QString& last, FileSystem& files, qt::Language language) {
  while (true) {
    QMessageBox box(QMessageBox::Question, texts::kError.In(language), texts::kChoice.In(language));
    box.setObjectName("databaseChoice");
    box.setWindowIcon(qt::LogoIcon());
    QPushButton* again = nullptr;
    if (!last.isEmpty() && (embedded::IsOnServer(qt::FromQt(last)) || QFileInfo::exists(last))) {
      const QString name = QFileInfo(last).fileName().replace(QLatin1Char('&'), QLatin1String("&&"));
      again = box.addButton(texts::kChoiceLast.In(language).arg(name), QMessageBox::AcceptRole);
    }
    QPushButton* open = box.addButton(
        (again != nullptr ? texts::kChoiceOpen : texts::kChoiceFirst).In(language), QMessageBox::AcceptRole);
    QPushButton* create = box.addButton(texts::kChoiceCreate.In(language), QMessageBox::AcceptRole);
    box.addButton(qt::kCancelText.In(language), QMessageBox::RejectRole);
    // One below the other: in a row they are too wide for a small screen.
    if (auto* buttons = box.findChild<QDialogButtonBox*>()) buttons->setOrientation(Qt::Vertical);
    box.exec();
    QString path;
    if (again != nullptr && box.clickedButton() == again) {
      path = last;
    } else if (box.clickedButton() == open) {
      path = AskForDatabase(last, language);
    } else if (box.clickedButton() == create) {
      path = CreateExample(files, language);
    } else {
      return {};
    }
    if (!path.isEmpty()) return {path, box.clickedButton() == create};
  }
}

}  // namespace tessel::client
