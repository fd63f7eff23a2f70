#include "support/wizard_script.h"

namespace tessel::test {
namespace {

const std::string kPage = "Tessel_2";
const std::string kDirectory = "@@_anna_20240131_154502";

TreeList& Selection(const World& world) {
  return world.ControlOf<TreeList>(kPage, "TreeView2");
}

std::string CaptionOf(const World& world, const std::string& id) {
  return world.ControlOf<Control>(kPage, id).Caption();
}

TEST(SendDataPage, ListsTheSelection) {
  World world(SettingLines{{"DisplayAttributes", {"DisplayAttribute2=REVISION"}}});
  world.Select({World::kBolt, World::kNameless, World::kGearbox});
  GoToSendData(world, kMail);
  LookAt(world, kPage, [&](Window&) {
    const TreeList& list = Selection(world);
    EXPECT_EQ(NodesOf(list), "Bolt ; A|1202_3\n ; A|1202_4\nGearbox ; A|1201_1\n");
    EXPECT_EQ(list.Selected(), 0);
    EXPECT_EQ(list.NodeAt(2).imageKey, "Class1201");
    EXPECT_EQ(list.Images()->Images().size(), 2U);
    EXPECT_EQ(list.Images()->Find("Class1202")->file, world.folder.Path("model/icons/part.png"));
  });
  world.driver.Click("Command3");
  world.Export();
  EXPECT_TRUE(world.Traced("lese Objekte aus den globalen Variablen aus(Form_Load/Tessel_2): 2 1 1201"));
  EXPECT_TRUE(world.Traced("liste selektierte Daten auf(Form_Load/Tessel_2): 0 _STOBJECT_"));
  EXPECT_TRUE(
      world.Traced("!! NODE NAME (DESCRIPTION1: 'VRK_DESCRIPTION') IS EMPTY FOR OBJECT: '1202_4' !!!"));
}

TEST(SendDataPage, CopiesAllInOneRun) {
  World world(SettingLines{{"Settings", {"PresetCopyAllBox=true", "GenerateStructureFile=0"}}});
  world.Select({World::kGearbox, World::kBolt, World::kNameless});
  GoToSendData(world, kNoSend);
  LookAt(world, kPage, [&](Window&) { EXPECT_EQ(CaptionOf(world, "Label1"), "0 / 3"); });
  std::vector<std::string> progress;
  for (int pump = 0; pump < 12; ++pump) {
    world.driver.WhenBusy([&](UserActions&) {
      const auto& bar = world.ControlOf<ProgressBar>(kPage, "ProgressBar1");
      progress.push_back(CaptionOf(world, "Label1") + (bar.Visible() ? " shown" : " hidden"));
    });
  }
  world.driver.Click("Command1");
  LookAt(world, kPage, [&](Window&) {
    EXPECT_EQ(CaptionOf(world, "Command1"), "Versenden");
    EXPECT_EQ(CaptionOf(world, "Label2"), "Kopiervorgang erfolgreich");
    EXPECT_TRUE(world.ControlOf<Label>(kPage, "Label2").Visible());
    EXPECT_EQ(CaptionOf(world, "Label1"), "3 / 3");
    EXPECT_EQ(Selection(world).CheckedCount(), 3);
    EXPECT_FALSE(world.program.structure.hierarchicalStructure);
    EXPECT_EQ(world.GlobalText("ExDir"), world.folder.Path("exchange/" + kDirectory));
    for (const char* name : {"ExportObjCount", "ExportObject1", "ExportObject3", "isKestrix"})
      EXPECT_EQ(world.GlobalText(name), "Null") << name;
    EXPECT_EQ(world.folder.Tree("exchange/" + kDirectory),
              (std::vector<std::string>{"bolt.stp", "gearbox.stp", "nameless.stp", "shaft.stp"}));
    EXPECT_NE(world.program.errors.ProtocolText.find("Directory " + world.ExchangePath()), std::string::npos);
  });
  world.driver.Click("Command2");
  // The send mode decides the caption, and it may change after the copy.
  world.driver.Check("Check1(1)").Click("Command1");
  LookAt(world, kPage, [&](Window&) { EXPECT_EQ(CaptionOf(world, "Command1"), "Weiter >>"); });
  world.driver.Click("Command3");
  EXPECT_EQ(world.Export(), 1);
  EXPECT_EQ(progress,
            (std::vector<std::string>{"0 / 3 shown", "0 / 3 shown", "0 / 3 shown", "1 / 3 shown",
                                      "1 / 3 shown", "1 / 3 shown", "1 / 3 shown", "2 / 3 shown",
                                      "2 / 3 shown", "2 / 3 shown", "2 / 3 hidden", "3 / 3 hidden"}));
  EXPECT_EQ(world.driver.pauses, std::vector<int>(3 * 4, 50));
}

TEST(SendDataPage, CopiesObjectByObject) {
  World world;
  world.Select({World::kGearbox, World::kBolt});
  GoToSendData(world, kNoSend);
  world.driver.AnswerLifeCycle(1).AnswerLifeCycle(7).AnswerLifeCycle(1);
  world.driver.Click("Command1");
  LookAt(world, kPage, [&](Window&) {
    EXPECT_EQ(NodesOf(Selection(world)), "Gearbox ; A-1|1201_1|x\nBolt ; P-3|1202_3\n");
    EXPECT_FALSE(world.ControlOf<CheckBox>(kPage, "Check1").Enabled());
    EXPECT_EQ(CaptionOf(world, "Command1"), "Bearbeiten");
  });
  world.driver.Click("Command1");  // the selected node is copied already
  world.driver.ClickNode("TreeView2", 1).Click("Command1");
  LookAt(world, kPage, [&](Window&) { EXPECT_EQ(Selection(world).CheckedCount(), 1); });
  world.driver.Click("Command1").Click("Command1");
  EXPECT_EQ(world.Export(), 0);
  const std::string copy = "hide Tessel_2\nlife cycle CopyFile \"" + world.ExchangePath() + "/" + kDirectory;
  EXPECT_EQ(world.driver.Transcript(),
            "show Tessel_0\nhide Tessel_0\nshow Tessel_1\nhide Tessel_1\nshow Tessel_2\n" + copy +
                "\" 1201:1 [1]\nshow Tessel_2\n" + copy + "\" 1202:3 [7]\nshow Tessel_2\n" + copy +
                "\" 1202:3 [1]\nshow Tessel_2\nhide Tessel_2\n");
  EXPECT_TRUE(world.ControlOf<CheckBox>(kPage, "Check1").Enabled());
}

TEST(SendDataPage, UserCannotChangeMarks) {
  World world;
  world.Select({World::kGearbox, World::kBolt});
  GoToSendData(world, kNoSend);
  world.driver.Click("Command1").AnswerLifeCycle(1);
  const auto unchanged = [&] {
    LookAt(world, kPage, [&](Window&) {
      EXPECT_EQ(NodesOf(Selection(world)), "Gearbox ; A-1|1201_1|x\nBolt ; P-3|1202_3\n");
    });
  };
  world.driver.ClickNodeBox("TreeView2", 0);
  unchanged();
  world.driver.ClickNodeBox("TreeView2", 1);
  unchanged();
  world.driver.PressKey("TreeView2", U' ');
  unchanged();
  world.driver.PressKey("TreeView2", U'x').ClickNodeBox("TreeView2", 1);
  unchanged();
  world.driver.PressKey("TreeView2", U' ').ClickNode("TreeView2", 1).PressKey("TreeView2", U' ');
  unchanged();
  world.driver.Click("Command3");
  EXPECT_EQ(world.Export(), 1);
}

// Presses of the process and back buttons during a copy do nothing; cancel ends it after the object in hand.
TEST(SendDataPage, ButtonsDuringACopy) {
  World world;
  world.Select({World::kGearbox, World::kBolt, World::kNameless});
  GoToSendData(world, kNoSend);
  world.driver.WhenBusy([](UserActions& user) {
    EXPECT_EQ(user.Click("Command1"), "");
    EXPECT_EQ(user.Click("Command2"), "");
    EXPECT_EQ(user.PressKey("TreeView2", U' '), "");
  });
  for (int pump = 0; pump < 4; ++pump)
    world.driver.WhenBusy([](UserActions&) {});
  world.driver.WhenBusy([](UserActions& user) { EXPECT_EQ(user.Click("Command3"), ""); });
  CopyAll(world);
  EXPECT_EQ(world.Export(), 1);
  EXPECT_EQ(NodesOf(Selection(world)), "Gearbox ; A-1|1201_1|x\nBolt ; P-3|1202_3|x\n ; P-4|1202_4\n");
  EXPECT_EQ(world.folder.Tree("exchange"), std::vector<std::string>{});
  EXPECT_EQ(world.driver.Transcript(),
            "show Tessel_0\nhide Tessel_0\nshow Tessel_1\nhide Tessel_1\nshow Tessel_2\nhide Tessel_2\n");
}

TEST(SendDataPage, ClosingDuringTheLastObjectKeepsTheExportCancelled) {
  World world;
  world.Select({World::kGearbox});
  GoToSendData(world, kNoSend);
  world.driver.WhenBusy([](UserActions& user) { EXPECT_EQ(user.CloseWindow(), ""); });
  CopyAll(world);
  EXPECT_EQ(world.Export(), 1);
  EXPECT_EQ(world.folder.Tree("exchange"), std::vector<std::string>{});
}

TEST(SendDataPage, FailedCopyEndsThePressAndMayBeTriedAgain) {
  World world;
  std::vector<CopyFailure> told;
  world.program.wizard.tell = [&](const CopyFailure& failure) { told.push_back(failure); };
  world.Select({World::kGearbox, World::kBolt});
  GoToSendData(world, kMail);
  world.driver.Do([&](UserActions&) {
    std::filesystem::rename(world.folder.Path("vault/bolt.stp"), world.folder.Path("bolt.stp"));
  });
  CopyAll(world);
  LookAt(world, kPage, [&](Window&) { EXPECT_EQ(Selection(world).CheckedCount(), 1); });
  world.driver.Click("Command1");  // the selected node is copied already
  world.driver.Do([&](UserActions&) {
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0].trouble, CopyTrouble::kNotCopied);
    EXPECT_EQ(told[0].document, "Bolt ; P-3");
    EXPECT_TRUE(told[0].path.starts_with(world.ExchangePath())) << told[0].path;
    EXPECT_EQ(told[0].number, error_number::kFileNotFound) << told[0].cause;
    EXPECT_EQ(told[1].trouble, CopyTrouble::kCopiedAlready);
    EXPECT_EQ(told[1].cause, "");
    std::filesystem::rename(world.folder.Path("bolt.stp"), world.folder.Path("vault/bolt.stp"));
  });
  world.driver.ClickNode("TreeView2", 1).Click("Command1");
  LookAt(world, kPage, [&](Window&) {
    EXPECT_EQ(CaptionOf(world, "Command1"), "Weiter >>");
    EXPECT_TRUE(world.program.trace.problems.Kept().empty()) << "it was put right";
    // What stands below the first object was not described a second time.
    int described = 0;
    for (XmlNode node = world.program.structure.contentList.FirstChild().FirstChild(); node;
         node = node.NextSibling())
      described += node.Type() == XmlNodeType::kElement ? 1 : 0;
    EXPECT_EQ(described, 1);
  });
  world.driver.Click("Command3");
  EXPECT_EQ(world.Export(), 1);
}

TEST(SendDataPage, SomebodyElsesDirectoryIsLeftAlone) {
  World world;
  world.folder.Write("exchange/" + kDirectory + "/theirs.txt", "theirs");
  world.Select({World::kGearbox});
  GoToSendData(world, kMail);
  CopyAll(world);
  LookAt(world, kPage, [&](Window&) {
    EXPECT_EQ(Selection(world).CheckedCount(), 0);
    EXPECT_EQ(world.GlobalText("ExDir"), "Null");
  });
  world.driver.Click("Command3");
  EXPECT_EQ(world.Export(), 1);
  EXPECT_TRUE(world.folder.Exists("exchange/" + kDirectory + "/theirs.txt"));
}

TEST(SendDataPage, CopiedFilesAreWritable) {
  World world;
  world.Select({World::kGearbox});
  const std::string file = world.folder.Path("exchange/" + kDirectory + "/gearbox.stp");
  GoToSendData(world, kMail);
  world.driver.WhenBusy([&](UserActions&) { world.platform.files.SetReadOnly(file, true); });
  CopyAll(world);
  LookAt(world, kPage, [&](Window&) { EXPECT_FALSE(world.platform.files.IsReadOnly(file)); });
  world.driver.Click("Command3");
  EXPECT_EQ(world.Export(), 1);
}

TEST(SendDataPage, EmptySelectionHasNothingToProcess) {
  World world;
  world.session->GlobalData().Set("ExportObjCount", "0");
  GoToSendData(world, kMail);
  CopyAll(world);
  world.driver.Click("Command3");
  EXPECT_EQ(world.Export(), 1);
  EXPECT_TRUE(world.Traced("Fehler beim Bearbeiten der Rootobjekte (Command1_Click/Tessel_2)"));
}

}  // namespace
}  // namespace tessel::test
