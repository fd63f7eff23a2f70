#include "structure_tree.h"

#include <QHeaderView>
#include <QTreeWidgetItemIterator>
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

StructureTree::StructureTree(const DatabaseContents& contents, const DocumentModel& documents,
                             qt::Language language)
    : contents_(contents), documents_(documents) {
  setObjectName("structure");
  setAccessibleName(texts::kStructure.In(language));
  setHeaderLabels({texts::kNumber.In(language), texts::kDescription.In(language)});
  setSelectionMode(ExtendedSelection);
  setUniformRowHeights(true);
  setExpandsOnDoubleClick(false);  // it opens the object
  header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  connect(this, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) { Open(item); });
}

QTreeWidgetItem* StructureTree::MakeItem(const ObjectKey& key) const {
  auto* item = new QTreeWidgetItem;
  item->setData(0, kClassRole, key.classId);
  item->setData(0, kObjectRole, key.objectId);
  item->setIcon(0, contents_.IconOf(key.classId));
  Describe(*item);
  return item;
}

void StructureTree::Describe(QTreeWidgetItem& item) const {
  const ObjectKey key = KeyOf(item);
  const DocumentRow* row = documents_.Find(key);
  item.setText(0, row != nullptr ? row->number : contents_.NumberOf(key));
  item.setText(1, row != nullptr ? row->description : QString());
  item.setChildIndicatorPolicy(contents_.Below(key).empty() ? QTreeWidgetItem::DontShowIndicator
                                                            : QTreeWidgetItem::ShowIndicator);
}

void StructureTree::ShowBelow(const ObjectKey& key) {
  QTreeWidgetItem* root = topLevelItem(0);
  if (root != nullptr && KeyOf(*root) == key) return Update(*root);
  clear();
  root = MakeItem(key);
  addTopLevelItem(root);
  Open(root);
  root->setExpanded(true);
}

void StructureTree::Open(QTreeWidgetItem* item) {
  if (item->data(0, kReadRole).toBool()) return;
  for (const ObjectKey& key : contents_.Below(KeyOf(*item)))
    item->addChild(MakeItem(key));
  item->setData(0, kReadRole, true);
}

void StructureTree::Update(QTreeWidgetItem& item) {
  Describe(item);
  if (!item.data(0, kReadRole).toBool()) return;
  const std::vector<ObjectKey> below = contents_.Below(KeyOf(item));
  std::unordered_multiset<ObjectKey> staying(below.begin(), below.end());
  for (int position = item.childCount() - 1; position >= 0; --position) {
    const auto found = staying.find(KeyOf(*item.child(position)));
    if (found == staying.end()) {
      delete item.takeChild(position);
    } else {
      staying.erase(found);
    }
  }
  int position = 0;
  for (const ObjectKey& key : below) {
    QTreeWidgetItem* child = item.child(position);
    if (child != nullptr && KeyOf(*child) == key) {
      Update(*child);
    } else {
      item.insertChild(position, MakeItem(key));
    }
    ++position;
  }
  // Left over only where the order has changed.
  while (item.childCount() > position)
    delete item.takeChild(position);
}

std::vector<ObjectKey> StructureTree::MarkedKeys() const {
  std::vector<ObjectKey> keys;
  std::unordered_set<ObjectKey> seen;
  for (QTreeWidgetItemIterator item(const_cast<StructureTree*>(this), QTreeWidgetItemIterator::Selected);
       *item; ++item) {
    if (seen.insert(KeyOf(**item)).second) keys.push_back(KeyOf(**item));
  }
  return keys;
}

}  // namespace tessel::client
