// The data exchanges with their status, and the protocol of the marked one.
#pragma once

#include <QSplitter>
#include <functional>
#include <optional>
#include <vector>

#include "database_contents.h"
#include "qt/language.h"

class QPlainTextEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace tessel::client {

class ExchangePanel : public QSplitter {
 public:
  enum Column {
    kNumberColumn,
    kPhaseColumn,
    kStatusColumn,
    kDateColumn,
    kSenderColumn,
    kCompanyColumn,
    kContactColumn,
    kDocumentsColumn,
    kDirectoryColumn
  };

  ExchangePanel(const DatabaseContents& contents, qt::Language language);

  // Keeps the mark where it is; no callback is called.
  void Show(std::vector<ExchangeRow> rows);
  void FitColumns();
  [[nodiscard]] std::optional<ObjectKey> MarkedKey() const;
  // Null when none is marked; valid until the next Show.
  [[nodiscard]] const ExchangeRow* Marked() const;
  [[nodiscard]] QTreeWidget* List() const { return list_; }

  // The user has marked another one.
  std::function<void()> OnMarkChanged;

 private:
  void ShowProtocol();
  [[nodiscard]] QTreeWidgetItem* MakeItem(const ExchangeRow& row) const;

  const DatabaseContents& contents_;
  qt::Language language_;
  std::vector<ExchangeRow> rows_;
  QString shownProtocol_;
  bool showing_ = false;
  QTreeWidget* list_;
  QPlainTextEdit* protocol_;
};

}  // namespace tessel::client
