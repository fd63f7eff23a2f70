#include "exchange_panel.h"

#include <QHeaderView>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTreeWidget>
#include <iterator>

#include "texts.h"

namespace tessel::client {
namespace {

QString PhaseName(int phase, qt::Language language) {
  const bool known = phase >= 0 && phase < static_cast<int>(std::size(texts::kPhases));
  return known ? texts::kPhases[phase].In(language) : QString::number(phase);
}

}  // namespace

ExchangePanel::ExchangePanel(const Catalogue& catalogue, qt::Language language)
    : QSplitter(Qt::Horizontal),
      catalogue_(catalogue),
      language_(language),
      list_(new QTreeWidget),
      protocol_(new QPlainTextEdit) {
  list_->setObjectName("exchanges");
  list_->setAccessibleName("exchanges");
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAlternatingRowColors(true);
  list_->setHeaderLabels({texts::kNumber.In(language), texts::kPhase.In(language),
                          texts::kStatus.In(language), texts::kCompany.In(language),
                          texts::kContact.In(language), texts::kDirectory.In(language)});
  protocol_->setObjectName("protocol");
  protocol_->setAccessibleName("protocol");
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
  for (const ExchangeRow& row : rows_) {
    auto* item = new QTreeWidgetItem(
        {row.number, PhaseName(row.phase, language_), row.status, row.company, row.contact, row.directory});
    item->setIcon(0, catalogue_.IconOf(row.key.classId));
    list_->addTopLevelItem(item);
    if (marked == row.key) markedItem = item;
  }
  // When all are there: the view scrolls to it.
  if (markedItem != nullptr) list_->setCurrentItem(markedItem);
  showing_ = false;
  list_->verticalScrollBar()->setValue(down);
  list_->horizontalScrollBar()->setValue(aside);
  ShowProtocol();
}

void ExchangePanel::FitColumns() {
  for (int column = 0; column < list_->columnCount() - 1; ++column)
    list_->resizeColumnToContents(column);
}

std::optional<ObjectKey> ExchangePanel::MarkedKey() const {
  const QList<QTreeWidgetItem*> marked = list_->selectedItems();
  if (marked.isEmpty()) return std::nullopt;
  return rows_[static_cast<std::size_t>(list_->indexOfTopLevelItem(marked.front()))].key;
}

// A protocol that stays the same stays where it is scrolled to.
void ExchangePanel::ShowProtocol() {
  const std::optional<ObjectKey> marked = MarkedKey();
  const QString protocol = marked ? catalogue_.ProtocolOf(*marked) : QString();
  if (protocol == shownProtocol_) return;
  shownProtocol_ = protocol;
  protocol_->setPlainText(protocol);
}

}  // namespace tessel::client
