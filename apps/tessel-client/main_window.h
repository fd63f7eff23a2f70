// The client's window: documents, product structure, data exchanges, and the actions on them.
#pragma once

#include <QMainWindow>
#include <QSettings>
#include <functional>

#include "catalogue.h"
#include "document_model.h"
#include "exchange_panel.h"
#include "hook_caller.h"
#include "structure_tree.h"
#include "texts.h"

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QToolBar;
class QTreeView;

namespace tessel::client {

class MainWindow : public QMainWindow {
 public:
  // The program and the settings outlive the window. `reopen` is called when the user asks for another
  // database.
  MainWindow(HostedProgram& hosted, qt::Language language, QSettings& settings, const QString& databasePath,
             std::function<void()> reopen);
  ~MainWindow() override;

  // Reads everything anew and shows it, marks kept.
  void Refresh();
  // Refreshes when the events that wait have run, once for many calls.
  void RefreshSoon();
  [[nodiscard]] const Catalogue& Contents() const { return catalogue_; }

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  using Work = std::function<void()>;

  void BuildActions();
  QAction* AddAction(const char* name, const qt::BothTexts& text, const qt::BothTexts& tip,
                     const QKeySequence& key, Work work);
  void BuildMenus(const std::function<void()>& reopen);
  [[nodiscard]] QWidget* BuildSearchRow();
  [[nodiscard]] QWidget* BuildDocumentSide();
  void BuildStatusBar(const QString& databasePath);
  void FillClassFilter();
  void Restore();

  // The marked documents of the view that was used last.
  [[nodiscard]] Keys MarkedDocuments() const;
  [[nodiscard]] Keys MarkedInList() const;
  [[nodiscard]] bool StructureInUse() const;
  void MarkDocuments(const Keys& keys);
  void ShowStructure();
  void ShowSelection();
  void ShowCount();
  void EnableActions();
  // Runs an action of the user: errors are told, the window shows the new state afterwards.
  void Run(const Work& work);

  HostedProgram& hosted_;
  qt::Language language_;
  QSettings& settings_;
  Catalogue catalogue_;
  HookCaller hooks_;
  DocumentModel documents_;
  DocumentFilter filter_;

  QLineEdit* search_ = nullptr;
  QComboBox* classFilter_ = nullptr;
  QComboBox* stateFilter_ = nullptr;
  QLabel* count_ = nullptr;
  QTreeView* table_ = nullptr;
  StructureTree* structure_ = nullptr;
  ExchangePanel* exchanges_ = nullptr;
  QSplitter* upper_ = nullptr;
  QSplitter* whole_ = nullptr;
  QLabel* selection_ = nullptr;
  QToolBar* toolBar_ = nullptr;
  std::vector<QAction*> onDocuments_;
  QAction* latest_ = nullptr;
  QAction* continue_ = nullptr;
  QAction* properties_ = nullptr;
  QWidget* lastView_ = nullptr;
  bool running_ = false;
  bool refreshing_ = false;
};

}  // namespace tessel::client
