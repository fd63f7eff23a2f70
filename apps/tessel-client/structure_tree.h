// The product structure below a document as a tree; branches are read when they are opened.
#pragma once

#include <QTreeWidget>
#include <vector>

#include "catalogue.h"
#include "document_model.h"

namespace tessel::client {

class StructureTree : public QTreeWidget {
 public:
  StructureTree(const Catalogue& catalogue, const DocumentModel& documents, qt::Language language);

  // Shows a document and what hangs below it.
  void ShowBelow(const ObjectKey& key);
  [[nodiscard]] std::vector<ObjectKey> MarkedKeys() const;

 private:
  [[nodiscard]] QTreeWidgetItem* MakeItem(const ObjectKey& key) const;
  void Open(QTreeWidgetItem* item);

  const Catalogue& catalogue_;
  const DocumentModel& documents_;
};

}  // namespace tessel::client
