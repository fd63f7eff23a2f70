#include "headless/headless_toolkit.h"

#include <gtest/gtest.h>

#include "headless/reporting_launcher.h"
#include "headless/sample_pages.h"
#include "host/error.h"
#include "support/script_driver.h"

namespace tessel {
namespace {

class HeadlessToolkitTest : public ::testing::Test {
 protected:
  test::ScriptDriver script_;
  HeadlessToolkit toolkit_{script_};
  test::SamplePages pages_{toolkit_};
};

TEST_F(HeadlessToolkitTest, PagesHandOverAndEveryPendingShowReturns) {
  int activations = 0;
  pages_.first->OnActivate = [&] { ++activations; };
  script_.Click("Command1").Click("Command2").Click("Command1").Click("Command1").AnswerBox();
  pages_.Run();
  EXPECT_EQ(script_.Transcript(),
            "show Tessel_0\nhide Tessel_0\n"
            "show Tessel_1\nhide Tessel_1\n"
            "show Tessel_0\nhide Tessel_0\n"
            "show Tessel_1\n"
            "box \"Kestrix\" information \"Kopiervorgang \"erfolgreich\"\" [ok]\n"
            "hide Tessel_1\n");
  EXPECT_EQ(activations, 2);
  EXPECT_FALSE(pages_.cancelled);
  EXPECT_EQ(toolkit_.TopWindow(), nullptr);
}

TEST_F(HeadlessToolkitTest, CentresAWindowThatHasNoPlaceYet) {
  pages_.second->MoveTo(15, 30);
  script_.Click("Command1").Click("Command1").AnswerBox();
  pages_.Run();
  EXPECT_EQ(pages_.first->Bounds(), (Rect{(28800 - 7110) / 2.0, (16200 - 5475) / 2.0, 7110, 5475}));
  EXPECT_EQ(pages_.second->Bounds().left, 15);
}

TEST_F(HeadlessToolkitTest, HidingAWindowBelowEndsItsShowOnceTheUpperOneReturns) {
  script_.Click("Command1")
      .Do([&](UserActions&) { toolkit_.Hide(*pages_.first); })
      .Do([&](UserActions&) { EXPECT_EQ(toolkit_.VisibleWindows(), std::vector{pages_.second}); })
      .Do([&](UserActions&) { toolkit_.Hide(*pages_.second); });
  pages_.first->Find("Command1")->SetVisible(true);
  static_cast<Button&>(*pages_.first->Find("Command1")).OnClick = [&] { toolkit_.ShowModal(pages_.second); };
  pages_.Run();
  EXPECT_EQ(script_.Transcript(), "show Tessel_0\nshow Tessel_1\nhide Tessel_0\nhide Tessel_1\n");
}

TEST_F(HeadlessToolkitTest, ARefusedCloseKeepsTheWindow) {
  script_.Click("Command1")
      .CloseWindow()
      .AnswerBox(MessageAnswer::kNo)
      .CloseWindow()
      .AnswerBox(MessageAnswer::kYes);
  pages_.Run();
  EXPECT_TRUE(pages_.cancelled);
  EXPECT_TRUE(pages_.second->Unloaded());
  EXPECT_TRUE(toolkit_.Unload(*pages_.second, CloseReason::kProgramCode)) << "asks no second time";
  try {
    toolkit_.ShowModal(pages_.second);
    FAIL() << "an unloaded window was shown";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), error_number::kInvalidCall);
  }
}

TEST_F(HeadlessToolkitTest, AShutdownClosesAWindowThatWouldRefuse) {
  pages_.first->OnQueryClose = [](CloseReason) { return false; };
  script_.Do([&](UserActions&) { EXPECT_FALSE(toolkit_.Unload(*pages_.first, CloseReason::kProgramCode)); })
      .Do([&](UserActions&) { toolkit_.CloseForShutdown(); });
  pages_.Run();
  EXPECT_TRUE(pages_.first->Unloaded());
}

TEST_F(HeadlessToolkitTest, AnErrorInAnEventEndsItsShowAndHidesTheWindow) {
  pages_.second->OnActivate = [] { throw RuntimeError(13, "Type mismatch"); };
  script_.Click("Command1");
  EXPECT_THROW(pages_.Run(), RuntimeError);
  EXPECT_FALSE(pages_.second->Visible());
  EXPECT_EQ(toolkit_.TopWindow(), nullptr);
}

TEST_F(HeadlessToolkitTest, EndlessNestingIsRefusedBeforeTheStackOverflows) {
  pages_.first->OnActivate = [&] { toolkit_.ShowModal(pages_.first); };
  EXPECT_THROW(pages_.Run(), RuntimeError);
  EXPECT_EQ(script_.TakeTranscript(), "show Tessel_0\nhide Tessel_0\n");
}

TEST_F(HeadlessToolkitTest, ABusyProgramCanBeCancelled) {
  script_.Click("Command1")
      .Click("Command1")
      .WhenBusy([](UserActions&) {})
      .WhenBusy([](UserActions& user) { EXPECT_EQ(user.CloseWindow(), ""); })
      .AnswerBox(MessageAnswer::kYes)
      .AnswerBox();
  pages_.Run();
  EXPECT_EQ(pages_.stepsDone, 2);
}

class NumberingLauncher : public ProcessLauncher {
 public:
  std::int32_t Start(const std::string&, const std::vector<std::string>&) override { return ++last_; }

 private:
  std::int32_t last_ = 4710;
};

TEST_F(HeadlessToolkitTest, StartedProgramsAreReported) {
  NumberingLauncher launcher;
  ReportingLauncher reporting(launcher, script_);
  EXPECT_EQ(reporting.Start("/opt/KestrixServMon.exe", {"-a", "two words"}), 4711);
  EXPECT_EQ(script_.Transcript(), "start \"/opt/KestrixServMon.exe\" \"-a\" \"two words\" [4711]\n");
}

}  // namespace
}  // namespace tessel
