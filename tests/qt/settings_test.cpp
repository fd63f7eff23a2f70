// The window of the site's settings, over the sample company.
#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QTreeWidget>

#include "administration/settings_objects.h"
#include "main_window.h"
#include "qt/person.h"
#include "qt/text.h"
#include "walks/sample_company.h"

namespace tessel::test {
namespace {

using qt::FromQt;
using qt::ToQt;

// The client of a user who opens the settings, if he may.
class SettingsWorld {
 public:
  explicit SettingsWorld(const std::string& login) : login_(login) {
    person_.SitDown(toolkit_);
    person_.OnLook = [this](QWidget& dialog) { Edit(dialog); };
  }
  ~SettingsWorld() { person_.GetUp(); }

  // False when there is no such action.
  bool Open() {
    auto* action = window_.findChild<QAction*>("settings");
    if (action != nullptr) action->trigger();
    return action != nullptr;
  }
  [[nodiscard]] std::string Text() {
    return administration::RequireSettings(hosted_.Session(), "anna").Text();
  }

  struct Entry {
    const char* key;
    const char* value;  // nullptr: the default is taken
    std::string note;   // what the window says of it
  };
  std::vector<Entry> entries;
  std::string shown;  // value and default of each key in turn, as they stand afterwards

 private:
  void Edit(QWidget& dialog) {
    auto* keys = dialog.findChild<QTreeWidget*>("keys");
    for (const Entry& entry : entries) {
      const auto found = keys->findItems(entry.key, Qt::MatchExactly | Qt::MatchRecursive);
      ASSERT_EQ(found.size(), 1) << entry.key;
      keys->setCurrentItem(found.front());
      if (entry.value != nullptr) {
        found.front()->setText(1, entry.value);
      } else {
        dialog.findChild<QPushButton*>("default")->click();
      }
      EXPECT_EQ(FromQt(dialog.findChild<QLabel*>("note")->text()), entry.note);
      shown += FromQt(found.front()->text(1)) + "|" + FromQt(found.front()->text(2)) + "\n";
    }
  }

  std::string login_;
  SampleCompany company_;
  Person person_{{}};
  WatchedToolkit toolkit_{person_};
  WatchedDialogs dialogs_{toolkit_, person_};
  HostedProgram hosted_{
      {company_.Database(), login_, "", "ENG"}, company_.Services(company_.Processes()), toolkit_, dialogs_};
  QSettings settings_{ToQt(company_.Folder().Path("settings.ini")), QSettings::IniFormat};
  client::MainWindow window_{hosted_, qt::Language::kEnglish, settings_, "company.db", [] {}};
};

TEST(SettingsTest, AnAdministratorChangesWhatAStartUpTakes) {
  SettingsWorld world("admin");
  const std::string before = world.Text();
  world.entries = {
      {"SMTPServer", "mail.example", ""},
      {"UseServerMonitor", "perhaps",
       "Settings.UseServerMonitor=perhaps was not taken: it is no Boolean (True, False or a number)"},
      {"ExportPrefix", "Lieferung", ""},
      {"ExportPrefix", nullptr, ""}};
  ASSERT_TRUE(world.Open());
  EXPECT_EQ(world.shown.substr(0, world.shown.find('|')), "mail.example");
  EXPECT_NE(world.shown.find("\nExport|Export\n"), std::string::npos) << world.shown;
  EXPECT_EQ(world.shown.find("perhaps"), std::string::npos) << world.shown;
  EXPECT_NE(world.Text(), before);
  EXPECT_NE(world.Text().find("SMTPServer=mail.example\r\n"), std::string::npos);
  EXPECT_EQ(world.Text().find("ExportPrefix"), std::string::npos);
  EXPECT_FALSE(SettingsWorld("anna").Open()) << "she is no administrator";
}

}  // namespace
}  // namespace tessel::test
