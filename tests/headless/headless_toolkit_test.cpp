#include "headless/headless_toolkit.h"

#include <gtest/gtest.h>

#include "headless/reporting_launcher.h"
#include "headless/sample_pages.h"
#include "support/script_driver.h"
#include "toolkit/modal_contract.h"

namespace tessel {
namespace {

struct HeadlessWorld {
  ModalToolkit& Get() { return toolkit; }
  void Then(const std::function<void()>& action) {
    script.Do([action](UserActions&) { action(); });
  }
  test::ScriptDriver script;
  HeadlessToolkit toolkit{script};
};

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

TEST_F(HeadlessToolkitTest, ARefusedCloseKeepsTheWindow) {
  script_.Click("Command1")
      .CloseWindow()
      .AnswerBox(MessageAnswer::kNo)
      .CloseWindow()
      .AnswerBox(MessageAnswer::kYes);
  pages_.Run();
  EXPECT_TRUE(pages_.cancelled);
  EXPECT_TRUE(pages_.second->Unloaded());
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

namespace test {
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, ModalContract, HeadlessWorld);
}
}  // namespace tessel
