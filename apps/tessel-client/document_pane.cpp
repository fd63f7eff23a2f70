#include "document_pane.h"

#include <QComboBox>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>
#include <set>
#include <unordered_set>

#include "texts.h"

namespace tessel::client {
namespace {

constexpr int kSearchLetters = 14;  // the search is never narrower
constexpr int kWideLetters = 80;    // room for all words of the row

}  // namespace

DocumentPane::DocumentPane(DocumentModel::IconSource iconOf, qt::Language language)
    : language_(language),
      iconOf_(std::move(iconOf)),
      documents_(iconOf_, language),
      filter_(documents_),
      search_(new QLineEdit),
      classFilter_(new QComboBox),
      stateFilter_(new QComboBox),
      count_(new QLabel),
      list_(new QTreeView) {
  BuildSearch();
  BuildList();
  auto* searchRow = new QHBoxLayout;
  searchRow->addWidget(search_, 1);
  searchRow->addWidget(classFilter_);
  searchRow->addWidget(stateFilter_);
  searchRow->addWidget(count_);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addLayout(searchRow);
  rows->addWidget(list_, 1);
}

// The list goes before what it shows.
DocumentPane::~DocumentPane() {
  OnMarksChanged = nullptr;
  OnCurrentChanged = nullptr;
  delete list_;
}

void DocumentPane::BuildSearch() {
  search_->setObjectName("search");
  search_->setAccessibleName(texts::kSearch.In(language_));
  search_->setMinimumWidth(fontMetrics().averageCharWidth() * kSearchLetters);
  search_->setPlaceholderText(texts::kSearch.In(language_));
  search_->setClearButtonEnabled(true);
  classFilter_->setObjectName("classFilter");
  classFilter_->setAccessibleName(texts::kClass.In(language_));
  classFilter_->addItem(texts::kAllClasses.In(language_), 0);
  stateFilter_->setObjectName("stateFilter");
  stateFilter_->setAccessibleName(texts::kState.In(language_));
  stateFilter_->addItem(texts::kAllStates.In(language_), 0);
  for (int state = 1; state < static_cast<int>(std::size(texts::kStates)); ++state)
    stateFilter_->addItem(StateName(state, language_), state);
  connect(search_, &QLineEdit::textChanged, this,
          [this](const QString& text) { Filter([&] { filter_.SearchFor(text); }); });
  connect(search_, &QLineEdit::returnPressed, this, [this] { GoToFirstHit(); });
  connect(classFilter_, &QComboBox::currentIndexChanged, this, [this] {
    Filter([this] { filter_.OnlyClass(static_cast<ClassId>(classFilter_->currentData().toInt())); });
  });
  connect(stateFilter_, &QComboBox::currentIndexChanged, this,
          [this] { Filter([this] { filter_.OnlyState(stateFilter_->currentData().toInt()); }); });
}

void DocumentPane::BuildList() {
  list_->setObjectName("documents");
  list_->setAccessibleName(texts::kDocumentCount.In(language_));
  list_->setModel(&filter_);
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAlternatingRowColors(true);
  list_->setSortingEnabled(true);
  list_->setSelectionMode(QTreeView::ExtendedSelection);
  list_->sortByColumn(DocumentModel::kNumber, Qt::AscendingOrder);
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    if (!showing_ && OnMarksChanged) OnMarksChanged();
  });
  connect(list_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
    if (!showing_ && OnCurrentChanged) OnCurrentChanged();
  });
}

void DocumentPane::GoToSearch() {
  search_->setFocus();
  search_->selectAll();
}

void DocumentPane::GoToFirstHit() {
  const QModelIndex first = filter_.index(0, 0);
  if (!first.isValid()) return;
  list_->setFocus();
  list_->selectionModel()->setCurrentIndex(first,
                                           QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void DocumentPane::Show(std::vector<DocumentRow> rows) {
  const int scrolled = list_->verticalScrollBar()->value();
  Relist([&] {
    documents_.Show(std::move(rows));
    FillClassFilter();
  });
  list_->verticalScrollBar()->setValue(scrolled);
}

void DocumentPane::Filter(const std::function<void()>& change) {
  const std::optional<ObjectKey> current = CurrentKey();
  Relist(change);
  if (OnMarksChanged) OnMarksChanged();
  if (OnCurrentChanged && CurrentKey() != current) OnCurrentChanged();
}

// Without marks meanwhile: the view would follow each of them, row by row.
void DocumentPane::Relist(const std::function<void()>& change) {
  const std::vector<ObjectKey> marked = MarkedKeys();
  const std::optional<ObjectKey> current = CurrentKey();
  const int column = list_->currentIndex().column();
  const int aside = list_->horizontalScrollBar()->value();
  showing_ = true;
  list_->selectionModel()->clearSelection();
  change();
  const QModelIndex stillCurrent = Mark(marked, current);
  if (stillCurrent.isValid())
    list_->selectionModel()->setCurrentIndex(stillCurrent.siblingAtColumn(column),
                                             QItemSelectionModel::NoUpdate);
  showing_ = false;
  list_->horizontalScrollBar()->setValue(aside);
  ShowCount();
}

void DocumentPane::FillClassFilter() {
  std::set<std::pair<QString, ClassId>> classes;
  for (int row = 0; row < documents_.rowCount(); ++row)
    classes.emplace(documents_.RowAt(row).className, documents_.RowAt(row).key.classId);
  const QSignalBlocker quiet(classFilter_);
  const QVariant chosen = classFilter_->currentData();
  while (classFilter_->count() > 1)
    classFilter_->removeItem(1);
  for (const auto& [name, classId] : classes)
    classFilter_->addItem(iconOf_(classId), name, classId);
  classFilter_->setCurrentIndex(std::max(classFilter_->findData(chosen), 0));
  filter_.OnlyClass(static_cast<ClassId>(classFilter_->currentData().toInt()));
}

// Neighbours become one range: the selection is slow with many.
QModelIndex DocumentPane::Mark(const std::vector<ObjectKey>& keys, const std::optional<ObjectKey>& current) {
  const std::unordered_set<ObjectKey> wanted(keys.begin(), keys.end());
  QItemSelection marks;
  QModelIndex currentIndex;
  const int rows = filter_.rowCount();
  int first = -1;  // of the range at hand
  for (int row = 0; row <= rows; ++row) {
    const QModelIndex index = filter_.index(row, 0);
    const bool isMarked = index.isValid() && wanted.contains(filter_.KeyAt(index));
    if (isMarked && first < 0) first = row;
    if (!isMarked && first >= 0) {
      marks.append(QItemSelectionRange(filter_.index(first, 0),
                                       filter_.index(row - 1, DocumentModel::kColumnCount - 1)));
      first = -1;
    }
    if (index.isValid() && filter_.KeyAt(index) == current) currentIndex = index;
  }
  list_->selectionModel()->select(marks, QItemSelectionModel::Select);
  return currentIndex;
}

std::vector<ObjectKey> DocumentPane::MarkedKeys() const {
  std::vector<int> rows;
  for (const QItemSelectionRange& range : list_->selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row)
      rows.push_back(row);
  }
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  std::vector<ObjectKey> keys;
  for (const int row : rows)
    keys.push_back(filter_.KeyAt(filter_.index(row, 0)));
  return keys;
}

std::optional<ObjectKey> DocumentPane::CurrentKey() const {
  const QModelIndex current = list_->currentIndex();
  return current.isValid() ? std::optional(filter_.KeyAt(current)) : std::nullopt;
}

// The search needs room more than the word behind the numbers.
void DocumentPane::ShowCount() {
  const bool narrow = width() < fontMetrics().averageCharWidth() * kWideLetters;
  count_->setText((narrow ? texts::kDocumentsShort : texts::kDocuments)
                      .In(language_)
                      .arg(filter_.rowCount())
                      .arg(documents_.rowCount()));
}

void DocumentPane::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  ShowCount();
}

}  // namespace tessel::client
