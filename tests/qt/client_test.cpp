// The client's window over the sample company.
#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QTest>
#include <QTreeView>
#include <QTreeWidget>
#include <ctime>

#include "main_window.h"
#include "qt/person.h"
#include "qt/text.h"

namespace tessel::test {
namespace {

using qt::FromQt;

class ClientTest : public ::testing::Test {
 protected:
  explicit ClientTest(Walk walk = {}, const std::map<std::string, std::string>& settings = {})
      : company_(settings), person_(std::move(walk)) {
    person_.SitDown(toolkit_);
    person_.OnLook = [this](QWidget& shown) { Look(shown); };
    window_.OpenUrl = [this](const QUrl& url) {
      opened_ = FromQt(url.toLocalFile());
      return true;
    };
  }
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
  void MarkFirst() {
    auto& documents = Part<QTreeView>("documents");
    documents.setCurrentIndex(documents.model()->index(0, 0));
    documents.setFocus();
  }
  // The numbers of the marked documents.
  std::string Marked() {
    std::string numbers;
    for (const QModelIndex& row : Part<QTreeView>("documents").selectionModel()->selectedRows())
      numbers += FromQt(row.data().toString()) + " ";
    return numbers;
  }
  // Shows the structure of the gearbox, the focus on it, with the branch of the input shaft open.
  QTreeWidgetItem* OpenShafts() {
    MarkFirst();
    window_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window_));
    window_.activateWindow();
    auto& structure = Part<QTreeWidget>("structure");
    structure.setFocus();
    EXPECT_EQ(structure.topLevelItem(0)->childCount(), 8);
    QTreeWidgetItem* shafts = structure.topLevelItem(0)->child(2);
    EXPECT_EQ(shafts->text(0), "A-1100");
    EXPECT_EQ(shafts->childCount(), shafts->isExpanded() ? 3 : 0) << "read when it is opened";
    shafts->setExpanded(true);
    EXPECT_EQ(shafts->childCount(), 3);
    return shafts;
  }
  // Notes what a box or the report on an export says, and presses what is to be pressed in a dialog first.
  void Look(QWidget& shown) {
    if (const auto* box = qobject_cast<QMessageBox*>(&shown)) told_ = FromQt(box->text());
    if (shown.objectName() == "exportReport") {
      told_ = FromQt(shown.findChild<QLabel*>("head")->text());
      for (const auto* problems : shown.findChildren<QPlainTextEdit*>())
        told_ += "\n" + FromQt(problems->toPlainText());
      for (const auto* table : shown.findChildren<QTreeWidget*>()) {
        for (int column = 0; column < table->columnCount(); ++column)
          told_ += "|" + FromQt(table->topLevelItem(0)->text(column));
      }
    }
    if (auto* press = shown.findChild<QPushButton*>(press_)) press->click();
  }
  std::string Selection() { return FromQt(Part<QLabel>("selection").text()); }
  std::string Cell(int row, int column) {
    return FromQt(Part<QTreeView>("documents").model()->index(row, column).data().toString());
  }

  std::string told_;
  std::string opened_;
  QString press_ = QStringLiteral("openFolder");
  SampleCompany company_;
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
  auto& states = Part<QComboBox>("stateFilter");
  states.setCurrentIndex(states.findData(4));
  EXPECT_EQ(Listed(), "P-1010 P-1600 ");
  states.setCurrentIndex(0);
  auto& classes = Part<QComboBox>("classFilter");
  classes.setCurrentIndex(classes.findData(1201));
  EXPECT_EQ(Listed(), "A-1000 A-1100 A-1200 A-9000 ");
  Search("welle");
  company_.AddParts(hosted_, 1);
  Trigger("refresh");
  EXPECT_EQ(Listed(), "A-1100 A-1200 ") << "the filters stay";
  classes.setCurrentIndex(0);
  Search("normteil");
  EXPECT_EQ(Listed(), "N-100001 ");
}

TEST_F(ClientTest, EnterGoesFromTheSearchToTheFirstHit) {
  Search("P-12");
  MarkAll();
  QTest::keyClick(&Part<QLineEdit>("search"), Qt::Key_Return);
  EXPECT_EQ(Marked(), "P-1210 ");
  Search("nothing of that");
  QTest::keyClick(&Part<QLineEdit>("search"), Qt::Key_Return);
  EXPECT_EQ(Marked(), "");
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

  QTreeWidgetItem* shafts = OpenShafts();
  Part<QTreeWidget>("structure").setCurrentItem(shafts->child(1));
  Trigger("collect");
  EXPECT_EQ(Selection(), "Selection for export (4): A-1000, A-1100, A-1200, P-1120");
}

// What happens in the database changes what is shown, not what is marked and open.
TEST_F(ClientTest, StaysAsItIsWhenReadAnew) {
  QTreeWidgetItem* shafts = OpenShafts();
  auto& structure = Part<QTreeWidget>("structure");
  structure.setCurrentItem(shafts->child(1));
  Trigger("lock");
  ASSERT_EQ(structure.selectedItems().size(), 1);
  EXPECT_EQ(structure.selectedItems().front()->text(0), "P-1120");
  EXPECT_TRUE(shafts->isExpanded());
  EXPECT_EQ(Marked(), "A-1000 ") << "the list's own mark";
  Search("P-1120");
  EXPECT_EQ(Cell(0, client::DocumentModel::kLockedBy), "anna");
  Search("");
  MarkFirst();

  const PcSessionPtr& session = hosted_.Session();
  const PcBehaviorPtr behavior = session->NewBehavior();
  const PcObjectPtr parent = session->ObjectStore()->Object({1201, 4712});
  const auto links = structure.topLevelItem(0)->childCount();
  shafts = OpenShafts();
  structure.setCurrentItem(shafts->child(2));
  const auto added = company_.AddParts(hosted_, 1).front();
  ASSERT_NE(parent->AddLink(*session->ObjectStore()->Object(added), 2001, *behavior), nullptr);
  ASSERT_EQ(session->ObjectStore()->Object({1202, 4725})->Delete(*behavior), 0);
  Trigger("refresh");
  EXPECT_EQ(structure.topLevelItem(0)->childCount(), links);
  std::string below;
  for (int row = 0; row < shafts->childCount(); ++row)
    below += FromQt(shafts->child(row)->text(0)) + " ";
  EXPECT_EQ(below, "P-1110 P-1300 N-100001 ");
  ASSERT_EQ(structure.selectedItems().size(), 1);
  EXPECT_EQ(structure.selectedItems().front()->text(0), "P-1300");
}

// Thousands of marks cost no more than thousands of rows: these are processor seconds.
TEST(DocumentPaneTest, ManyMarksStayCheap) {
  constexpr int kMany = 20000;
  std::vector<client::DocumentRow> rows;
  for (int number = 0; number < kMany; ++number) {
    const QString id = QStringLiteral("N-%1").arg(number, 6, 10, QLatin1Char('0'));
    rows.push_back({{1202, number + 1}, "Part", id, "A", number % 2 == 0 ? "even" : "odd", 3, {}});
  }
  client::DocumentPane pane([](ClassId) { return QIcon(); }, qt::Language::kEnglish);
  int told = 0;
  pane.OnMarksChanged = [&] { told += static_cast<int>(pane.MarkedKeys().size()) > 0 ? 1 : 0; };
  pane.Show(rows);
  pane.show();
  const std::clock_t start = std::clock();
  pane.List()->selectAll();
  pane.Show(rows);
  EXPECT_EQ(pane.MarkedKeys().size(), static_cast<std::size_t>(kMany));
  auto* search = pane.findChild<QLineEdit*>("search");
  search->setText("odd");
  EXPECT_EQ(pane.MarkedKeys().size(), static_cast<std::size_t>(kMany / 2));
  search->clear();
  EXPECT_EQ(pane.MarkedKeys().front(), (ObjectKey{1202, 2})) << "in the order of the list";
  pane.Show(rows);
  EXPECT_EQ(pane.MarkedKeys().size(), static_cast<std::size_t>(kMany / 2));
  EXPECT_LE(told, 3) << "once for each thing that the user did";
  EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, 4.0);
}

// The marks of the view that was used last count, also when an exchange was marked meanwhile.
TEST_F(ClientTest, ActsOnTheMarksThatWereMadeLast) {
  QTreeWidgetItem* shafts = OpenShafts();
  Part<QTreeWidget>("structure").setCurrentItem(shafts->child(1));
  auto& exchanges = Part<QTreeWidget>("exchanges");
  exchanges.setFocus();
  exchanges.setCurrentItem(exchanges.topLevelItem(0));
  Trigger("lock");
  Search("anna");
  EXPECT_EQ(Listed(), "P-1120 ");
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
  exchanges.setCurrentItem(exchanges.topLevelItem(0), 0, QItemSelectionModel::NoUpdate);
  EXPECT_FALSE(Enabled("continue")) << "the current exchange is not marked";
  exchanges.setCurrentItem(exchanges.topLevelItem(0));
  EXPECT_TRUE(Enabled("continue"));
  EXPECT_EQ(exchanges.topLevelItem(0)->text(client::ExchangePanel::kPhaseColumn), "Stopped");
  EXPECT_TRUE(Part<QPlainTextEdit>("protocol").toPlainText().startsWith("Protokoll"));
  Search("P-1120");
  MarkAll();
  Trigger("latest");
  EXPECT_EQ(person_.TakeTranscript(),
            "object dialog mode 1 \"DataExchange Object to selected document\" 900:701 [1]\n");
  MarkFirst();
  Trigger("properties");
  EXPECT_NE(person_.TakeTranscript().find("1202:4725"), std::string::npos);
}

class SendingClientTest : public ClientTest {
 protected:
  SendingClientTest()
      : ClientTest(Walk().Answer().Answer(MessageAnswer::kYes).Answer(MessageAnswer::kNo),
                   {{"UseServerMonitor", "1"}}) {}
};

TEST_F(SendingClientTest, AsksTheSenderToSendAgain) {
  std::string asked;
  client::SenderAnswer answer{false, "900:701 is being worked on"};
  window_.Sender = [&](const QString& program, const QStringList& arguments) {
    asked += FromQt(program.section('/', -1) + ' ' + arguments.join(' ') + '\n');
    return answer;
  };
  auto& exchanges = Part<QTreeWidget>("exchanges");
  EXPECT_FALSE(Enabled("sendAgain"));
  exchanges.setCurrentItem(exchanges.topLevelItem(0));
  Trigger("sendAgain");
  EXPECT_EQ(asked, "KestrixServMon.exe --send-again 900:701\n");
  EXPECT_EQ(told_, "The data exchange is not sent again:\n\n900:701 is being worked on");
  answer.done = true;
  const PcObjectPtr record = hosted_.Session()->ObjectStore()->Object({900, 701});
  const PcBehaviorPtr behavior = hosted_.Session()->NewBehavior();
  const auto becomes = [&](int phase) {
    record->SetValue("VRKX_DX_PROCESS_PHASE", Value(phase));
    ASSERT_EQ(record->Update(*behavior), 0);
    Trigger("refresh");
  };
  becomes(4);
  EXPECT_EQ(FromQt(exchanges.topLevelItem(0)->text(client::ExchangePanel::kPhaseColumn)), "Sent");
  told_.clear();
  Trigger("sendAgain");
  Trigger("sendAgain");
  EXPECT_EQ(std::count(asked.begin(), asked.end(), '\n'), 2) << "the second time a person said no";
  ASSERT_EQ(company_.Started().size(), 1U) << "as exports do here";
  EXPECT_EQ(company_.Started()[0].find("KestrixServMon.exe "), 0U) << company_.Started()[0];
  EXPECT_TRUE(company_.Started()[0].ends_with("@900@701@DX-000001")) << company_.Started()[0];
  EXPECT_NE(told_.find("is sent. Shall it be sent to"), std::string::npos) << told_;
  becomes(2);
  EXPECT_FALSE(Enabled("sendAgain")) << "it is in the queue";
  EXPECT_FALSE(client::AskSender("/nowhere/KestrixServMon.exe", {}).done);
  EXPECT_EQ(client::AskSender("/bin/sh", {"-c", "echo it is not stopped >&2; exit 2"}).text,
            QString("it is not stopped"));
}

class RefusingClientTest : public ClientTest {
 protected:
  RefusingClientTest() : ClientTest(Walk().Answer()) {}
};

TEST_F(RefusingClientTest, SumsUpWhatCannotBeCollectedAndLetsTakeBack) {
  Search("A-");
  MarkAll();
  Trigger("collect");
  EXPECT_EQ(told_,
            "1 of 4 documents were not added to the selection:\n\n"
            "A-9000 has to be checked in, released or obsolete");
  press_ = "remove";  // the first one is marked
  Trigger("editSelection");
  EXPECT_EQ(Selection(), "Selection for export (2): A-1100, A-1200");
  press_ = "empty";
  Trigger("editSelection");
  EXPECT_EQ(Selection(), "Selection for export: none");
  EXPECT_FALSE(Enabled("editSelection"));
  press_ = "documentation";
  Trigger("help");
  EXPECT_TRUE(opened_.ends_with("docs/desktop.md")) << opened_;
}

class FailingClientTest : public ClientTest {
 protected:
  FailingClientTest()
      : ClientTest(
            Walk().Enter().Click("Check1(5)").Click("Command1").Click("Check1").Enter().Enter().Answer()) {}
};

// The pages are gone by then, and the hook returns as after a finished export.
TEST_F(FailingClientTest, TellsThatAnExportWasNotCompleted) {
  const std::string taken = "C:\\temp\\Exchange\\Export_anna_20240131_154502_New";
  std::filesystem::create_directories(company_.Services(company_.Processes()).files.NativePath(taken));
  Search("P-1120");
  MarkAll();
  Trigger("collect");
  Trigger("export");
  EXPECT_TRUE(told_.starts_with("The export was not completed.") &&
              told_.find("exists already") != std::string::npos)
      << told_;
  Trigger("export");
  EXPECT_EQ(told_.find("completed"), std::string::npos)
      << "an export that did not start has not failed: " << told_;
}

class ExportingClientTest : public ClientTest {
 protected:
  ExportingClientTest()
      : ClientTest(
            Walk().Enter().Click("Check1(5)").Click("Command1").Click("Check1").Enter().Enter().Answer()) {}
};

TEST_F(ExportingClientTest, ShowsWhatWasExportedAndContinues) {
  using Panel = client::ExchangePanel;
  Search("P-1120");
  MarkAll();
  Trigger("collect");
  EXPECT_EQ(Selection(), "Selection for export (1): P-1120");
  Trigger("export");
  EXPECT_EQ(Selection(), "Selection for export: none");
  const std::string folder = company_.Services(company_.Processes())
                                 .files.NativePath("C:\\temp\\Exchange\\Export_anna_20240131_154502_New");
  EXPECT_EQ(told_, "The export was handed over.|||1|DX-000002|" + folder);
  EXPECT_EQ(opened_, folder);
  auto& exchanges = Part<QTreeWidget>("exchanges");
  ASSERT_EQ(exchanges.topLevelItemCount(), 2);
  exchanges.setCurrentItem(exchanges.topLevelItem(0));
  const auto cell = [&](int row, int column) { return FromQt(exchanges.topLevelItem(row)->text(column)); };
  EXPECT_EQ(cell(0, Panel::kPhaseColumn), "New") << "the newest first";
  EXPECT_EQ(cell(0, Panel::kDateColumn), "2024-01-31 15:45:02");
  EXPECT_EQ(cell(0, Panel::kSenderColumn) + cell(0, Panel::kDocumentsColumn), "anna1");
  EXPECT_FALSE(company_.Exchanged().empty());

  // As on a machine that has not made it: by the protocol, and by the folder where it lies.
  const auto forget = [&] {
    settings_.remove("folders");
    Trigger("refresh");
    return cell(0, Panel::kDateColumn) + " " + cell(0, Panel::kSenderColumn) + " " +
           cell(0, Panel::kDirectoryColumn);
  };
  EXPECT_EQ(forget(), "2024-01-31 15:45:02 anna C:\\temp\\Exchange\\Export_anna_20240131_154502_New");
  std::filesystem::rename(folder, folder + "x_not");
  std::filesystem::rename(folder + "x_not/Kestrix_Data.xml", folder + "x_not/other");
  EXPECT_EQ(forget(), "2024-01-31 15:45:02 anna not here; recorded when it is sent");
  EXPECT_FALSE(Enabled("openFolder"));
  exchanges.setCurrentItem(exchanges.topLevelItem(0));
  Trigger("continue");
  EXPECT_EQ(told_, "The data exchange was not continued:\n\nIt is not stopped.");

  const std::string stopped = "C:\\temp\\Exchange\\Export_anna_20240305_101500_Break";
  std::filesystem::create_directories(company_.Services(company_.Processes()).files.NativePath(stopped));
  exchanges.sortByColumn(Panel::kDateColumn, Qt::DescendingOrder);
  EXPECT_EQ(cell(0, Panel::kNumberColumn), "DX-000001") << "sorted by the date";
  exchanges.setCurrentItem(exchanges.topLevelItem(0));
  Trigger("continue");
  EXPECT_EQ(cell(0, Panel::kPhaseColumn), "Continued");
  EXPECT_TRUE(exchanges.topLevelItem(0)->isSelected());
}

TEST_F(ClientTest, RemembersItsPlace) {
  EXPECT_LT(window_.width(), window_.screen()->availableSize().width()) << "none is remembered yet";
  window_.setGeometry(40, 50, 700, 500);
  window_.show();
  window_.SavePlace();
  client::MainWindow again(hosted_, qt::Language::kGerman, settings_, "company.db", [] {});
  EXPECT_EQ(again.size(), QSize(700, 500));
}

}  // namespace
}  // namespace tessel::test
