#include "main_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QStatusBar>
#include <QTreeView>
#include <QVBoxLayout>
#include <iterator>
#include <unordered_set>

#include "qt/logo.h"
#include "qt/text.h"

namespace tessel::client {
namespace {

constexpr QSize kFirstSize{1100, 720};
constexpr int kMargin = 4;
constexpr int kNamedObjects = 8;  // listed by number in the status bar

constexpr const char* kGeometryKey = "window/geometry";
constexpr const char* kUpperKey = "window/upper";
constexpr const char* kWholeKey = "window/whole";
constexpr const char* kColumnsKey = "window/columns";

}  // namespace

MainWindow::MainWindow(HostedProgram& hosted, qt::Language language, QSettings& settings,
                       const QString& databasePath, std::function<void()> reopen)
    : hosted_(hosted),
      language_(language),
      settings_(settings),
      catalogue_(hosted.Session()),
      hooks_(hosted),
      documents_([this](ClassId classId) { return catalogue_.IconOf(classId); }, language),
      filter_(documents_) {
  setObjectName("client");
  setAccessibleName("client");
  setWindowIcon(qt::LogoIcon());
  setWindowTitle(texts::kWindowTitle.In(language_).arg(qt::ToQt(hosted.Session()->DatabaseAlias())));
  BuildActions();
  exchanges_ = new ExchangePanel(catalogue_, language_);
  structure_ = new StructureTree(catalogue_, documents_, language_);
  upper_ = new QSplitter(Qt::Horizontal);
  upper_->addWidget(BuildDocumentSide());
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
  BuildMenus(reopen);
  BuildStatusBar(databasePath);
  connect(structure_, &QTreeWidget::itemSelectionChanged, this, [this] { EnableActions(); });
  connect(exchanges_->List(), &QTreeWidget::itemSelectionChanged, this, [this] { EnableActions(); });
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
    if (now == table_ || now == structure_ || now == exchanges_->List()) lastView_ = now;
    EnableActions();
  });
  Refresh();
  FillClassFilter();
  Restore();
  table_->setFocus();
}

// The views go before what they show.
MainWindow::~MainWindow() {
  disconnect(qApp, nullptr, this, nullptr);
  for (QObject* part : findChildren<QObject*>())
    part->disconnect(this);
  delete takeCentralWidget();
}

QWidget* MainWindow::BuildSearchRow() {
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  search_ = new QLineEdit;
  search_->setObjectName("search");
  search_->setAccessibleName("search");
  search_->setPlaceholderText(texts::kSearch.In(language_));
  search_->setClearButtonEnabled(true);
  classFilter_ = new QComboBox;
  classFilter_->setAccessibleName("classFilter");
  stateFilter_ = new QComboBox;
  stateFilter_->setAccessibleName("stateFilter");
  stateFilter_->addItem(texts::kAllStates.In(language_), 0);
  for (int state = 1; state < static_cast<int>(std::size(texts::kStates)); ++state)
    stateFilter_->addItem(StateName(state, language_), state);
  count_ = new QLabel;
  layout->addWidget(search_, 1);
  layout->addWidget(classFilter_);
  layout->addWidget(stateFilter_);
  layout->addWidget(count_);
  connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) {
    filter_.SearchFor(text);
    ShowCount();
  });
  connect(search_, &QLineEdit::returnPressed, this, [this] {
    table_->setFocus();
    QItemSelectionModel* marks = table_->selectionModel();
    if (marks->hasSelection()) return;
    marks->setCurrentIndex(filter_.index(0, 0),
                           QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  });
  connect(classFilter_, &QComboBox::currentIndexChanged, this, [this] {
    filter_.OnlyClass(static_cast<ClassId>(classFilter_->currentData().toInt()));
    ShowCount();
  });
  connect(stateFilter_, &QComboBox::currentIndexChanged, this, [this] {
    filter_.OnlyState(stateFilter_->currentData().toInt());
    ShowCount();
  });
  return row;
}

QWidget* MainWindow::BuildDocumentSide() {
  table_ = new QTreeView;
  table_->setObjectName("documents");
  table_->setAccessibleName("documents");
  table_->setModel(&filter_);
  table_->setRootIsDecorated(false);
  table_->setUniformRowHeights(true);
  table_->setAlternatingRowColors(true);
  table_->setSortingEnabled(true);
  table_->setSelectionMode(QTreeView::ExtendedSelection);
  table_->sortByColumn(DocumentModel::kNumber, Qt::AscendingOrder);
  connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { EnableActions(); });
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this] { ShowStructure(); });
  connect(table_, &QTreeView::doubleClicked, this, [this] { properties_->trigger(); });
  auto* side = new QWidget;
  auto* rows = new QVBoxLayout(side);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(BuildSearchRow());
  rows->addWidget(table_, 1);
  return side;
}

void MainWindow::BuildStatusBar(const QString& databasePath) {
  selection_ = new QLabel;
  selection_->setObjectName("selection");
  selection_->setAccessibleName("selection");
  selection_->setTextFormat(Qt::PlainText);
  auto* login = new QLabel(texts::kLoggedIn.In(language_).arg(
      qt::ToQt(hosted_.Session()->CurrentUser()->LoginName()), databasePath));
  login->setTextFormat(Qt::PlainText);
  statusBar()->addWidget(selection_, 1);
  statusBar()->addPermanentWidget(login);
}

void MainWindow::FillClassFilter() {
  classFilter_->addItem(texts::kAllClasses.In(language_), 0);
  for (int row = 0; row < documents_.rowCount(); ++row) {
    const DocumentRow& document = documents_.RowAt(row);
    if (classFilter_->findData(document.key.classId) >= 0) continue;
    classFilter_->addItem(catalogue_.IconOf(document.key.classId), document.className, document.key.classId);
  }
}

void MainWindow::Restore() {
  if (!restoreGeometry(settings_.value(kGeometryKey).toByteArray())) resize(kFirstSize);
  upper_->restoreState(settings_.value(kUpperKey).toByteArray());
  whole_->restoreState(settings_.value(kWholeKey).toByteArray());
  if (table_->header()->restoreState(settings_.value(kColumnsKey).toByteArray())) return;
  for (int column = 0; column < DocumentModel::kColumnCount; ++column)
    table_->resizeColumnToContents(column);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (running_) return event->ignore();
  settings_.setValue(kGeometryKey, saveGeometry());
  settings_.setValue(kUpperKey, upper_->saveState());
  settings_.setValue(kWholeKey, whole_->saveState());
  settings_.setValue(kColumnsKey, table_->header()->saveState());
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
  // The list keeps its own marks, whatever is marked in the structure: what a later action takes is what the
  // list shows.
  const Keys marked = MarkedInList();
  documents_.Show(catalogue_.Documents());
  MarkDocuments(marked);
  exchanges_->Show(catalogue_.Exchanges());
  ShowSelection();
  ShowCount();
  EnableActions();
}

void MainWindow::MarkDocuments(const Keys& keys) {
  const std::unordered_set<ObjectKey> wanted(keys.begin(), keys.end());
  QItemSelection marks;
  QModelIndex first;
  for (int row = 0; row < filter_.rowCount(); ++row) {
    const QModelIndex index = filter_.index(row, 0);
    if (!wanted.contains(filter_.KeyAt(index))) continue;
    marks.select(index, index);
    if (!first.isValid()) first = index;
  }
  QItemSelectionModel* model = table_->selectionModel();
  if (first.isValid()) model->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
  model->select(marks, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

bool MainWindow::StructureInUse() const {
  return lastView_ == structure_ && !structure_->selectedItems().isEmpty();
}

Keys MainWindow::MarkedDocuments() const {
  return StructureInUse() ? structure_->MarkedKeys() : MarkedInList();
}

Keys MainWindow::MarkedInList() const {
  Keys keys;
  for (const QModelIndex& index : table_->selectionModel()->selectedRows())
    keys.push_back(filter_.KeyAt(index));
  return keys;
}

void MainWindow::ShowStructure() {
  const QModelIndex current = table_->currentIndex();
  if (current.isValid()) {
    structure_->ShowBelow(filter_.KeyAt(current));
  } else {
    structure_->clear();
  }
}

void MainWindow::ShowSelection() {
  const Keys collected = catalogue_.Collected();
  if (collected.empty()) return selection_->setText(texts::kNothingSelected.In(language_));
  QStringList numbers;
  for (const ObjectKey& key : collected) {
    if (numbers.size() == kNamedObjects) {
      numbers.append(QStringLiteral("..."));
      break;
    }
    const DocumentRow* row = documents_.Find(key);
    numbers.append(row != nullptr ? row->number : catalogue_.NumberOf(key));
  }
  selection_->setText(texts::kSelected.In(language_)
                          .arg(static_cast<qulonglong>(collected.size()))
                          .arg(numbers.join(QLatin1String(", "))));
}

void MainWindow::ShowCount() {
  count_->setText(texts::kDocuments.In(language_).arg(filter_.rowCount()).arg(documents_.rowCount()));
}

void MainWindow::EnableActions() {
  if (exchanges_ == nullptr || table_ == nullptr) return;
  const Keys marked = MarkedDocuments();
  for (QAction* action : onDocuments_)
    action->setEnabled(!marked.empty());
  latest_->setEnabled(marked.size() == 1);
  continue_->setEnabled(exchanges_->MarkedKey().has_value());
  properties_->setEnabled(!marked.empty() || exchanges_->MarkedKey().has_value());
}

void MainWindow::Run(const Work& work) {
  if (running_) return;
  const auto telling = [this](const Work& step) {
    try {
      step();
    } catch (const std::exception& error) {
      QMessageBox::critical(this, texts::kError.In(language_), qt::ToQt(error.what()).toHtmlEscaped());
    }
  };
  running_ = true;
  telling(work);
  running_ = false;
  telling([this] { Refresh(); });
}

}  // namespace tessel::client
