#include "main_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QHeaderView>
#include <QLabel>
#include <QScreen>
#include <QStatusBar>
#include <QToolButton>
#include <QTreeView>

#include "qt/logo.h"
#include "qt/text.h"
#include "tell.h"

namespace tessel::client {
namespace {

constexpr QSize kFirstSize{1100, 720};
constexpr int kMargin = 4;
constexpr int kFrame = 40;  // room for the window's border and title bar
constexpr int kCopyShownMs = 1000;
constexpr int kNamedObjects = 8;  // listed by number in the status bar

constexpr const char* kGeometryKey = "window/geometry";
constexpr const char* kUpperKey = "window/upper";
constexpr const char* kWholeKey = "window/whole";
constexpr const char* kColumnsKey = "window/columns";
constexpr const char* kExchangeColumnsKey = "window/exchangeColumns";

}  // namespace

MainWindow::MainWindow(HostedProgram& hosted, qt::Language language, QSettings& settings,
                       const QString& databasePath, std::function<void()> reopen)
    : OpenUrl(QDesktopServices::openUrl),
      Sender(AskSender),
      hosted_(hosted),
      language_(language),
      settings_(settings),
      contents_(hosted.Session()),
      hooks_(hosted),
      database_(databasePath) {
  setObjectName("client");
  setWindowIcon(qt::LogoIcon());
  setWindowTitle(texts::kWindowTitle.In(language_).arg(qt::ToQt(hosted.Session()->DatabaseAlias())));
  BuildPanes();
  BuildActions();
  BuildMenus(reopen);
  BuildStatusBar(databasePath);
  Refresh();
  RestorePlace();
  Connect();
  documents_->List()->setFocus();
}

// The views go before what they show.
MainWindow::~MainWindow() {
  hosted_.SetCopyWatch(nullptr);
  disconnect(qApp, nullptr, this, nullptr);
  for (QObject* part : findChildren<QObject*>())
    part->disconnect(this);
  delete takeCentralWidget();
}

void MainWindow::BuildPanes() {
  documents_ = new DocumentPane([this](ClassId classId) { return contents_.IconOf(classId); }, language_);
  structure_ = new StructureTree(contents_, documents_->Documents(), language_);
  exchanges_ = new ExchangePanel(contents_, language_);
  upper_ = new QSplitter(Qt::Horizontal);
  upper_->addWidget(documents_);
  upper_->addWidget(structure_);
  upper_->setStretchFactor(0, 3);
  upper_->setStretchFactor(1, 2);
  whole_ = new QSplitter(Qt::Vertical);
  whole_->addWidget(upper_);
  whole_->addWidget(exchanges_);
  whole_->setStretchFactor(0, 3);
  whole_->setStretchFactor(1, 1);
  whole_->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  setCentralWidget(whole_);
}

void MainWindow::Connect() {
  documents_->OnMarksChanged = [this] { EnableActions(); };
  documents_->OnCurrentChanged = [this] { ShowStructure(); };
  exchanges_->OnMarkChanged = [this] { EnableActions(); };
  connect(structure_, &QTreeWidget::itemSelectionChanged, this, [this] { EnableActions(); });
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
    const bool showsDocuments = now == documents_->List() || now == structure_;
    if (showsDocuments) documentView_ = now;
    if (showsDocuments || now == exchanges_->List()) lastView_ = now;
    if (now == lastView_) EnableActions();
  });
  for (QAbstractItemView* view : Views())
    connect(view, &QAbstractItemView::activated, this, [this] { properties_->trigger(); });
}

void MainWindow::BuildStatusBar(const QString& databasePath) {
  selection_ = new QLabel;
  selection_->setObjectName("selection");
  selection_->setAccessibleName(texts::kSelectionTitle.In(language_));
  selection_->setTextFormat(Qt::PlainText);
  auto* login = new QLabel(texts::kLoggedIn.In(language_).arg(
      qt::ToQt(hosted_.Session()->CurrentUser()->LoginName()), databasePath));
  login->setTextFormat(Qt::PlainText);
  auto* edit = new QToolButton;
  edit->setDefaultAction(editSelection_);
  edit->setAutoRaise(true);
  statusBar()->addWidget(edit);
  statusBar()->addWidget(selection_, 1);
  statusBar()->addPermanentWidget(login);
  hosted_.SetCopyWatch([this](const embedded::CopyStep& step) {
    const auto percent = step.bytes == 0 ? 0 : 100 * step.bytesDone / step.bytes;
    statusBar()->showMessage(texts::kCopying.In(language_).arg(qt::ToQt(step.fileName)).arg(percent),
                             kCopyShownMs);
    return true;
  });
}

void MainWindow::RestorePlace() {
  if (!restoreGeometry(settings_.value(kGeometryKey).toByteArray()))
    resize(kFirstSize.boundedTo(screen()->availableSize() - QSize(kFrame, kFrame)));
  upper_->restoreState(settings_.value(kUpperKey).toByteArray());
  whole_->restoreState(settings_.value(kWholeKey).toByteArray());
  if (!documents_->List()->header()->restoreState(settings_.value(kColumnsKey).toByteArray())) {
    for (int column = 0; column < DocumentModel::kColumnCount; ++column)
      documents_->List()->resizeColumnToContents(column);
  }
  if (!exchanges_->List()->header()->restoreState(settings_.value(kExchangeColumnsKey).toByteArray()))
    exchanges_->FitColumns();
}

void MainWindow::SavePlace() {
  settings_.setValue(kGeometryKey, saveGeometry());
  settings_.setValue(kUpperKey, upper_->saveState());
  settings_.setValue(kWholeKey, whole_->saveState());
  settings_.setValue(kColumnsKey, documents_->List()->header()->saveState());
  settings_.setValue(kExchangeColumnsKey, exchanges_->List()->header()->saveState());
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (running_) return event->ignore();
  SavePlace();
  QMainWindow::closeEvent(event);
}

void MainWindow::RefreshSoon() {
  if (refreshing_) return;
  refreshing_ = true;
  QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

bool MainWindow::event(QEvent* event) {
  if (event->type() == QEvent::User) Refresh();
  return QMainWindow::event(event);
}

void MainWindow::Refresh() {
  refreshing_ = false;
  documents_->Show(contents_.Documents());
  ShowStructure();
  exchanges_->Show(Exchanges());
  ShowSelection();
  EnableActions();
}

// The database learns the directory from the program that sends it; until then the client looks for it, and
// remembers where it was found.
std::vector<ExchangeRow> MainWindow::Exchanges() const {
  std::vector<ExchangeRow> rows = contents_.Exchanges();
  std::map<QString, QStringList> listed;
  // From the oldest on: an export tells its protocol to the record of its first recipient alone.
  QString work;
  for (auto position = rows.rbegin(); position != rows.rend(); ++position) {
    ExchangeRow& row = *position;
    if (!row.workDirectory.isEmpty()) work = row.workDirectory;
    if (!row.directory.isEmpty()) continue;
    SetDirectory(row, settings_.value(FolderKey(row.key)).toString());
    if (!row.directory.isEmpty()) continue;
    SetDirectory(row, FindDirectory(
                          work, row.key, [this](const QString& path) { return NativePath(path); }, listed));
    if (!row.directory.isEmpty()) settings_.setValue(FolderKey(row.key), row.directory);
  }
  return rows;
}

QString MainWindow::FolderKey(const ObjectKey& exchange) const {
  return QStringLiteral("folders/%1/%2").arg(database_, qt::ToQt(ObjectKeyText(exchange, '-')));
}

std::array<QAbstractItemView*, 3> MainWindow::Views() const {
  return {documents_->List(), structure_, exchanges_->List()};
}

bool MainWindow::StructureCounts() const {
  return documentView_ == structure_ && structure_->selectionModel()->hasSelection();
}

Keys MainWindow::MarkedDocuments() const {
  return StructureCounts() ? structure_->MarkedKeys() : documents_->MarkedKeys();
}

// The marks that actions take stand out from those of the other view.
void MainWindow::ShowWhichMarksCount() {
  const auto pale = [this](QWidget* view, bool isPale) {
    QPalette colours = palette();
    if (isPale) {
      colours.setColor(QPalette::Highlight, colours.color(QPalette::Midlight));
      colours.setColor(QPalette::HighlightedText, colours.color(QPalette::Text));
    }
    view->setPalette(colours);
  };
  const bool structureCounts = StructureCounts();
  pale(documents_->List(), structureCounts);
  pale(structure_, !structureCounts);
}

void MainWindow::ShowStructure() {
  const std::optional<ObjectKey> current = documents_->CurrentKey();
  if (current) {
    structure_->ShowBelow(*current);
  } else {
    structure_->clear();
  }
}

void MainWindow::ShowSelection() {
  const Keys collected = contents_.Collected();
  editSelection_->setEnabled(!collected.empty());
  if (collected.empty()) return selection_->setText(texts::kNothingSelected.In(language_));
  QStringList numbers;
  for (const ObjectKey& key : collected) {
    if (numbers.size() == kNamedObjects) {
      numbers.append(QStringLiteral("..."));
      break;
    }
    numbers.append(NumberOf(key));
  }
  selection_->setText(texts::kSelected.In(language_)
                          .arg(static_cast<qulonglong>(collected.size()))
                          .arg(numbers.join(QLatin1String(", "))));
}

QString MainWindow::NumberOf(const ObjectKey& key) const {
  const DocumentRow* row = documents_->Documents().Find(key);
  return row != nullptr ? row->number : contents_.NumberOf(key);
}

void MainWindow::ShowProperties() {
  const std::optional<ObjectKey> exchange = exchanges_->MarkedKey();
  const Keys marked = MarkedDocuments();
  if (exchange && (lastView_ == exchanges_->List() || marked.empty())) {
    hooks_.ShowObject(*exchange);
  } else if (!marked.empty()) {
    hooks_.ShowObject(marked.front());
  }
}

void MainWindow::EnableActions() {
  ShowWhichMarksCount();
  const Keys marked = MarkedDocuments();
  const bool exchange = exchanges_->MarkedKey().has_value();
  for (QAction* action : onDocuments_)
    action->setEnabled(!marked.empty());
  latest_->setEnabled(marked.size() == 1);
  continue_->setEnabled(exchange);
  const int phase = exchange ? exchanges_->Marked()->phase : 0;
  sendAgain_->setEnabled(phase == kPhaseStopped || phase == kPhaseSent);
  openFolder_->setEnabled(exchange && !exchanges_->Marked()->directory.isEmpty());
  properties_->setEnabled(!marked.empty() || exchange);
}

void MainWindow::Run(const Work& work) {
  if (running_) return;
  const auto telling = [this](const Work& step) {
    try {
      step();
    } catch (const std::exception& error) {
      Tell(error, language_, this);
    }
  };
  running_ = true;
  telling(work);
  running_ = false;
  telling([this] { Refresh(); });
}

}  // namespace tessel::client
