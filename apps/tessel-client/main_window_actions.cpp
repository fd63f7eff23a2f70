// The actions of the client's window.
#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QToolBar>
#include <QTreeView>
#include <QTreeWidget>
#include <utility>

#include "common/sender_start.h"
#include "dispatch/server_monitor.h"
#include "export_report.h"
#include "help.h"
#include "main_window.h"
#include "platform/paths.h"
#include "qt/text.h"
#include "selection_dialog.h"
#include "settings_dialog.h"
#include "tell.h"

namespace tessel::client {

void MainWindow::Collect() {
  const Keys marked = MarkedDocuments();
  TellRefused(hooks_.Collect(marked), marked.size());
}

void MainWindow::Export(bool intoFolderStructure) {
  const ExportOutcome& outcome = hooks_.Export(intoFolderStructure);
  for (const HandedOver& one : outcome.directories) {
    const QString directory = qt::ToQt(one.directory);
    if (const auto record = RecordOf(NativePath(directory)))
      settings_.setValue(FolderKey(*record), directory);
  }
  Refresh();
  if (!WorthTelling(outcome)) return;
  std::unique_ptr<qt::HostDialog> report;
  report.reset(MakeExportReport(
      outcome, Exchanges(), [this](const QString& path) { return NativePath(path); },
      [this, &report](const QString& folder) { OpenFolder(folder, report.get()); }, language_, this));
  static_cast<void>(report->Ask());
}

void MainWindow::EditSelection() {
  std::vector<SelectedDocument> documents;
  for (const ObjectKey& key : contents_.Collected()) {
    const DocumentRow* row = documents_->Documents().Find(key);
    documents.push_back({key, NumberOf(key), row == nullptr ? QString() : row->description});
  }
  const auto kept = client::EditSelection(
      documents, [this](ClassId classId) { return contents_.IconOf(classId); }, language_, this);
  if (kept) hooks_.KeepCollected(*kept);
}

QString MainWindow::NativePath(const QString& path) const {
  return qt::ToQt(hosted_.LoadedProgram().platform.files.NativePath(qt::FromQt(path)));
}

void MainWindow::OpenFolder(const QString& folder, QWidget* parent) {
  const QString path = NativePath(folder);
  if (!QFileInfo(path).isDir()) return Tell(texts::kNoFolder.In(language_).arg(path), language_, parent);
  if (!OpenUrl(QUrl::fromLocalFile(path)))
    Tell(texts::kCannotOpen.In(language_).arg(path), language_, parent);
}

void MainWindow::Continue() {
  const ObjectKey exchange = *exchanges_->MarkedKey();
  const ContinueOutcome& outcome = hooks_.Continue(exchange);
  TellContinue(outcome);
  if (outcome.result == ContinueResult::kContinued) StartSender(exchange);
}

// The sender decides, since it alone knows how far it came.
void MainWindow::SendAgain() {
  const ExchangeRow exchange = *exchanges_->Marked();
  if (exchange.phase == kPhaseSent &&
      !Confirm(texts::kSendAgainAsk.In(language_).arg(exchange.number, exchange.contact), language_, this))
    return;
  const std::string program =
      paths::Join(hosted_.LoadedProgram().platform.program.directory, kServerMonitorProgram);
  const SenderAnswer answer =
      Sender(NativePath(qt::ToQt(program)),
             {QStringLiteral("--send-again"), qt::ToQt(ObjectKeyText(exchange.key, ':'))});
  if (!answer.done) return TellAll(texts::kNotSentAgain.In(language_), {answer.text}, language_, this);
  StartSender(exchange.key);
}

void MainWindow::StartSender(const ObjectKey& exchange) {
  if (StartSenderFor(hosted_, exchange) == SenderStart::kFailed)
    Tell(texts::kMonitorFailed.In(language_), language_, this);
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
  onDocuments_.push_back(add("collect", texts::kCollect, texts::kCollectTip, "F7", [this] { Collect(); }));
  add("export", texts::kExport, texts::kExportTip, "F8", [this] { Export(false); });
  add("exportStructure", texts::kExportStructure, texts::kExportStructureTip, "Shift+F8",
      [this] { Export(true); });
  editSelection_ = AddAction("editSelection", texts::kSelection, texts::kSelectionTip,
                             QKeySequence(QStringLiteral("Ctrl+L")), [this] { EditSelection(); });
  toolBar_->addSeparator();
  onDocuments_.push_back(add("lock", texts::kLock, texts::kLockTip, "F9",
                             [this] { TellLocks(hooks_.Lock(MarkedDocuments()), texts::kNotLocked); }));
  onDocuments_.push_back(add("unlock", texts::kUnlock, texts::kUnlockTip, "Shift+F9",
                             [this] { TellLocks(hooks_.Unlock(MarkedDocuments()), texts::kNotUnlocked); }));
  toolBar_->addSeparator();
  continue_ = add("continue", texts::kContinue, texts::kContinueTip, "F6", [this] { Continue(); });
  sendAgain_ = AddAction("sendAgain", texts::kSendAgain, texts::kSendAgainTip,
                         QKeySequence(QStringLiteral("Shift+F6")), [this] { SendAgain(); });
  latest_ = add("latest", texts::kLatest, texts::kLatestTip, "F4",
                [this] { hooks_.ShowLatest(MarkedDocuments().front()); });
  openFolder_ = AddAction("openFolder", texts::kOpenFolder, texts::kOpenFolderTip,
                          QKeySequence(QStringLiteral("Ctrl+Return")), [this] {
                            const QString folder = FolderOf(exchanges_->Marked()->directory);
                            OpenFolder(folder, this);
                          });
  properties_ = AddAction("properties", texts::kProperties, texts::kPropertiesTip,
                          QKeySequence(QStringLiteral("Alt+Return")), [this] { ShowProperties(); });
}

void MainWindow::BuildHelpMenu() {
  QMenu* menu = menuBar()->addMenu(texts::kHelpMenu.In(language_));
  QAction* help = menu->addAction(texts::kHelp.In(language_), this,
                                  [this] { ShowHelp(findChildren<QAction*>(), OpenUrl, language_, this); });
  help->setObjectName("help");
  help->setShortcut(QKeySequence::HelpContents);
  QAction* about = menu->addAction(texts::kAboutMenu.In(language_), this,
                                   [this] { ShowAbout(database_, language_, this); });
  about->setObjectName("about");
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
  if (hosted_.Session()->CurrentUser()->IsAdministrator()) {
    QAction* settings = file->addAction(texts::kSettings.In(language_), this, [this] {
      Run([this] { EditSettings(hosted_.Session(), language_, this); });
    });
    settings->setObjectName("settings");
  }
  file->addSeparator();
  file->addAction(texts::kQuit.In(language_), this, &QWidget::close)->setShortcut(QKeySequence::Quit);

  QMenu* objects = menuBar()->addMenu(texts::kObjectMenu.In(language_));
  QMenu* exchange = menuBar()->addMenu(texts::kExchangeMenu.In(language_));
  for (QAction* action : toolBar_->actions())
    (action == continue_ || action->objectName().startsWith(QLatin1String("export")) ? exchange : objects)
        ->addAction(action);
  objects->addAction(editSelection_);
  objects->addSeparator();
  objects->addAction(properties_);
  exchange->addAction(sendAgain_);
  exchange->addAction(openFolder_);
  BuildHelpMenu();

  for (QWidget* view : {static_cast<QWidget*>(documents_->List()), static_cast<QWidget*>(structure_)}) {
    view->setContextMenuPolicy(Qt::ActionsContextMenu);
    view->addActions(objects->actions());
  }
  exchanges_->List()->setContextMenuPolicy(Qt::ActionsContextMenu);
  exchanges_->List()->addActions({continue_, sendAgain_, openFolder_, properties_});

  auto* find = new QShortcut(QKeySequence::Find, this);
  connect(find, &QShortcut::activated, this, [this] { documents_->GoToSearch(); });
}

}  // namespace tessel::client
