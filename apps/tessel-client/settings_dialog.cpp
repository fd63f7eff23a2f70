#include "settings_dialog.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QTreeWidget>

#include "administration/setting_keys.h"
#include "administration/settings_objects.h"
#include "administration/settings_text.h"
#include "host/error.h"
#include "qt/dialog_parts.h"
#include "qt/text.h"
#include "tell.h"
#include "texts.h"

namespace tessel::client {
namespace {

using administration::SettingKey;

constexpr QSize kSize{980, 560};
constexpr int kValueColumn = 1;
constexpr int kPositionRole = Qt::UserRole;  // in SettingKeys()

// Lets the values alone be edited.
class ValueDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override {
    return index.column() == kValueColumn ? QStyledItemDelegate::createEditor(parent, option, index)
                                          : nullptr;
  }
};

// One settings object as it was read and as it is to be.
struct EditedSettings {
  explicit EditedSettings(administration::SettingsObject settings)
      : object(std::move(settings)), before(object.Text()), text(administration::WithCrLf(before)) {}

  [[nodiscard]] QString Source() const {
    return qt::ToQt(object.Title()) + QLatin1String(": ") + qt::ToQt(object.Logins());
  }
  void Save(const PcSessionPtr& session) {
    const std::string after = text.Text();
    if (after == before) return;
    administration::WriteSettings(session, object, before, after);
    before = after;
  }

  administration::SettingsObject object;
  std::string before;
  administration::SettingsText text;
};

class SettingsDialog final : public qt::HostDialog {
 public:
  SettingsDialog(PcSessionPtr session, qt::Language language, QWidget* parent)
      : HostDialog("settings", texts::kSettingsTitle.In(language), parent),
        session_(std::move(session)),
        language_(language) {
    for (administration::SettingsObject& settings : administration::FindSettingsObjects(session_)) {
      if (settings.object) edited_.emplace_back(std::move(settings));
    }
    if (edited_.empty()) throw HostError(qt::FromQt(texts::kNoSettings.In(language_)));
    AddChoice();
    AddList();
    AddNote();
    QDialogButtonBox* buttons = AddButtons(language_, true);
    auto* reset = buttons->addButton(texts::kTakeDefault.In(language_), QDialogButtonBox::ActionRole);
    reset->setObjectName("default");
    connect(reset, &QPushButton::clicked, this, [this] { TakeDefault(); });
    resize(kSize);
    ShowObject();
    list_->setFocus();
  }

  void Save() {
    for (EditedSettings& edited : edited_)
      edited.Save(session_);
  }

 private:
  [[nodiscard]] EditedSettings& Shown() { return edited_[static_cast<std::size_t>(choice_->currentIndex())]; }
  [[nodiscard]] static const SettingKey& KeyOf(const QTreeWidgetItem& item) {
    return administration::SettingKeys()[item.data(0, kPositionRole).toULongLong()];
  }

  void AddChoice() {
    choice_ = new QComboBox;
    choice_->setObjectName("settingsObject");
    choice_->setAccessibleName(texts::kSettingsObject.In(language_));
    for (const EditedSettings& edited : edited_)
      choice_->addItem(edited.Source());
    connect(choice_, &QComboBox::currentIndexChanged, this, [this] { ShowObject(); });
    auto* label = new QLabel(texts::kSettingsObject.In(language_));
    label->setBuddy(choice_);
    Rows().addWidget(label);
    Rows().addWidget(choice_);
  }

  void AddList() {
    list_ = new QTreeWidget;
    list_->setObjectName("keys");
    list_->setAccessibleName(texts::kSettingsTitle.In(language_));
    list_->setHeaderLabels({texts::kKeyName.In(language_), texts::kValue.In(language_),
                            texts::kDefault.In(language_), texts::kMeaning.In(language_)});
    list_->setItemDelegate(new ValueDelegate(list_));
    list_->setAlternatingRowColors(true);
    list_->setEditTriggers(QTreeWidget::DoubleClicked | QTreeWidget::EditKeyPressed |
                           QTreeWidget::AnyKeyPressed);
    QTreeWidgetItem* section = nullptr;
    std::size_t position = 0;
    for (const SettingKey& key : administration::SettingKeys()) {
      const QString name = qt::ToQt(key.section);
      if (section == nullptr || section->text(0) != name) section = new QTreeWidgetItem(list_, {name});
      const QString standard =
          key.defaultIsProgramDirectory ? texts::kProgramDirectory.In(language_) : qt::ToQt(key.defaultText);
      auto* item =
          new QTreeWidgetItem(section, {qt::ToQt(key.name), QString(), standard, qt::ToQt(key.meaning)});
      item->setData(0, kPositionRole, static_cast<qulonglong>(position++));
      item->setToolTip(3, item->text(3));
      item->setFlags(item->flags() | Qt::ItemIsEditable);
    }
    list_->expandAll();
    connect(list_, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) { Change(*item); });
    connect(list_, &QTreeWidget::currentItemChanged, this, [this] { note_->clear(); });
    // Typing on any column edits the value.
    connect(list_, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item, int column) {
      if (item->parent() != nullptr && column != kValueColumn) list_->editItem(item, kValueColumn);
    });
    Rows().addWidget(list_, 1);
  }

  void AddNote() {
    note_ = new QLabel;
    note_->setObjectName("note");
    note_->setTextFormat(Qt::PlainText);
    note_->setWordWrap(true);
    QPalette colours = note_->palette();
    colours.setColor(QPalette::WindowText, WarningColour());
    note_->setPalette(colours);
    Rows().addWidget(note_);
  }

  void ShowObject() {
    for (int section = 0; section < list_->topLevelItemCount(); ++section) {
      QTreeWidgetItem* keys = list_->topLevelItem(section);
      for (int i = 0; i < keys->childCount(); ++i)
        ShowValue(*keys->child(i));
    }
    for (int column = 0; column <= 2; ++column)
      list_->resizeColumnToContents(column);
    note_->setText(administration::HasBareLineFeeds(Shown().before) ? texts::kBareLineFeeds.In(language_)
                                                                    : QString());
  }

  // What is set stands out from what is a default.
  void ShowValue(QTreeWidgetItem& item) {
    const QSignalBlocker quiet(list_);
    const SettingKey& key = KeyOf(item);
    const auto value = Shown().text.Find(key.section, key.name);
    item.setText(kValueColumn, value ? qt::ToQt(*value) : item.text(2));
    QFont font = list_->font();
    font.setBold(value.has_value());
    item.setFont(kValueColumn, font);
  }

  void Change(QTreeWidgetItem& item) {
    const SettingKey& key = KeyOf(item);
    const std::string value = qt::FromQt(item.text(kValueColumn));
    const std::string refusal = administration::RefusalOf(key, value);
    note_->setText(refusal.empty() ? QString()
                                   : texts::kNotTaken.In(language_).arg(
                                         qt::ToQt(key.FullName() + "=" + value), qt::ToQt(refusal)));
    const bool isShownDefault =
        !Shown().text.Find(key.section, key.name) && item.text(kValueColumn) == item.text(2);
    if (refusal.empty() && !isShownDefault) Shown().text.Set(key.section, key.name, value);
    ShowValue(item);
  }

  void TakeDefault() {
    QTreeWidgetItem* item = list_->currentItem();
    if (item == nullptr || item->parent() == nullptr) return;
    const SettingKey& key = KeyOf(*item);
    static_cast<void>(Shown().text.Unset(key.section, key.name));
    note_->clear();
    ShowValue(*item);
  }

  PcSessionPtr session_;
  qt::Language language_;
  std::vector<EditedSettings> edited_;
  QComboBox* choice_ = nullptr;
  QTreeWidget* list_ = nullptr;
  QLabel* note_ = nullptr;
};

}  // namespace

void EditSettings(const PcSessionPtr& session, qt::Language language, QWidget* parent) {
  SettingsDialog dialog(session, language, parent);
  while (dialog.Ask() == qt::HostDialog::kOk) {
    try {
      return dialog.Save();
    } catch (const std::exception& error) {
      Tell(error, language, &dialog);
    }
  }
}

}  // namespace tessel::client
