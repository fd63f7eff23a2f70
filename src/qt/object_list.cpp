#include "qt/object_list.h"

#include <QHeaderView>

#include "qt/text.h"

namespace tessel::qt {
namespace {

constexpr BothTexts kDescription{"Description", "Bezeichnung"};
constexpr BothTexts kKey{"Object", "Objekt"};
constexpr BothTexts kObjects{"Objects", "Objekte"};

}  // namespace

QTreeWidget* MakeObjectList(const std::vector<embedded::DialogObject>& objects,
                            const std::function<QIcon(const ObjectKey&)>& iconOf, Language language,
                            QWidget* parent) {
  auto* list = new QTreeWidget(parent);
  list->setObjectName("objects");
  list->setAccessibleName(kObjects.In(language));
  list->setRootIsDecorated(false);
  list->setUniformRowHeights(true);
  list->setHeaderLabels({kDescription.In(language), kKey.In(language)});
  QList<QTreeWidgetItem*> items;
  for (std::size_t position = 0; position < objects.size(); ++position) {
    const embedded::DialogObject& object = objects[position];
    auto* item =
        new QTreeWidgetItem({ToQt(object.description).simplified(), ToQt(ObjectKeyText(object.key, ':'))});
    item->setIcon(0, iconOf(object.key));
    item->setData(0, Qt::UserRole, QVariant::fromValue(static_cast<qulonglong>(position)));
    items.append(item);
  }
  list->addTopLevelItems(items);
  list->header()->setStretchLastSection(false);
  list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  list->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
  return list;
}

std::size_t PositionOf(const QTreeWidgetItem& item) {
  return static_cast<std::size_t>(item.data(0, Qt::UserRole).toULongLong());
}

}  // namespace tessel::qt
