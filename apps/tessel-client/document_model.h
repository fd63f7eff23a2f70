// The documents as a table, and what the search and the filters leave of it.
#pragma once

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>
#include <functional>
#include <unordered_map>
#include <vector>

#include "database_contents.h"
#include "qt/language.h"

namespace tessel::client {

class DocumentModel : public QAbstractTableModel {
 public:
  enum Column { kNumber, kRevision, kDescription, kState, kLockedBy, kClass, kColumnCount };

  using IconSource = std::function<QIcon(ClassId)>;
  DocumentModel(IconSource iconOf, qt::Language language) : iconOf_(std::move(iconOf)), language_(language) {}

  void Show(std::vector<DocumentRow> rows);
  [[nodiscard]] const DocumentRow& RowAt(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  // Null for an object that is not listed.
  [[nodiscard]] const DocumentRow* Find(const ObjectKey& key) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  [[nodiscard]] QString TextAt(const DocumentRow& row, int column) const;

  IconSource iconOf_;
  qt::Language language_;
  std::vector<DocumentRow> rows_;
  std::unordered_map<ObjectKey, std::size_t> positions_;
};

// The name of a document's state.
[[nodiscard]] QString StateName(int state, qt::Language language);

class DocumentFilter : public QSortFilterProxyModel {
 public:
  explicit DocumentFilter(DocumentModel& documents);
  // Every word has to stand in some column, in any letter case.
  void SearchFor(const QString& text);
  // 0 lets all classes or states through.
  void OnlyClass(ClassId classId);
  void OnlyState(int state);

  [[nodiscard]] ObjectKey KeyAt(const QModelIndex& index) const;

 protected:
  [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

 private:
  DocumentModel& documents_;
  QStringList words_;
  ClassId classId_ = 0;
  int state_ = 0;
};

}  // namespace tessel::client
