// The product structure below a document as a tree; branches are read when they are opened.
#pragma once

#include <QTreeWidget>
#include <vector>

#include "database_contents.h"
#include "document_model.h"

namespace tessel::client {

class StructureTree : public QTreeWidget {
 public:
  StructureTree(const DatabaseContents& contents, const DocumentModel& documents, qt::Language language);

  // Shows a document and what hangs below it. When it is shown already, it is read anew: what still hangs
  // there stays open and marked as it was.
  void ShowBelow(const ObjectKey& key);
  // In the order of the tree, each once: a shared part may be marked at several places.
  [[nodiscard]] std::vector<ObjectKey> MarkedKeys() const;

 private:
  [[nodiscard]] QTreeWidgetItem* MakeItem(const ObjectKey& key) const;
  void Describe(QTreeWidgetItem& item) const;
  void Open(QTreeWidgetItem* item);
  void Update(QTreeWidgetItem& item);

  const DatabaseContents& contents_;
  const DocumentModel& documents_;
};

}  // namespace tessel::client
