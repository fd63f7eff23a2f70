// A thousand selected documents: the send-data page opens at once, and answers while the copy runs. Times are
// processor time, so that a busy machine fails no test; the pauses that the copy makes by itself are added.
#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <ctime>

#include "main_window.h"
#include "qt/person.h"
#include "qt/qt_pauser.h"
#include "qt/text.h"
#include "qt/tree_list_view.h"

namespace tessel::test {
namespace {

constexpr int kDocuments = 1000;
constexpr double kOpens = 1.0;  // seconds
constexpr double kAnswers = 0.2;
constexpr double kPauses = 0.1;  // between two turns of events the copy pauses twice, 50 ms each

double Spent(std::clock_t since) {
  return static_cast<double>(std::clock() - since) / CLOCKS_PER_SEC;
}

// Notes how much work is done between two turns of events.
class TimedToolkit : public qt::QtToolkit {
 public:
  void PumpEvents() override {
    if (turns_++ > 0) longestWork_ = std::max(longestWork_, Spent(lastTurn_));
    const std::clock_t start = std::clock();
    QtToolkit::PumpEvents();
    longestTurn_ = std::max(longestTurn_, Spent(start));
    lastTurn_ = std::clock();
    if (OnTurn) OnTurn(turns_);
  }
  std::function<void(int turn)> OnTurn;
  double longestWork_ = 0;
  double longestTurn_ = 0;

 private:
  int turns_ = 0;
  std::clock_t lastTurn_ = 0;
};

class Responsiveness : public ::testing::Test {
 protected:
  explicit Responsiveness(bool pauses = true)
      : hosted_(company_.Login(), company_.Services(company_.Processes(), pauses ? &pauser_ : nullptr),
                toolkit_, dialogs_) {
    PcRecordListPtr none;
    const auto keys = company_.AddParts(hosted_, kDocuments);
    hosted_.Entry().CollectSelObjs(hosted_.Session(), "", hosted_.ObjectRows(keys), nullptr, none);
  }
  void Export() {
    PcRecordListPtr none;
    hosted_.Entry().StartExport(hosted_.Session(), "", nullptr, nullptr, none);
  }
  // Presses a button when the window on top has it to offer.
  void Press(const char* control) {
    QTest::mouseClick(toolkit_.WidgetOf(*toolkit_.TopWindow()->FindById(control)), Qt::LeftButton);
  }
  void Next(const std::function<void()>& action) { QTimer::singleShot(0, &context_, action); }

  QObject context_;
  SampleCompany company_;
  qt::QtPauser pauser_;
  TimedToolkit toolkit_;
  qt::QtHostDialogs dialogs_{toolkit_};
  HostedProgram hosted_;
};

TEST_F(Responsiveness, ThousandDocuments) {
  double opening = 0;
  double scrolling = 0;
  int turnOfPress = 0;
  bool answered = false;
  toolkit_.OnTurn = [&](int turn) {
    if (turn != 20) return;
    turnOfPress = turn;
    auto& cancel = dynamic_cast<Button&>(*toolkit_.TopWindow()->FindById("Command3"));
    cancel.OnClick = [&, press = cancel.OnClick] {
      answered = true;
      press();
    };
    // Comes as an event of the window system and waits for its turn.
    QWidget* widget = toolkit_.WidgetOf(cancel);
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      const QPointF middle = widget->rect().center();
      QCoreApplication::postEvent(widget, new QMouseEvent(type, middle, widget->mapToGlobal(middle),
                                                          Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
    }
  };
  const auto onSendData = [&] {
    const auto window = toolkit_.TopWindow();
    ASSERT_EQ(window->Name(), "Tessel_2");
    auto& list = dynamic_cast<qt::NodeList&>(*toolkit_.WidgetOf(*window->FindById("TreeView2")));
    EXPECT_EQ(list.model()->rowCount(), kDocuments);
    const std::clock_t start = std::clock();
    constexpr int kScrolls = 50;
    for (int step = 0; step < kScrolls; ++step) {
      list.scrollTo(list.model()->index(step * kDocuments / kScrolls, 0), QListView::PositionAtTop);
      EXPECT_FALSE(list.viewport()->grab().isNull());
    }
    scrolling = Spent(start) / kScrolls;
    Press("Check1");
    Press("Command1");
  };
  Next([&] {
    Next([&] {
      const std::clock_t start = std::clock();
      Next([&, start] {
        toolkit_.Redraw(*toolkit_.TopWindow());
        opening = Spent(start);
        onSendData();
      });
      Press("Command1");
    });
    Press("Command1");
  });
  Export();
  EXPECT_LT(opening, kOpens);
  EXPECT_LT(scrolling, 0.02) << "a step of scrolling, in seconds";
  EXPECT_GT(turnOfPress, 0);
  EXPECT_TRUE(answered) << "the click on cancel ended the copy";
  EXPECT_TRUE(hosted_.LoadedProgram().wizard.state.ExportCancelled);
  EXPECT_LT(toolkit_.longestWork_ + toolkit_.longestTurn_ + kPauses, kAnswers);
  std::cout << "opens in " << opening * 1000 << " ms, scrolls in " << scrolling * 1000 << " ms a step, works "
            << toolkit_.longestWork_ * 1000 << " ms between turns of events of "
            << toolkit_.longestTurn_ * 1000 << " ms\n";
}

// Pauses would take minutes here.
class WholeCopy : public Responsiveness {
 protected:
  WholeCopy() : Responsiveness(false) {}
};

TEST_F(WholeCopy, AnswersUpToItsEnd) {
  QSettings settings(qt::ToQt(company_.Folder().Path("settings.ini")), QSettings::IniFormat);
  client::MainWindow client(hosted_, qt::Language::kGerman, settings, "company.db", [] {});
  client.show();
  double ending = 0;
  const auto onSendData = [&] {
    Press("Check1");
    std::clock_t lastTurn = 0;
    toolkit_.OnTurn = [&](int) { lastTurn = std::clock(); };
    Press("Command1");
    ending = Spent(lastTurn);
    const auto& bar = dynamic_cast<ProgressBar&>(*toolkit_.TopWindow()->FindById("ProgressBar1"));
    EXPECT_EQ(bar.Value(), kDocuments);
    toolkit_.Hide(*toolkit_.TopWindow());
  };
  Next([&] {
    Next([&] {
      Next(onSendData);
      Press("Command1");
    });
    Press("Command1");
  });
  Export();
  EXPECT_LT(ending, kAnswers) << "seconds of work behind the last document";
  EXPECT_LT(toolkit_.longestWork_ + toolkit_.longestTurn_, kAnswers);
  std::cout << "works " << toolkit_.longestWork_ * 1000 << " ms between turns, " << ending * 1000
            << " ms at the end\n";
}

}  // namespace
}  // namespace tessel::test
