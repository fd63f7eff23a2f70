#include "help.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

#include "qt/dialog_parts.h"
#include "qt/logo.h"
#include "tell.h"
#include "texts.h"

namespace tessel::client {
namespace {

constexpr QSize kHelpSize{620, 420};
constexpr int kLogoSide = 64;

// Where it is installed beside the program, else in the source tree; empty when it is in neither.
QString Documentation() {
  const QString installed =
      QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral(TESSEL_INSTALLED_DOCS));
  for (const QString& folder : {installed, QStringLiteral(TESSEL_SOURCE_DOCS)}) {
    const QFileInfo page(QDir(folder).filePath(QStringLiteral("desktop.md")));
    if (page.exists()) return page.canonicalFilePath();
  }
  return {};
}

QTreeWidget* MakeKeyList(const QList<QAction*>& actions, qt::Language language) {
  auto* list = new QTreeWidget;
  list->setObjectName("keys");
  list->setAccessibleName(texts::kHelpTitle.In(language));
  list->setRootIsDecorated(false);
  list->setHeaderLabels({texts::kKey.In(language), texts::kAction.In(language)});
  for (const QAction* action : actions) {
    const QString key = action->shortcut().toString(QKeySequence::NativeText);
    if (key.isEmpty()) continue;
    // A tip that was set ends with the key.
    const QString tip = QString(action->toolTip()).remove(QLatin1String(" (") + key + QLatin1Char(')'));
    list->addTopLevelItem(new QTreeWidgetItem({key, tip}));
  }
  // On a small screen the list is scrolled aside; nothing of it is cut.
  list->header()->setStretchLastSection(false);
  list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  return list;
}

}  // namespace

void ShowHelp(const QList<QAction*>& actions, const std::function<bool(const QUrl&)>& openUrl,
              qt::Language language, QWidget* parent) {
  qt::HostDialog dialog("help", texts::kHelpTitle.In(language), parent);
  auto* steps = new QLabel(texts::kHelpSteps.In(language));
  steps->setWordWrap(true);
  dialog.Rows().addWidget(steps);
  dialog.Rows().addWidget(MakeKeyList(actions, language), 1);
  QDialogButtonBox* buttons = dialog.AddButtons(language, false);
  const QString page = Documentation();
  if (!page.isEmpty()) {
    auto* read = buttons->addButton(texts::kOpenDocs.In(language), QDialogButtonBox::ActionRole);
    read->setObjectName("documentation");
    QObject::connect(read, &QPushButton::clicked, &dialog, [&] {
      if (!openUrl(QUrl::fromLocalFile(page)))
        Tell(texts::kCannotOpen.In(language).arg(QDir::toNativeSeparators(page)), language, &dialog);
    });
  }
  dialog.resize(kHelpSize);
  static_cast<void>(dialog.Ask());
}

void ShowAbout(const QString& database, qt::Language language, QWidget* parent) {
  qt::HostDialog dialog("about", texts::kAboutTitle.In(language), parent);
  auto* logo = new QLabel;
  logo->setPixmap(qt::Logo(kLogoSide, dialog.devicePixelRatioF()));
  logo->setAlignment(Qt::AlignHCenter);
  dialog.Rows().addWidget(logo);
  auto* text = new QLabel(texts::kAbout.In(language).arg(QCoreApplication::applicationVersion(), database,
                                                         QString::fromLatin1(qVersion())));
  text->setObjectName("aboutText");
  text->setTextFormat(Qt::PlainText);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse);
  dialog.Rows().addWidget(text);
  dialog.AddButtons(language, false);
  static_cast<void>(dialog.Ask());
}

}  // namespace tessel::client
