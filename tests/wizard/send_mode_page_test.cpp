#include "support/wizard_script.h"

namespace tessel::test {
namespace {

std::string BoxesOf(const World& world) {
  std::string boxes;
  for (int index = 1; index <= 5; ++index) {
    const auto& box = world.ControlOf<CheckBox>("Tessel_1", "Check1(" + std::to_string(index) + ")");
    boxes += (index > 1 ? " " : "") +
             (box.Visible() ? std::to_string(static_cast<int>(box.Bounds().top)) : std::string("-")) +
             (box.Checked() ? "x" : "");
  }
  return boxes;
}

TEST(SendModePage, OffersWhatTheConfigurationSays) {
  struct Row {
    std::vector<std::string> modes;
    std::string boxes;  // tops, "x" behind the checked one
    int sendMode;
  };
  const Row rows[] = {
      {{}, "360 840x 1320 1800 2280", 2},
      {{"Mail=0", "MailStructure=1"}, "- 360 840 1320 1800", 2},
      {{"Odette=2", "MailStructure=2"}, "360 840 1320x 1800 2280", 3},
      {{"Mail=7", "MailStructure=-1", "CustomSend=0", "NoSend=2"}, "360 - 840 - 1320x", 5},
  };
  for (const Row& row : rows) {
    World world(SettingLines{{"AvailableSendModi", row.modes}});
    world.Select({World::kGearbox});
    GoToSendMode(world);
    LookAt(world, "Tessel_1", [&](Window&) {
      EXPECT_EQ(BoxesOf(world), row.boxes);
      EXPECT_EQ(static_cast<int>(world.Wizard().SendMode), row.sendMode);
    });
    world.driver.Click("Command1").CloseWindow();
    world.Export();
    EXPECT_TRUE(world.Traced("Send mode: " + std::to_string(row.sendMode)));
  }
}

TEST(SendModePage, BoxesAreOneChoiceThatCannotBeEmptied) {
  World world;
  world.Select({World::kGearbox});
  GoToSendMode(world);
  world.driver.Click("Check1(2)");
  LookAt(world, "Tessel_1", [&](Window&) { EXPECT_EQ(BoxesOf(world), "360 840x 1320 1800 2280"); });
  world.driver.Click("Check1(4)");
  LookAt(world, "Tessel_1", [&](Window&) {
    EXPECT_EQ(BoxesOf(world), "360 840 1320 1800x 2280");
    EXPECT_EQ(static_cast<int>(world.Wizard().SendMode), kCustom);
  });
  world.driver.Click("Command2");
  EXPECT_EQ(world.Export(), 1);
}

// Without a preselected mode the box that the user left checked is the mode; with one, the preselection wins.
TEST(SendModePage, ComingBack) {
  for (const bool preselected : {false, true}) {
    World world(SettingLines{{"AvailableSendModi", {preselected ? "MailStructure=2" : "MailStructure=1"}}});
    world.Select({World::kGearbox});
    GoToSendData(world, kOdette);
    world.driver.Click("Command2");
    LookAt(world, "Tessel_1", [&](Window&) {
      EXPECT_EQ(static_cast<int>(world.Wizard().SendMode), preselected ? kMailStructure : kOdette);
      EXPECT_EQ(BoxesOf(world), preselected ? "360 840x 1320 1800 2280" : "360 840 1320x 1800 2280");
    });
    world.driver.Click("Command2");
    EXPECT_EQ(world.Export(), 1);
  }
}

}  // namespace
}  // namespace tessel::test
