// The data exchanges with their status, and the protocol of the marked one.
#pragma once

#include <QSplitter>
#include <functional>
#include <optional>
#include <vector>

#include "catalogue.h"
#include "qt/language.h"

class QPlainTextEdit;
class QTreeWidget;

namespace tessel::client {

class ExchangePanel : public QSplitter {
 public:
  ExchangePanel(const Catalogue& catalogue, qt::Language language);

  // Keeps the mark where it is; no callback is called.
  void Show(std::vector<ExchangeRow> rows);
  void FitColumns();
  [[nodiscard]] std::optional<ObjectKey> MarkedKey() const;
  [[nodiscard]] QTreeWidget* List() const { return list_; }

  // The user has marked another one.
  std::function<void()> OnMarkChanged;

 private:
  void ShowProtocol();

  const Catalogue& catalogue_;
  qt::Language language_;
  std::vector<ExchangeRow> rows_;
  QString shownProtocol_;
  bool showing_ = false;
  QTreeWidget* list_;
  QPlainTextEdit* protocol_;
};

}  // namespace tessel::client
