#include "toolkit/control.h"

#include <gtest/gtest.h>

#include "toolkit/window.h"

namespace tessel {
namespace {

const Rect kAnywhere{0, 0, 1000, 300};

class ControlTest : public ::testing::Test {
 protected:
  Window window_{"Tessel_1", "Kestrix", {6990, 5070}};
};

// The exclusive choice of the send modes, in which each change of a box raises the click of that box.
TEST_F(ControlTest, ProgramAndUserChangesRaiseTheSameClick) {
  auto& first = window_.Add<CheckBox>("Check1", 1, nullptr, kAnywhere);
  auto& second = window_.Add<CheckBox>("Check1", 2, nullptr, kAnywhere);
  std::string clicks;
  const auto rule = [&](CheckBox& box, CheckBox& other) {
    clicks += box.Id() + (box.Checked() ? "+ " : "- ");
    if (box.Checked()) other.SetChecked(false);
  };
  first.OnClick = [&] { rule(first, second); };
  second.OnClick = [&] { rule(second, first); };

  first.SetChecked(true);
  first.SetChecked(true);
  second.UserToggle();
  EXPECT_EQ(clicks, "Check1(1)+ Check1(2)+ Check1(1)- ");

  second.SetEnabled(false);
  second.UserToggle();
  EXPECT_TRUE(second.Checked());
}

TEST_F(ControlTest, TypingKeepsWhatTheBoxCanHold) {
  struct Case {
    bool multiLine;
    const char* typed;
    const char* kept;
  };
  const Case cases[] = {
      {false, "Grüße", "Grüße"},
      {false, "first\r\nsecond", "first"},
      {true, "first\r\nsecond\tthird", "first\r\nsecond\tthird"},
      {true, "bell\a and delete\x7F", "bell\uFFFD and delete\uFFFD"},
      {false, "", ""},
  };
  for (const auto& [multiLine, typed, kept] : cases) {
    TextBox box(window_, "Text1", -1, nullptr, kAnywhere, multiLine);
    box.UserType(typed);
    EXPECT_EQ(box.Text(), kept) << typed;
  }
  TextBox disabled(window_, "Text1", -1, nullptr, kAnywhere, false);
  disabled.SetEnabled(false);
  disabled.UserType("text");
  EXPECT_EQ(disabled.Text(), "");
}

TEST_F(ControlTest, ProgressStaysWithinItsRange) {
  auto& bar = window_.Add<ProgressBar>("ProgressBar1", -1, nullptr, kAnywhere);
  bar.SetMaximum(3);
  bar.SetValue(4);
  EXPECT_EQ(bar.Value(), 3);
  bar.SetMaximum(2);
  EXPECT_EQ(bar.Value(), 2);
  bar.SetMaximum(-1);
  bar.SetValue(-5);
  EXPECT_EQ(bar.Value(), 0);
}

TEST_F(ControlTest, ShownOnlyWithEveryFrameAroundIt) {
  auto& outer = window_.Add<Frame>("Frame1", -1, nullptr, kAnywhere);
  auto& inner = window_.Add<Frame>("Frame2", -1, &outer, kAnywhere);
  auto& button = window_.Add<Button>("Command1", -1, &inner, kAnywhere);
  EXPECT_TRUE(button.ShownOnWindow());
  outer.SetVisible(false);
  EXPECT_FALSE(button.ShownOnWindow());
  EXPECT_TRUE(button.Visible());
}

}  // namespace
}  // namespace tessel
