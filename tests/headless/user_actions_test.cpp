#include "headless/user_actions.h"

#include <gtest/gtest.h>

#include "headless/sample_pages.h"
#include "support/script_driver.h"

namespace tessel {
namespace {

class UserActionsTest : public ::testing::Test {
 protected:
  // Looks at the second page, then leaves it.
  void OnSecondPage(const std::function<void(UserActions&)>& look) {
    script_.Click("Command1").Do(look).Do([this](UserActions&) { toolkit_.Hide(*pages_.second); });
    pages_.Run();
  }

  test::ScriptDriver script_;
  HeadlessToolkit toolkit_{script_};
  test::SamplePages pages_{toolkit_};
};

TEST_F(UserActionsTest, WhatAPersonCouldNotDoIsRefusedWithItsReason) {
  OnSecondPage([&](UserActions& user) {
    const auto onPage = [&](const char* name) { return UserActions(toolkit_, name).Click("Command4"); };
    const double far = 1e300;
    const std::pair<Refusal, const char*> cases[] = {
        {user.Click("Command9"), "Tessel_1 has no control Command9"},
        {user.Click("Check1"), "Tessel_1 has no control Check1"},
        {user.Click("Command4"), "Command4 is disabled"},
        {user.Click("Check1(2)"), "Check1(2) is hidden"},
        {user.Click("Check1(3)"), "Check1(3) is inside Frame4, which is hidden"},
        {user.Click("Frame3"), "Frame3 is neither a button nor a check box"},
        {user.Check("Command1", CheckWish::kChecked), "Command1 is no check box"},
        {user.Type("TreeView3", "text"), "TreeView3 is no text box"},
        {user.ClickNode("TreeView3", 2), "TreeView3 has no node 2"},
        {user.CheckNode("TreeView3", "Wheel", CheckWish::kToggled), "TreeView3 has no node \"Wheel\""},
        {user.SetBounds({0, 0, far, 100}), "no window can be dragged there"},
        {user.SetBounds({0, 0, -1, 100}), "no window can be dragged there"},
        {user.PressEnter(), "no button of Tessel_1 answers Enter"},
        {onPage("Tessel_0"), "window Tessel_0 is hidden"},
        {onPage("Tessel_7"), "there is no window Tessel_7"},
    };
    for (const auto& [refusal, reason] : cases)
      EXPECT_EQ(refusal, reason);
    EXPECT_EQ(pages_.stepsDone, 0);
  });
  EXPECT_EQ(UserActions(toolkit_).Click("Command1"), "no window is open");
}

TEST_F(UserActionsTest, ControlsInADisabledFrameCannotBeUsed) {
  OnSecondPage([&](UserActions& user) {
    pages_.second->Find("Frame3")->SetEnabled(false);
    EXPECT_EQ(user.Type("Text1(0)", "text"), "Text1(0) is inside Frame3, which is disabled");
  });
}

TEST_F(UserActionsTest, AWindowBelowAnotherCannotBeUsed) {
  static_cast<Button&>(*pages_.first->Find("Command1")).OnClick = [&] { toolkit_.ShowModal(pages_.second); };
  script_.Click("Command1")
      .Do([&](UserActions&) {
        EXPECT_EQ(UserActions(toolkit_, "Tessel_0").CloseWindow(),
                  "window Tessel_0 is not on top, Tessel_1 is");
        toolkit_.Hide(*pages_.second);
      })
      .Do([](UserActions& user) { EXPECT_EQ(user.PressEscape(), ""); });
  pages_.Run();
  EXPECT_TRUE(pages_.cancelled);
}

TEST_F(UserActionsTest, NodesGoByPositionTextOrTag) {
  OnSecondPage([&](UserActions& user) {
    const auto& list = static_cast<TreeList&>(*pages_.second->Find("TreeView3"));
    for (const NodeChoice& choice : {NodeChoice(1), NodeChoice("Shaft"), NodeChoice("1201_2")}) {
      EXPECT_EQ(user.ClickNode("TreeView3", 0), "");
      EXPECT_EQ(user.ClickNode("TreeView3", choice), "");
      EXPECT_EQ(list.Selected(), 1);
    }
    EXPECT_EQ(user.CheckNode("TreeView3", "Gear", CheckWish::kChecked), "");
    EXPECT_EQ(user.CheckNode("TreeView3", "Gear", CheckWish::kChecked), "");
    EXPECT_TRUE(list.NodeAt(0).checked);
    EXPECT_EQ(user.CheckNode("TreeView3", "Gear", CheckWish::kUnchecked), "");
    EXPECT_EQ(list.CheckedCount(), 0);
  });
}

TEST_F(UserActionsTest, MenusRunTheChosenItem) {
  script_.ChooseItem("mnuAddValues").ChooseItem("");
  OnSecondPage([&](UserActions& user) {
    EXPECT_EQ(user.ClickNode("TreeView3", 0, MouseButton::kRight), "");
    EXPECT_EQ(user.ReleaseButton("TreeView3", MouseButton::kRight), "");
  });
  EXPECT_EQ(pages_.menuChoices, "values ");
}

}  // namespace
}  // namespace tessel
