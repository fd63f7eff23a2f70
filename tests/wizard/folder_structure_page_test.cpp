#include "support/wizard_script.h"

namespace tessel::test {
namespace {

const std::string kPage = "Tessel_4a";
constexpr const char* kNotFound = "No folder structure definition for selected object found|-1\n";

void GoToFolderStructures(World& world, ObjectKey selected) {
  world.Select({selected});
  GoBehindSendData(world, kOdette);
  CollectPair(world, "Acme ", "Smith Jo");
  world.driver.Click("Command1");
}

TEST(FolderStructurePage, StoresTheChosenOne) {
  World world;
  GoToFolderStructures(world, World::kGearbox);
  LookAt(world, kPage, [&](Window&) {
    EXPECT_EQ(NodesOf(world.ControlOf<TreeList>(kPage, "TreeView1")), "Standard|910_41\nFlat|910_42\n");
  });
  world.driver.Click("Command1").AnswerBox();
  world.driver.ClickNode("TreeView1", "Flat").Click("Command1");
  EXPECT_EQ(world.Export("StructureMode"), 0);
  EXPECT_NE(world.driver.Transcript().find("box \"Kestrix\" information \"Choose a folder structure\" [ok]"),
            std::string::npos);
  EXPECT_EQ(world.Wizard().SelectedFolderStructure, "910_42");
  EXPECT_TRUE(
      world.Traced("UseFolderStructure is 'On' ; selected Folder structure definition: Flat ; Selected "
                   "Object: 910_42"));
}

TEST(FolderStructurePage, SaysWhenThereIsNone) {
  for (const bool classSupported : {true, false}) {
    World world({}, classSupported);
    GoToFolderStructures(world, classSupported ? World::kBolt : World::kGearbox);
    LookAt(world, kPage,
           [&](Window&) { EXPECT_EQ(NodesOf(world.ControlOf<TreeList>(kPage, "TreeView1")), kNotFound); });
    world.driver.ClickNode("TreeView1", 0).Click("Command1");
    EXPECT_EQ(world.Export("StructureMode"), 0);
    EXPECT_EQ(world.Wizard().SelectedFolderStructure, "-1");
  }
}

}  // namespace
}  // namespace tessel::test
