// The documents with search, filters and marks.
#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "document_model.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QTreeView;

namespace tessel::client {

class DocumentPane : public QWidget {
 public:
  DocumentPane(DocumentModel::IconSource iconOf, qt::Language language);
  ~DocumentPane() override;

  // Shows the documents. Marks, the current document, the filters and what is scrolled to stay as far as they
  // still exist; no callback is called.
  void Show(std::vector<DocumentRow> rows);
  [[nodiscard]] const DocumentModel& Documents() const { return documents_; }
  // In the order of the list.
  [[nodiscard]] std::vector<ObjectKey> MarkedKeys() const;
  [[nodiscard]] std::optional<ObjectKey> CurrentKey() const;
  [[nodiscard]] QTreeView* List() const { return list_; }
  void GoToSearch();

  // What the user did.
  std::function<void()> OnMarksChanged;
  std::function<void()> OnCurrentChanged;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void BuildSearch();
  void BuildList();
  void GoToFirstHit();
  // The classes that the documents have.
  void FillClassFilter();
  // Changes what is listed, and marks again what is still there.
  void Relist(const std::function<void()>& change);
  void Filter(const std::function<void()>& change);
  // Marks what is listed of the keys, and returns where `current` is now.
  QModelIndex Mark(const std::vector<ObjectKey>& keys, const std::optional<ObjectKey>& current);
  void ShowCount();

  qt::Language language_;
  DocumentModel::IconSource iconOf_;
  DocumentModel documents_;
  DocumentFilter filter_;
  QLineEdit* search_;
  QComboBox* classFilter_;
  QComboBox* stateFilter_;
  QLabel* count_;
  QTreeView* list_;
  bool showing_ = false;
};

}  // namespace tessel::client
