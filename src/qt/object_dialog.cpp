#include "qt/object_dialog.h"

#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTreeWidget>
#include <algorithm>

#include "qt/text.h"

namespace tessel::qt {
namespace {

constexpr BothTexts kTitle{"Object", "Objekt"};
constexpr BothTexts kAttributes{"Attributes", "Attribute"};
constexpr BothTexts kAttribute{"Attribute", "Attribut"};
constexpr BothTexts kValue{"Value", "Wert"};
constexpr QSize kSize{620, 460};

bool HasLines(const std::string& text) {
  const auto lineEnd = text.find_first_of("\r\n");
  return lineEnd != std::string::npos && text.find_first_not_of("\r\n", lineEnd) != std::string::npos;
}

QTreeWidget* MakeAttributeList(const embedded::ObjectDialogRequest& request, Language language) {
  auto* list = new QTreeWidget;
  list->setObjectName("attributes");
  list->setAccessibleName(kAttributes.In(language));
  list->setRootIsDecorated(false);
  list->setAlternatingRowColors(true);
  list->setHeaderLabels({kAttribute.In(language), kValue.In(language)});
  for (const auto& [name, value] : request.attributes) {
    const QString text = ToQt(value);
    auto* item = new QTreeWidgetItem({ToQt(name), text.simplified()});
    item->setToolTip(1, ToolTip(text));
    list->addTopLevelItem(item);
  }
  list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  return list;
}

QPlainTextEdit* MakeTextPage(const std::string& text) {
  auto* page = new QPlainTextEdit(ToQt(text));
  page->setReadOnly(true);
  page->setTabChangesFocus(true);
  return page;
}

QString HeadLine(const embedded::ObjectDialogRequest& request) {
  QStringList keys;
  for (const ObjectKey& key : request.objects)
    keys.append(ToQt(ObjectKeyText(key, ':')));
  return keys.join(QLatin1String(", "));
}

}  // namespace

HostDialog* MakeObjectDialog(const embedded::ObjectDialogRequest& request, const QIcon& icon,
                             Language language, QWidget* parent) {
  const QString title = request.title.empty() ? kTitle.In(language) : ToQt(request.title);
  auto* dialog = new HostDialog("objectDialog", title, parent);
  auto* head = new QHBoxLayout;
  auto* picture = new QLabel;
  picture->setPixmap(icon.pixmap(24));
  auto* keys = new QLabel(HeadLine(request));
  keys->setTextFormat(Qt::PlainText);
  head->addWidget(picture);
  head->addWidget(keys, 1);
  dialog->Rows().addLayout(head);

  auto* pages = new QTabWidget;
  pages->setObjectName("pages");
  pages->addTab(MakeAttributeList(request, language), kAttributes.In(language));
  for (const auto& [name, value] : request.attributes) {
    if (HasLines(value)) pages->addTab(MakeTextPage(value), Literal(name));
  }
  pages->setCurrentIndex(std::clamp(request.page - 1, 0, pages->count() - 1));
  dialog->Rows().addWidget(pages, 1);
  dialog->AddButtons(language, request.modal);
  dialog->resize(kSize);
  return dialog;
}

}  // namespace tessel::qt
