#include "structure_tree.h"

#include <QHeaderView>
#include <unordered_set>

#include "qt/text.h"
#include "texts.h"

namespace tessel::client {
namespace {

constexpr int kClassRole = Qt::UserRole;
constexpr int kObjectRole = Qt::UserRole + 1;
constexpr int kReadRole = Qt::UserRole + 2;  // whether what hangs below was read

ObjectKey KeyOf(const QTreeWidgetItem& item) {
  return {static_cast<ClassId>(item.data(0, kClassRole).toInt()), item.data(0, kObjectRole).toInt()};
}

}  // namespace

StructureTree::StructureTree(const Catalogue& catalogue, const DocumentModel& documents,
                             qt::Language language)
    : catalogue_(catalogue), documents_(documents) {
  setObjectName("structure");
  setAccessibleName("structure");
  setHeaderLabels({texts::kNumber.In(language), texts::kDescription.In(language)});
  setSelectionMode(ExtendedSelection);
  setUniformRowHeights(true);
  header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  connect(this, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) { Open(item); });
}

QTreeWidgetItem* StructureTree::MakeItem(const ObjectKey& key) const {
  const DocumentRow* row = documents_.Find(key);
  const QString number = row != nullptr ? row->number : catalogue_.NumberOf(key);
  auto* item = new QTreeWidgetItem({number, row != nullptr ? row->description : QString()});
  item->setIcon(0, catalogue_.IconOf(key.classId));
  item->setData(0, kClassRole, key.classId);
  item->setData(0, kObjectRole, key.objectId);
  item->setChildIndicatorPolicy(catalogue_.Below(key).empty() ? QTreeWidgetItem::DontShowIndicator
                                                              : QTreeWidgetItem::ShowIndicator);
  return item;
}

void StructureTree::ShowBelow(const ObjectKey& key) {
  clear();
  auto* root = MakeItem(key);
  addTopLevelItem(root);
  Open(root);
  root->setExpanded(true);
}

void StructureTree::Open(QTreeWidgetItem* item) {
  if (item->data(0, kReadRole).toBool()) return;
  item->setData(0, kReadRole, true);
  for (const ObjectKey& key : catalogue_.Below(KeyOf(*item)))
    item->addChild(MakeItem(key));
}

std::vector<ObjectKey> StructureTree::MarkedKeys() const {
  std::vector<ObjectKey> keys;
  // A shared part may be marked at several places.
  std::unordered_set<ObjectKey> seen;
  for (const QTreeWidgetItem* item : selectedItems()) {
    if (seen.insert(KeyOf(*item)).second) keys.push_back(KeyOf(*item));
  }
  return keys;
}

}  // namespace tessel::client
