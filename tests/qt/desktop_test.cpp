// The client from its start: which database is opened, by whom, and what stays when another one is asked for.
#include "desktop.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <deque>

#include "database_choice.h"
#include "embedded/store/database.h"
#include "qt/text.h"
#include "walks/sample_company.h"

namespace tessel::test {
namespace {

using Answer = std::function<void(QDialog&)>;

// Presses the button whose caption begins with a text.
Answer Press(const char* caption) {
  return [=](QDialog& dialog) {
    for (auto* button : dialog.findChildren<QAbstractButton*>()) {
      if (button->text().startsWith(QLatin1String(caption))) return button->click();
    }
    ADD_FAILURE() << "no button " << caption << " in " << qt::FromQt(dialog.windowTitle());
    dialog.reject();
  };
}

Answer Choose(const std::string& path) {
  return [=](QDialog& dialog) {
    auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
    ASSERT_NE(name, nullptr);
    name->setText(qt::ToQt(path));
    QTest::keyClick(name, Qt::Key_Return);
  };
}

Answer LogIn(const char* user) {
  return [=](QDialog& dialog) {
    ASSERT_EQ(dialog.objectName(), "login");
    dialog.findChildren<QLineEdit*>().front()->setText(QLatin1String(user));
    dialog.findChild<QPushButton*>("ok")->click();
  };
}

class DesktopTest : public ::testing::Test {
 protected:
  DesktopTest() {
    qputenv("TESSEL_DRIVES", folder_.MakeFolder("drives").c_str());
    qputenv("XDG_DATA_HOME", folder_.MakeFolder("data").c_str());
    QSettings().clear();
  }
  ~DesktopTest() override { EXPECT_TRUE(answers_.empty()) << answers_.size() << " dialogs did not come"; }

  // Answers the dialogs that come, one after the other.
  void Expect(std::deque<Answer> answers) {
    answers_ = std::move(answers);
    Next();
  }
  void Next() {
    if (answers_.empty()) return;
    QTimer::singleShot(1, &context_, [this] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return Next();
      if (const auto* box = qobject_cast<QMessageBox*>(dialog)) told_ = box->text();
      const Answer answer = answers_.front();
      answers_.pop_front();
      Next();
      answer(*dialog);
    });
  }
  [[nodiscard]] bool AllAnswered() const { return answers_.empty(); }
  // A copy of the company's database.
  std::string Copy(const char* name) {
    const std::string path = folder_.Path(name);
    std::filesystem::copy_file(company_.Database(), path);
    return path;
  }
  static int DocumentsIn(client::MainWindow& window) {
    return window.findChild<QTreeView*>("documents")->model()->rowCount();
  }

  TemporaryFolder folder_;
  SampleCompany company_;
  QObject context_;
  std::deque<Answer> answers_;
  QString told_;
};

TEST_F(DesktopTest, OffersTheLastOneAnotherOneOrTheSample) {
  NativePlatform platform;
  FileSystem& files = platform.Services().files;
  const auto choose = [&](const std::string& last) {
    return client::ChooseDatabase(qt::ToQt(last), files, qt::Language::kEnglish).path.toStdString();
  };
  const std::string made = folder_.Path("made.db");
  Expect({Press("Create"), Choose(made)});
  EXPECT_EQ(choose(""), made);
  Expect({Press("Create"), Choose(made), Press("OK"), Press("Open the last")});
  EXPECT_EQ(choose(made), made) << "an existing file is refused and left alone";
  Expect({Press("Open another"), Choose(company_.Database())});
  EXPECT_EQ(choose(made), company_.Database());
  Expect({Press("Cancel")});
  EXPECT_EQ(choose(""), "");

  // The first start of all ends in a window without anything to be known before.
  {
    client::Desktop first;
    const auto accept = [](QDialog& dialog) {
      EXPECT_TRUE(dialog.findChild<QLabel*>("hint")->text().contains("anna"));
      dialog.findChild<QPushButton*>("ok")->click();
    };
    Expect({Press("Create"), Choose(folder_.Path("first.db")), accept});
    ASSERT_TRUE(first.Open({}));
    EXPECT_EQ(DocumentsIn(first.Window()), 20);
    QSettings().clear();
  }
  client::Desktop desktop;
  Expect({Press("Open a database"), Choose(made), LogIn("nobody"), Press("OK"), LogIn("ben")});
  ASSERT_TRUE(desktop.Open({}));
  EXPECT_EQ(DocumentsIn(desktop.Window()), 20);
  EXPECT_EQ(QSettings().value("last/database").toString().toStdString(), made);
  EXPECT_EQ(QSettings().value("last/user").toString(), "ben");
}

// What cannot be opened leaves the window that is open as it is.
TEST_F(DesktopTest, AnotherDatabaseReplacesTheWindowOnceItIsListed) {
  const std::string broken = Copy("broken.db");
  embedded::Database(broken).ExecuteOnce("drop table CAD_PART");
  const std::string smaller = Copy("smaller.db");
  embedded::Database(smaller).ExecuteOnce("delete from CAD_ASSEMBLY");
  client::Desktop desktop;
  ASSERT_TRUE(desktop.Open({qt::ToQt(company_.Database()), "anna", "ENG"}));
  const auto reopen = [&](const std::string& path, std::deque<Answer> answers) {
    answers.push_front(Choose(path));
    Expect(std::move(answers));
    desktop.Window().findChild<QAction*>("open")->trigger();
    EXPECT_TRUE(QTest::qWaitFor([this] { return AllAnswered(); }));
    QCoreApplication::processEvents();
  };
  desktop.Window().resize(640, 480);
  const client::MainWindow* const first = &desktop.Window();
  reopen(smaller, {Press("Cancel")});
  EXPECT_EQ(&desktop.Window(), first);
  reopen(broken, {LogIn("anna"), Press("OK")});
  EXPECT_TRUE(told_.contains("CAD_PART") && !told_.contains("&quot;")) << told_.toStdString();
  EXPECT_EQ(&desktop.Window(), first);
  EXPECT_EQ(DocumentsIn(desktop.Window()), 20);
  desktop.Window().Refresh();

  // An action that comes together with it waits: it would lose its window.
  auto* documents = desktop.Window().findChild<QTreeView*>("documents");
  documents->setCurrentIndex(documents->model()->index(0, 0));
  Expect({Choose(smaller), LogIn("anna")});
  desktop.Window().findChild<QAction*>("open")->trigger();
  desktop.Window().findChild<QAction*>("properties")->trigger();
  desktop.Window().findChild<QAction*>("open")->trigger();
  EXPECT_TRUE(QTest::qWaitFor([this] { return AllAnswered(); }));
  QCoreApplication::processEvents();
  EXPECT_EQ(DocumentsIn(desktop.Window()), 16);
  EXPECT_EQ(desktop.Window().size(), QSize(640, 480)) << "at the place of the window before it";

  const std::string text = folder_.Write("text.db", "no database");
  client::Desktop failing;
  for (const std::string& path : {broken, text}) {
    Expect({Press("OK")});
    EXPECT_FALSE(failing.Open({qt::ToQt(path), "anna", "ENG"}));
  }
  EXPECT_EQ(told_.toStdString(), text + " is no database") << "nobody was asked to log in";
}

}  // namespace
}  // namespace tessel::test
