#include "selection_dialog.h"

#include <QPushButton>
#include <QShortcut>
#include <QTreeWidget>

#include "qt/dialog_parts.h"
#include "texts.h"

namespace tessel::client {
namespace {

constexpr QSize kSize{520, 360};
constexpr int kPositionRole = Qt::UserRole;

QTreeWidget* MakeList(const std::vector<SelectedDocument>& documents,
                      const std::function<QIcon(ClassId)>& iconOf, qt::Language language) {
  auto* list = new QTreeWidget;
  list->setObjectName("selected");
  list->setAccessibleName(texts::kSelectionTitle.In(language));
  list->setRootIsDecorated(false);
  list->setUniformRowHeights(true);
  list->setSelectionMode(QTreeWidget::ExtendedSelection);
  list->setHeaderLabels({texts::kNumber.In(language), texts::kDescription.In(language)});
  for (std::size_t position = 0; position < documents.size(); ++position) {
    const SelectedDocument& document = documents[position];
    auto* item = new QTreeWidgetItem({document.number, document.description});
    item->setIcon(0, iconOf(document.key.classId));
    item->setData(0, kPositionRole, static_cast<qulonglong>(position));
    list->addTopLevelItem(item);
  }
  list->resizeColumnToContents(0);
  list->setCurrentItem(list->topLevelItem(0));
  return list;
}

void RemoveMarked(QTreeWidget& list) {
  qDeleteAll(list.selectedItems());
}

}  // namespace

std::optional<std::vector<ObjectKey>> EditSelection(const std::vector<SelectedDocument>& documents,
                                                    const std::function<QIcon(ClassId)>& iconOf,
                                                    qt::Language language, QWidget* parent) {
  qt::HostDialog dialog("selectedDocuments", texts::kSelectionTitle.In(language), parent);
  QTreeWidget* list = MakeList(documents, iconOf, language);
  dialog.Rows().addWidget(list, 1);
  QDialogButtonBox* buttons = dialog.AddButtons(language, true);
  auto* remove = buttons->addButton(texts::kRemove.In(language), QDialogButtonBox::ActionRole);
  remove->setObjectName("remove");
  QObject::connect(remove, &QPushButton::clicked, list, [list] { RemoveMarked(*list); });
  auto* empty = buttons->addButton(texts::kEmpty.In(language), QDialogButtonBox::ActionRole);
  empty->setObjectName("empty");
  QObject::connect(empty, &QPushButton::clicked, list, &QTreeWidget::clear);
  auto* deletes = new QShortcut(QKeySequence::Delete, list, nullptr, nullptr, Qt::WidgetShortcut);
  QObject::connect(deletes, &QShortcut::activated, list, [list] { RemoveMarked(*list); });
  dialog.resize(kSize);
  list->setFocus();
  if (dialog.Ask() != qt::HostDialog::kOk) return std::nullopt;
  std::vector<ObjectKey> kept;
  for (int row = 0; row < list->topLevelItemCount(); ++row)
    kept.push_back(documents[list->topLevelItem(row)->data(0, kPositionRole).toULongLong()].key);
  return kept;
}

}  // namespace tessel::client
