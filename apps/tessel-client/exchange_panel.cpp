#include "exchange_panel.h"

#include <QHeaderView>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTreeWidget>
#include <algorithm>
#include <iterator>

#include "tell.h"
#include "texts.h"

namespace tessel::client {
namespace {

constexpr int kPositionRole = Qt::UserRole;
constexpr int kWidestStatus = 260;

QString PhaseName(int phase, qt::Language language) {
  const bool known = phase >= 0 && phase < static_cast<int>(std::size(texts::kPhases));
  return known ? texts::kPhases[phase].In(language) : QString::number(phase);
}

}  // namespace

ExchangePanel::ExchangePanel(const DatabaseContents& contents, qt::Language language)
    : QSplitter(Qt::Horizontal),
      contents_(contents),
      language_(language),
      list_(new QTreeWidget),
      protocol_(new QPlainTextEdit) {
  list_->setObjectName("exchanges");
  list_->setAccessibleName(texts::kExchanges.In(language));
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAlternatingRowColors(true);
  QStringList labels;
  for (const qt::BothTexts& label :
       {texts::kNumber, texts::kPhase, texts::kStatus, texts::kDate, texts::kSender, texts::kCompany,
        texts::kContact, texts::kDocumentCount, texts::kDirectory})
    labels.append(label.In(language));
  list_->setHeaderLabels(labels);
  list_->setSortingEnabled(true);
  list_->sortByColumn(kNumberColumn, Qt::DescendingOrder);
  protocol_->setObjectName("protocol");
  protocol_->setAccessibleName(texts::kProtocol.In(language));
  protocol_->setReadOnly(true);
  protocol_->setTabChangesFocus(true);
  protocol_->setPlaceholderText(texts::kProtocol.In(language));
  addWidget(list_);
  addWidget(protocol_);
  setStretchFactor(0, 3);
  setStretchFactor(1, 2);
  connect(list_, &QTreeWidget::itemSelectionChanged, this, [this] {
    if (showing_) return;
    ShowProtocol();
    if (OnMarkChanged) OnMarkChanged();
  });
}

void ExchangePanel::Show(std::vector<ExchangeRow> rows) {
  const std::optional<ObjectKey> marked = MarkedKey();
  const int down = list_->verticalScrollBar()->value();
  const int aside = list_->horizontalScrollBar()->value();
  QTreeWidgetItem* markedItem = nullptr;
  showing_ = true;
  list_->clear();
  rows_ = std::move(rows);
  // Sorted once, when all are there.
  list_->setSortingEnabled(false);
  for (std::size_t position = 0; position < rows_.size(); ++position) {
    QTreeWidgetItem* item = MakeItem(rows_[position]);
    item->setData(0, kPositionRole, static_cast<qulonglong>(position));
    list_->addTopLevelItem(item);
    if (marked == rows_[position].key) markedItem = item;
  }
  list_->setSortingEnabled(true);
  // When all are there: the view scrolls to it.
  if (markedItem != nullptr) list_->setCurrentItem(markedItem);
  showing_ = false;
  list_->verticalScrollBar()->setValue(down);
  list_->horizontalScrollBar()->setValue(aside);
  ShowProtocol();
}

// One that was stopped was not sent, and somebody has to do something about it.
QTreeWidgetItem* ExchangePanel::MakeItem(const ExchangeRow& row) const {
  auto* item =
      new QTreeWidgetItem({row.number, PhaseName(row.phase, language_), row.status, row.date, row.sender,
                           row.company, row.contact, QString(), FolderOf(row.directory)});
  item->setData(kDocumentsColumn, Qt::DisplayRole, row.documents);
  item->setIcon(0, contents_.IconOf(row.key.classId));
  item->setToolTip(kDirectoryColumn, FolderOf(row.directory));
  item->setToolTip(kStatusColumn, row.status);
  const auto unknown = [&](Column column, const qt::BothTexts& text) {
    if (!item->text(column).isEmpty()) return;
    item->setText(column, text.In(language_));
    item->setForeground(column, palette().color(QPalette::PlaceholderText));
  };
  unknown(kDateColumn, texts::kUnknown);
  unknown(kSenderColumn, texts::kUnknown);
  unknown(kDirectoryColumn, texts::kUnknownDirectory);
  if (row.phase != kPhaseStopped) return item;
  QFont font = list_->font();
  font.setBold(true);
  for (int column = 0; column < list_->columnCount(); ++column) {
    item->setForeground(column, WarningColour());
    item->setFont(column, font);
  }
  return item;
}

void ExchangePanel::FitColumns() {
  for (int column = 0; column < list_->columnCount() - 1; ++column)
    list_->resizeColumnToContents(column);
  // A reason is long; its whole text is in the tip and in the protocol.
  list_->setColumnWidth(kStatusColumn, std::min(list_->columnWidth(kStatusColumn), kWidestStatus));
}

const ExchangeRow* ExchangePanel::Marked() const {
  const QList<QTreeWidgetItem*> marked = list_->selectedItems();
  return marked.isEmpty() ? nullptr : &rows_[marked.front()->data(0, kPositionRole).toULongLong()];
}

std::optional<ObjectKey> ExchangePanel::MarkedKey() const {
  const ExchangeRow* marked = Marked();
  return marked == nullptr ? std::nullopt : std::optional(marked->key);
}

// A protocol that stays the same stays where it is scrolled to.
void ExchangePanel::ShowProtocol() {
  const std::optional<ObjectKey> marked = MarkedKey();
  const QString protocol = marked ? contents_.ProtocolOf(*marked) : QString();
  if (protocol == shownProtocol_) return;
  shownProtocol_ = protocol;
  protocol_->setPlainText(protocol);
}

}  // namespace tessel::client
