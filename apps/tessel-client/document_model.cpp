#include "document_model.h"

#include <algorithm>
#include <iterator>

#include "texts.h"

namespace tessel::client {
namespace {

constexpr qt::BothTexts kHeads[]{texts::kNumber, texts::kRevision, texts::kDescription,
                                 texts::kState,  texts::kLockedBy, texts::kClass};

}  // namespace

QString StateName(int state, qt::Language language) {
  const bool known = state >= 0 && state < static_cast<int>(std::size(texts::kStates));
  return known ? texts::kStates[state].In(language) : QString::number(state);
}

void DocumentModel::Show(std::vector<DocumentRow> rows) {
  beginResetModel();
  rows_ = std::move(rows);
  positions_.clear();
  for (std::size_t position = 0; position < rows_.size(); ++position)
    positions_.emplace(rows_[position].key, position);
  endResetModel();
}

const DocumentRow* DocumentModel::Find(const ObjectKey& key) const {
  const auto found = positions_.find(key);
  return found == positions_.end() ? nullptr : &rows_[found->second];
}

int DocumentModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int DocumentModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumnCount;
}

QString DocumentModel::TextAt(const DocumentRow& row, int column) const {
  switch (column) {
    case kNumber:
      return row.number;
    case kRevision:
      return row.revision;
    case kDescription:
      return row.description;
    case kState:
      return StateName(row.state, language_);
    case kLockedBy:
      return row.lockedBy;
    default:
      return row.className;
  }
}

QVariant DocumentModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const DocumentRow& row = RowAt(index.row());
  if (role == Qt::DisplayRole) return TextAt(row, index.column());
  if (role == Qt::DecorationRole && index.column() == kNumber) return iconOf_(row.key.classId);
  return {};
}

QVariant DocumentModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return kHeads[section].In(language_);
}

DocumentFilter::DocumentFilter(DocumentModel& documents) : documents_(documents) {
  setSourceModel(&documents_);
  setSortCaseSensitivity(Qt::CaseInsensitive);
  setSortLocaleAware(true);
}

void DocumentFilter::SearchFor(const QString& text) {
  words_ = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  invalidateFilter();
}

void DocumentFilter::OnlyClass(ClassId classId) {
  classId_ = classId;
  invalidateFilter();
}

void DocumentFilter::OnlyState(int state) {
  state_ = state;
  invalidateFilter();
}

ObjectKey DocumentFilter::KeyAt(const QModelIndex& index) const {
  return documents_.RowAt(mapToSource(index).row()).key;
}

bool DocumentFilter::filterAcceptsRow(int row, const QModelIndex& parent) const {
  const DocumentRow& document = documents_.RowAt(row);
  if (classId_ != 0 && document.key.classId != classId_) return false;
  if (state_ != 0 && document.state != state_) return false;
  return std::all_of(words_.begin(), words_.end(), [&](const QString& word) {
    for (int column = 0; column < DocumentModel::kColumnCount; ++column) {
      const QString text = documents_.index(row, column, parent).data().toString();
      if (text.contains(word, Qt::CaseInsensitive)) return true;
    }
    return false;
  });
}

}  // namespace tessel::client
