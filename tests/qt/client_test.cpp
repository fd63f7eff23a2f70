// The client's window over the sample company.
#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSettings>
#include <QTest>
#include <QTreeView>
#include <QTreeWidget>

#include "main_window.h"
#include "qt/person.h"
#include "qt/text.h"

namespace tessel::test {
namespace {

using qt::FromQt;

class ClientTest : public ::testing::Test {
 protected:
  explicit ClientTest(Walk walk = {}) : person_(std::move(walk)) { person_.SitDown(toolkit_); }
  ~ClientTest() override { person_.GetUp(); }

  template <class WidgetType>
  WidgetType& Part(const char* name) {
    return *window_.findChild<WidgetType*>(QString::fromLatin1(name));
  }
  void Trigger(const char* action) { Part<QAction>(action).trigger(); }
  bool Enabled(const char* action) { return Part<QAction>(action).isEnabled(); }
  void Search(const char* text) { Part<QLineEdit>("search").setText(QString::fromUtf8(text)); }
  // The numbers in the document list.
  std::string Listed() {
    std::string numbers;
    const QAbstractItemModel& rows = *Part<QTreeView>("documents").model();
    for (int row = 0; row < rows.rowCount(); ++row)
      numbers += FromQt(rows.index(row, 0).data().toString()) + " ";
    return numbers;
  }
  // Marks every listed document.
  void MarkAll() { Part<QTreeView>("documents").selectAll(); }
  std::string Selection() { return FromQt(Part<QLabel>("selection").text()); }
  std::string Cell(int row, int column) {
    return FromQt(Part<QTreeView>("documents").model()->index(row, column).data().toString());
  }

  Company company_;
  Person person_;
  WatchedToolkit toolkit_{person_};
  WatchedDialogs dialogs_{toolkit_, person_};
  HostedProgram hosted_{company_.Login("ENG"), company_.Services(company_.Processes()), toolkit_, dialogs_};
  QSettings settings_{qt::ToQt(company_.Folder().Path("settings.ini")), QSettings::IniFormat};
  client::MainWindow window_{hosted_, qt::Language::kEnglish, settings_, "company.db", [] {}};
};

TEST_F(ClientTest, SearchesAndFilters) {
  Search("welle released");
  EXPECT_EQ(Listed(), "A-1100 A-1200 P-1110 P-1210 ");
  Search("ben");
  EXPECT_EQ(Listed(), "S-1011 ");
  EXPECT_EQ(Cell(0, client::DocumentModel::kLockedBy), "ben");
  Search("");
  auto* states = window_.findChildren<QComboBox*>().at(1);
  states->setCurrentIndex(states->findData(4));
  EXPECT_EQ(Listed(), "P-1010 P-1600 ");
  states->setCurrentIndex(0);
  auto* classes = window_.findChildren<QComboBox*>().at(0);
  classes->setCurrentIndex(classes->findData(1201));
  EXPECT_EQ(Listed(), "A-1000 A-1100 A-1200 A-9000 ");
}

TEST_F(ClientTest, CollectsWhatIsMarkedWhereverItIs) {
  EXPECT_FALSE(Enabled("collect"));
  EXPECT_EQ(Selection(), "Selection for export: none");
  Search("A-1");
  MarkAll();
  EXPECT_TRUE(Enabled("collect"));
  EXPECT_FALSE(Enabled("latest")) << "of one document only";
  Trigger("collect");
  EXPECT_EQ(Selection(), "Selection for export (3): A-1000, A-1100, A-1200");

  auto& structure = Part<QTreeWidget>("structure");
  Part<QTreeView>("documents").setCurrentIndex(Part<QTreeView>("documents").model()->index(0, 0));
  ASSERT_EQ(structure.topLevelItemCount(), 1);
  EXPECT_EQ(structure.topLevelItem(0)->childCount(), 8);
  QTreeWidgetItem* shafts = structure.topLevelItem(0)->child(2);
  EXPECT_EQ(shafts->text(0), "A-1100");
  EXPECT_EQ(shafts->childCount(), 0) << "read when it is opened";
  window_.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
  window_.activateWindow();
  structure.setFocus();
  shafts->setExpanded(true);
  EXPECT_EQ(shafts->childCount(), 3);
  structure.setCurrentItem(shafts->child(1));
  Trigger("collect");
  EXPECT_EQ(Selection(), "Selection for export (4): A-1000, A-1100, A-1200, P-1120");
}

class LockingClientTest : public ClientTest {
 protected:
  LockingClientTest() : ClientTest(Walk().Answer()) {}
};

TEST_F(LockingClientTest, ShowsLocksAndRefusals) {
  Search("P-1110");
  MarkAll();
  Trigger("lock");
  EXPECT_EQ(Cell(0, client::DocumentModel::kLockedBy), "anna");
  Trigger("unlock");
  EXPECT_EQ(Cell(0, client::DocumentModel::kLockedBy), "");
  Search("S-1011");
  MarkAll();
  Trigger("unlock");
  EXPECT_EQ(Cell(0, client::DocumentModel::kLockedBy), "ben") << "a box has told why";
}

TEST_F(ClientTest, ShowsExchangesAndTheLatest) {
  auto& exchanges = Part<QTreeWidget>("exchanges");
  ASSERT_EQ(exchanges.topLevelItemCount(), 1);
  EXPECT_FALSE(Enabled("continue"));
  exchanges.setCurrentItem(exchanges.topLevelItem(0));
  EXPECT_TRUE(Enabled("continue"));
  EXPECT_EQ(exchanges.topLevelItem(0)->text(1), "Stopped");
  EXPECT_TRUE(Part<QPlainTextEdit>("protocol").toPlainText().startsWith("Protokoll"));
  Search("P-1120");
  MarkAll();
  Trigger("latest");
  EXPECT_EQ(person_.TakeTranscript(),
            "object dialog mode 1 \"DataExchange Object to selected document\" 900:701 [1]\n");
}

TEST_F(ClientTest, RemembersItsPlace) {
  window_.setGeometry(40, 50, 700, 500);
  window_.show();
  window_.close();
  client::MainWindow again(hosted_, qt::Language::kGerman, settings_, "company.db", [] {});
  EXPECT_EQ(again.size(), QSize(700, 500));
}

}  // namespace
}  // namespace tessel::test
