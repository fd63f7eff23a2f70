// The actions of the client's window.
#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QToolBar>
#include <QTreeView>
#include <QTreeWidget>
#include <utility>

#include "main_window.h"
#include "tell.h"

namespace tessel::client {

void MainWindow::Export(bool intoFolderStructure) {
  const std::optional<ExportFailure> failure = hooks_.Export(intoFolderStructure);
  if (!failure) return;
  QStringList paragraphs{texts::kExportFailed.In(language_), failure->reason};
  for (const auto& [head, directories] : {std::pair(&texts::kAlreadyFinal, &failure->finished),
                                          std::pair(&texts::kNotRecorded, &failure->unrecorded)}) {
    if (!directories->isEmpty())
      paragraphs.append(head->In(language_) + QLatin1Char('\n') + directories->join(QLatin1Char('\n')));
  }
  paragraphs.removeAll(QString());
  const QString text = paragraphs.join(QLatin1String("\n\n"));
  Tell(text, language_, this);
}

// The keys are none that edit text, so that they act wherever the focus is.
QAction* MainWindow::AddAction(const char* name, const qt::BothTexts& text, const qt::BothTexts& tip,
                               const QKeySequence& key, Work work) {
  auto* action = new QAction(text.In(language_), this);
  action->setObjectName(name);
  action->setShortcut(key);
  action->setToolTip(tip.In(language_) + QLatin1String(" (") + key.toString(QKeySequence::NativeText) +
                     QLatin1Char(')'));
  connect(action, &QAction::triggered, this, [this, work = std::move(work)] { Run(work); });
  return action;
}

void MainWindow::BuildActions() {
  toolBar_ = addToolBar(QStringLiteral("actions"));
  toolBar_->setObjectName("actions");
  toolBar_->setMovable(false);
  const auto add = [this](const char* name, const qt::BothTexts& text, const qt::BothTexts& tip,
                          const char* key, Work work) {
    QAction* action = AddAction(name, text, tip, QKeySequence(QLatin1String(key)), std::move(work));
    toolBar_->addAction(action);
    return action;
  };
  onDocuments_.push_back(add("collect", texts::kCollect, texts::kCollectTip, "F7",
                             [this] { hooks_.Collect(MarkedDocuments()); }));
  add("export", texts::kExport, texts::kExportTip, "F8", [this] { Export(false); });
  add("exportStructure", texts::kExportStructure, texts::kExportStructureTip, "Shift+F8",
      [this] { Export(true); });
  toolBar_->addSeparator();
  onDocuments_.push_back(
      add("lock", texts::kLock, texts::kLockTip, "F9", [this] { hooks_.Lock(MarkedDocuments()); }));
  onDocuments_.push_back(add("unlock", texts::kUnlock, texts::kUnlockTip, "Shift+F9",
                             [this] { hooks_.Unlock(MarkedDocuments()); }));
  toolBar_->addSeparator();
  continue_ = add("continue", texts::kContinue, texts::kContinueTip, "F6",
                  [this] { hooks_.Continue(*exchanges_->MarkedKey()); });
  latest_ = add("latest", texts::kLatest, texts::kLatestTip, "F4",
                [this] { hooks_.ShowLatest(MarkedDocuments().front()); });
  properties_ = AddAction("properties", texts::kProperties, texts::kPropertiesTip,
                          QKeySequence(QStringLiteral("Alt+Return")), [this] { ShowProperties(); });
}

void MainWindow::BuildMenus(const std::function<void()>& reopen) {
  QMenu* file = menuBar()->addMenu(texts::kFileMenu.In(language_));
  QAction* open = file->addAction(texts::kOpen.In(language_), this, [this, reopen] {
    if (!std::exchange(running_, true)) reopen();
  });
  open->setObjectName("open");
  open->setShortcut(QKeySequence::Open);
  QAction* refresh = file->addAction(texts::kRefresh.In(language_), this, [this] { Run([] {}); });
  refresh->setObjectName("refresh");
  refresh->setShortcut(Qt::Key_F5);
  file->addSeparator();
  file->addAction(texts::kQuit.In(language_), this, &QWidget::close)->setShortcut(QKeySequence::Quit);

  QMenu* objects = menuBar()->addMenu(texts::kObjectMenu.In(language_));
  QMenu* exchange = menuBar()->addMenu(texts::kExchangeMenu.In(language_));
  for (QAction* action : toolBar_->actions())
    (action == continue_ || action->objectName().startsWith(QLatin1String("export")) ? exchange : objects)
        ->addAction(action);
  objects->addSeparator();
  objects->addAction(properties_);

  for (QWidget* view : {static_cast<QWidget*>(documents_->List()), static_cast<QWidget*>(structure_)}) {
    view->setContextMenuPolicy(Qt::ActionsContextMenu);
    view->addActions(objects->actions());
  }
  exchanges_->List()->setContextMenuPolicy(Qt::ActionsContextMenu);
  exchanges_->List()->addActions({continue_, properties_});

  auto* find = new QShortcut(QKeySequence::Find, this);
  connect(find, &QShortcut::activated, this, [this] { documents_->GoToSearch(); });
}

}  // namespace tessel::client
