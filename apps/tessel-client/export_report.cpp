#include "export_report.h"

#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <algorithm>

#include "common/outcome_words.h"
#include "qt/text.h"
#include "tell.h"
#include "texts.h"

namespace tessel::client {
namespace {

using qt::ToQt;

constexpr QSize kSize{720, 320};
constexpr int kMargins = 40;  // of the dialog around its table
constexpr int kDirectoryRole = Qt::UserRole;
enum Column { kCompany, kContact, kDocuments, kExchange, kDirectory, kColumnCount };

const ExchangeRow* ExchangeOf(const QString& directory, const std::vector<ExchangeRow>& exchanges) {
  const auto found = std::find_if(exchanges.begin(), exchanges.end(), [&](const ExchangeRow& row) {
    return FolderOf(row.directory).compare(directory, Qt::CaseInsensitive) == 0;
  });
  return found == exchanges.end() ? nullptr : &*found;
}

QTreeWidgetItem* ItemOf(const HandedOver& one, const ExchangeRow* row, const QString& path,
                        qt::Language language) {
  auto* item = new QTreeWidgetItem;
  item->setData(0, kDirectoryRole, ToQt(one.directory));
  item->setText(kDirectory, path);
  if (row != nullptr) {
    item->setText(kCompany, row->company);
    item->setText(kContact, row->contact);
    item->setText(kDocuments, QString::number(row->documents));
    item->setText(kExchange, row->number);
  }
  if (one.recordWhole) return item;
  item->setText(kExchange, (row == nullptr ? texts::kUnrecorded : texts::kHalfRecorded).In(language));
  for (int column = 0; column < kColumnCount; ++column)
    item->setForeground(column, WarningColour());
  return item;
}

QString HeadOf(const ExportOutcome& outcome, qt::Language language) {
  if (outcome.dispatch != DispatchEnd::kFinished) return texts::kExportFailed.In(language);
  if (!outcome.Whole()) return texts::kExportIncomplete.In(language);
  return texts::kExportDone.In(language);
}

QStringList ProblemsOf(const ExportOutcome& outcome, qt::Language language) {
  QStringList lines;
  if (outcome.monitor == MonitorStart::kFailed) lines.append(texts::kMonitorFailed.In(language));
  for (const Problem& problem : outcome.problems) {
    lines.append(ToQt(WordsOf(problem, SpeechOf(language))));
  }
  return lines;
}

QLabel* MakeHead(const QString& text, bool whole) {
  auto* head = new QLabel(text);
  head->setObjectName("head");
  head->setTextFormat(Qt::PlainText);
  head->setWordWrap(true);
  head->setTextInteractionFlags(Qt::TextSelectableByMouse);
  QFont font = head->font();
  font.setBold(true);
  head->setFont(font);
  if (whole) return head;
  QPalette colours = head->palette();
  colours.setColor(QPalette::WindowText, WarningColour());
  head->setPalette(colours);
  return head;
}

QTreeWidget* MakeTable(const ExportOutcome& outcome, const std::vector<ExchangeRow>& exchanges,
                       const std::function<QString(const QString&)>& native, qt::Language language) {
  auto* table = new QTreeWidget;
  table->setObjectName("handedOver");
  table->setAccessibleName(texts::kHandedOver.In(language));
  table->setRootIsDecorated(false);
  table->setHeaderLabels({texts::kCompany.In(language), texts::kContact.In(language),
                          texts::kDocumentCount.In(language), texts::kExchange.In(language),
                          texts::kDirectory.In(language)});
  for (const HandedOver& one : outcome.directories) {
    const QString directory = ToQt(one.directory);
    table->addTopLevelItem(ItemOf(one, ExchangeOf(directory, exchanges), native(directory), language));
  }
  for (int column = 0; column < kColumnCount; ++column)
    table->resizeColumnToContents(column);
  table->setCurrentItem(table->topLevelItem(0));
  return table;
}

QPlainTextEdit* MakeProblems(const QStringList& lines, qt::Language language) {
  auto* problems = new QPlainTextEdit(lines.join(QLatin1Char('\n')));
  problems->setObjectName("problems");
  problems->setAccessibleName(texts::kProblems.In(language));
  problems->setReadOnly(true);
  problems->setTabChangesFocus(true);
  return problems;
}

}  // namespace

bool WorthTelling(const ExportOutcome& outcome) {
  if (outcome.cancelled) return false;
  return outcome.dispatch != DispatchEnd::kNotRun || !outcome.problems.empty();
}

qt::HostDialog* MakeExportReport(const ExportOutcome& outcome, const std::vector<ExchangeRow>& exchanges,
                                 const std::function<QString(const QString&)>& native,
                                 const std::function<void(const QString&)>& open, qt::Language language,
                                 QWidget* parent) {
  auto* dialog = new qt::HostDialog("exportReport", texts::kExportTitle.In(language), parent);
  dialog->Rows().addWidget(MakeHead(HeadOf(outcome, language), outcome.Whole()));
  QTreeWidget* table = nullptr;
  if (!outcome.directories.empty()) {
    table = MakeTable(outcome, exchanges, native, language);
    dialog->Rows().addWidget(table, 1);
  }
  const QStringList problems = ProblemsOf(outcome, language);
  if (!problems.isEmpty()) dialog->Rows().addWidget(MakeProblems(problems, language), 1);
  QDialogButtonBox* buttons = dialog->AddButtons(language, false);
  if (table != nullptr) {
    auto* folder = buttons->addButton(texts::kOpenFolder.In(language), QDialogButtonBox::ActionRole);
    folder->setObjectName("openFolder");
    QObject::connect(folder, &QPushButton::clicked, table, [table, open] {
      if (const QTreeWidgetItem* item = table->currentItem()) open(item->data(0, kDirectoryRole).toString());
    });
  }
  // Wide enough for the paths; the screen is the limit.
  dialog->resize(table == nullptr ? kSize
                                  : kSize.expandedTo({table->header()->length() + kMargins, kSize.height()}));
  buttons->findChild<QPushButton*>("ok")->setFocus();
  return dialog;
}

}  // namespace tessel::client
