// Makes the pictures of the documentation: every page, the dialogs and the client, in both languages.
// Usage: tessel_screenshots DIRECTORY
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QSettings>
#include <QTreeView>
#include <QTreeWidget>
#include <cstdlib>
#include <iostream>

#include "export_report.h"
#include "headless/reporting_launcher.h"
#include "main_window.h"
#include "qt/person.h"
#include "settings_dialog.h"

namespace tessel::test {
namespace {

constexpr ObjectKey kGearbox{1201, 4711};
constexpr ObjectKey kShafts{1201, 4712};
constexpr ObjectKey kPinion{1202, 4725};
constexpr ObjectKey kStopped{900, 701};
constexpr QSize kClientSize{1180, 700};
constexpr int kTitleHeight = 24;

// The pages of all send modes, and the dialogs on the way; the last look at each is what the picture shows.
Walk Tour(const std::string& subject, const std::string& content) {
  Walk walk;
  walk.Enter().Click("Check1(4)").Click("Command1");
  walk.Click("Check1").Enter().Enter();
  walk.ClickNode("TreeView1", 0).ClickNode("TreeView2", 0).Click("Command4").Click("Command1");
  walk.ClickNode("TreeView1", 1).Enter();
  walk.Type("Text1(1)", "4500012345").Type("Text1(2)", "2024-02-15").Type("Text2(1)", content);
  walk.Click("Command1");
  // An export by mail, object by object.
  walk.Enter().Click("Check1(1)").Click("Command1");
  walk.ClickNode("TreeView2", 1)
      .Click("Command1")
      .ClickNode("TreeView2", 0)
      .Click("Command1")
      .Click("Command1");
  walk.ClickNode("TreeView1", 0).ClickNode("TreeView2", 0).Click("Command4");
  walk.ClickNode("TreeView1", 1).ClickNode("TreeView2", 0).Click("Command4").Click("Command4").Answer();
  walk.Click("Command1");
  walk.Type("Text1(2)", subject).Type("Text1(3)", content).Click("Command1");
  walk.Type("Text1(2)", subject).Click("Command1");
  return walk;
}

// The picture under a title bar, as a window manager would put one there.
QPixmap Framed(const QPixmap& content, const QString& title) {
  QPixmap framed(content.width(), content.height() + kTitleHeight);
  framed.fill(QColor("#d4dbe3"));
  QPainter painter(&framed);
  painter.drawPixmap(0, kTitleHeight, content);
  QFont font = QApplication::font();
  font.setBold(true);
  font.setPixelSize(12);
  painter.setFont(font);
  painter.drawText(QRect(8, 0, content.width() - 16, kTitleHeight), Qt::AlignVCenter, title);
  return framed;
}

class Photographer {
 public:
  Photographer(QDir directory, QString language)
      : directory_(std::move(directory)), language_(std::move(language)) {}
  void Take(QWidget& shown, const QString& name) const {
    const QString file = directory_.filePath(name + QLatin1Char('-') + language_ + QLatin1String(".png"));
    if (!Framed(shown.grab(), shown.windowTitle()).save(file))
      std::cerr << "cannot write " << file.toStdString() << "\n";
  }
  void Look(QWidget& shown) const {
    if (shown.inherits("QMenu")) return;
    Take(shown, shown.inherits("QMessageBox") ? QStringLiteral("message-box") : shown.objectName());
  }

 private:
  QDir directory_;
  QString language_;
};

void MarkRow(client::MainWindow& window, int row) {
  auto* table = window.findChild<QTreeView*>(QStringLiteral("documents"));
  table->setCurrentIndex(table->model()->index(row, 0));
  auto* exchanges = window.findChild<QTreeWidget*>(QStringLiteral("exchanges"));
  exchanges->setCurrentItem(exchanges->topLevelItem(exchanges->topLevelItemCount() - 1));
}

void TakeAll(const QDir& directory, const std::string& language, const Walk& tour) {
  SampleCompany company({{"UsePartnerList", "True"}, {"UseCustomForm", "True"}});
  const Photographer photographer(directory, QString::fromStdString(language).toLower());
  Person person(tour);
  person.OnLook = [&](QWidget& shown) { photographer.Look(shown); };
  WatchedToolkit toolkit(person);
  WatchedDialogs dialogs(toolkit, person);
  toolkit.SetLanguage(qt::LanguageOf(language));
  dialogs.SetLanguage(qt::LanguageOf(language));
  HostedProgram hosted(company.Login(language), company.Services(company.Processes()), toolkit, dialogs);
  const client::DatabaseContents contents(hosted.Session());
  dialogs.IconOf = [&](ClassId classId) { return contents.IconOf(classId); };
  person.SitDown(toolkit);

  client::HookCaller hooks(hosted);
  EXPECT_TRUE(hooks.Collect({kGearbox}).empty());
  EXPECT_TRUE(hooks.Export(true).Whole());
  company.LetAMinutePass();
  EXPECT_TRUE(hooks.Collect({kShafts, kPinion}).empty());
  const ExportOutcome outcome = hooks.Export(false);
  EXPECT_TRUE(outcome.Whole());
  hooks.ShowObject(kStopped);
  EXPECT_TRUE(hooks.Collect({kGearbox, kShafts}).empty());

  QSettings settings(company.Folder().Path("settings.ini").c_str(), QSettings::IniFormat);
  client::MainWindow window(hosted, qt::LanguageOf(language), settings, QStringLiteral("wendelau.db"), [] {});
  window.resize(kClientSize);
  window.show();
  MarkRow(window, 0);
  QCoreApplication::processEvents();
  photographer.Take(window, QStringLiteral("client"));
  for (const char* dialog : {"editSelection", "help", "about"})
    window.findChild<QAction*>(QLatin1String(dialog))->trigger();
  client::EditSettings(hosted.Session(), qt::LanguageOf(language), &window);
  std::vector<client::ExchangeRow> rows = contents.Exchanges();
  const FileSystem& files = hosted.LoadedProgram().platform.files;
  for (const HandedOver& one : outcome.directories) {
    const auto record = client::RecordOf(QString::fromStdString(files.NativePath(one.directory)));
    for (client::ExchangeRow& row : rows) {
      if (row.key == record) client::SetDirectory(row, QString::fromStdString(one.directory));
    }
  }
  const std::unique_ptr<QDialog> report(client::MakeExportReport(
      outcome, rows,
      // The picture does not show where the sample company of this run is.
      [](const QString& path) { return path; }, [](const QString&) {}, qt::LanguageOf(language), &window));
  photographer.Take(*report, report->objectName());
  person.GetUp();
}

}  // namespace
}  // namespace tessel::test

int main(int argc, char** argv) {
  using tessel::test::TakeAll;
  using tessel::test::Tour;
  if (argc != 2) {
    std::cerr << "usage: tessel_screenshots DIRECTORY\n";
    return 2;
  }
  const QDir directory(QString::fromLocal8Bit(argv[1]));
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setStyle("fusion");
  if (!directory.mkpath(".")) return 1;
  TakeAll(directory, "GER",
          Tour("Getriebe G40",
               "Guten Tag,\nanbei die Daten zum Getriebe G40.\nMit freundlichen Grüßen\nAnna Vogt"));
  TakeAll(
      directory, "ENG",
      Tour("Gearbox G40", "Hello,\nplease find the data of gearbox G40 attached.\nKind regards\nAnna Vogt"));
  return testing::Test::HasFailure() ? 1 : 0;
}
