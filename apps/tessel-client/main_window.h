// The client's window: documents, product structure, data exchanges, and the actions on them.
#pragma once

#include <QMainWindow>
#include <QSettings>
#include <QUrl>
#include <array>
#include <functional>

#include "database_contents.h"
#include "document_pane.h"
#include "exchange_panel.h"
#include "hook_caller.h"
#include "sender_program.h"
#include "structure_tree.h"
#include "texts.h"

class QAbstractItemView;
class QAction;
class QLabel;
class QMenu;
class QToolBar;

namespace tessel::client {

class MainWindow : public QMainWindow {
 public:
  // The program and the settings outlive the window. `reopen` is called when the user asks for another
  // database; until Resume() nothing else starts. Errors: HostError for a database that cannot be listed.
  MainWindow(HostedProgram& hosted, qt::Language language, QSettings& settings, const QString& databasePath,
             std::function<void()> reopen);
  ~MainWindow() override;

  // Reads everything anew and shows it, marks kept. Errors: HostError.
  void Refresh();
  // Refreshes when the events that wait have run, once for many calls.
  void RefreshSoon();
  // The user stays with this database.
  void Resume() { running_ = false; }
  // Writes place, size, panes and columns into the settings, for the next window.
  void SavePlace();
  // Opens a file or folder with the program that the desktop has for it; false when it has none.
  std::function<bool(const QUrl&)> OpenUrl;
  // Asks the sender: its program and the arguments.
  std::function<SenderAnswer(const QString&, const QStringList&)> Sender;
  [[nodiscard]] const DatabaseContents& Contents() const { return contents_; }

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  using Work = std::function<void()>;

  void BuildPanes();
  void BuildActions();
  QAction* AddAction(const char* name, const qt::BothTexts& text, const qt::BothTexts& tip,
                     const QKeySequence& key, Work work);
  void BuildMenus(const std::function<void()>& reopen);
  void BuildHelpMenu();
  void BuildStatusBar(const QString& databasePath);
  void Connect();
  void RestorePlace();

  [[nodiscard]] std::array<QAbstractItemView*, 3> Views() const;
  // Whether actions take the marks of the structure, not those of the list: it was used last of the two.
  [[nodiscard]] bool StructureCounts() const;
  void ShowWhichMarksCount();
  [[nodiscard]] Keys MarkedDocuments() const;
  void Collect();
  void Export(bool intoFolderStructure);
  void EditSelection();
  [[nodiscard]] QString NativePath(const QString& path) const;
  [[nodiscard]] std::vector<ExchangeRow> Exchanges() const;
  // Of the settings: where the directory of an exchange is remembered.
  [[nodiscard]] QString FolderKey(const ObjectKey& exchange) const;
  void OpenFolder(const QString& folder, QWidget* parent);
  // What the hooks left undone without telling anybody.
  void TellRefused(const std::vector<RefusedDocument>& refused, std::size_t asked);
  void TellLocks(const LockOutcome& outcome, const qt::BothTexts& head);
  void TellContinue(const ContinueOutcome& outcome);
  void Continue();
  void SendAgain();
  void StartSender(const ObjectKey& exchange);
  [[nodiscard]] QString NumberOf(const ObjectKey& key) const;
  void ShowProperties();
  void ShowStructure();
  void ShowSelection();
  void EnableActions();
  // Runs an action of the user: errors are told, the window shows the new state afterwards.
  void Run(const Work& work);

  HostedProgram& hosted_;
  qt::Language language_;
  QSettings& settings_;
  DatabaseContents contents_;
  HookCaller hooks_;

  DocumentPane* documents_ = nullptr;
  StructureTree* structure_ = nullptr;
  ExchangePanel* exchanges_ = nullptr;
  QSplitter* upper_ = nullptr;
  QSplitter* whole_ = nullptr;
  QLabel* selection_ = nullptr;
  QToolBar* toolBar_ = nullptr;
  QString database_;
  std::vector<QAction*> onDocuments_;
  QAction* latest_ = nullptr;
  QAction* continue_ = nullptr;
  QAction* sendAgain_ = nullptr;
  QAction* openFolder_ = nullptr;
  QAction* editSelection_ = nullptr;
  QAction* properties_ = nullptr;
  QWidget* lastView_ = nullptr;
  QWidget* documentView_ = nullptr;  // the list or the structure, whichever was used last
  bool running_ = false;
  bool refreshing_ = false;
};

}  // namespace tessel::client
