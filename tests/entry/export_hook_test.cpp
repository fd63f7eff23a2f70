#include <gtest/gtest.h>

#include "support/wizard_script.h"

namespace tessel::test {
namespace {

constexpr const char* kKeep = "Do you want to keep your selektion?";

void CancelOnStartPage(World& world) {
  world.driver.Click("Command2");
}

TEST(ExportHook, NothingSelected) {
  World world;
  world.driver.AnswerBox();
  EXPECT_EQ(world.Export(), 1);
  EXPECT_EQ(world.driver.Transcript(), "box \"Kestrix\" information \"Nothing selected\" [ok]\n");
  EXPECT_FALSE(world.Traced("Terminate all existing objects and windows"));
}

TEST(ExportHook, EmptySelectionPassesOnlyOutsideStructureMode) {
  World world;
  world.session->GlobalData().Set("ExportObjCount", "0");
  CancelOnStartPage(world);
  EXPECT_EQ(world.Export(), 1);
  EXPECT_EQ(world.driver.TakeTranscript(), "show Tessel_0\nhide Tessel_0\n");

  world.session->GlobalData().Set("ExportObjCount", "0");
  world.driver.AnswerBox();
  EXPECT_EQ(world.Export("StructureMode"), 1);
  EXPECT_EQ(world.driver.Transcript(), "box \"Kestrix\" information \"One object only\" [ok]\n");
  EXPECT_EQ(world.GlobalText("ExportObjCount"), "Null");
}

TEST(ExportHook, StructureModeTakesOneObject) {
  struct Case {
    const char* operation;
    int objects;
    bool wizard;
    bool structure;
  };
  const Case cases[] = {{"StructureMode", 1, true, true},
                        {"StructureMode", 2, false, false},
                        {"structuremode", 2, true, false},
                        {"", 1, true, false}};
  for (const Case& row : cases) {
    SCOPED_TRACE(std::string(row.operation) + " " + std::to_string(row.objects));
    World world;
    world.Select(row.objects == 1 ? std::vector{World::kGearbox}
                                  : std::vector{World::kGearbox, World::kBolt});
    bool usedStructure = false;
    if (row.wizard) {
      world.driver.Do([&](UserActions& user) {
        usedStructure = world.Wizard().UseFolderStructure;
        EXPECT_EQ(user.Click("Command2"), "");
      });
    } else {
      world.driver.AnswerBox();
    }
    EXPECT_EQ(world.Export(row.operation), 1);
    EXPECT_EQ(usedStructure, row.structure);
    EXPECT_EQ(world.driver.Transcript(), row.wizard
                                             ? "show Tessel_0\nhide Tessel_0\n"
                                             : "box \"Kestrix\" information \"One object only\" [ok]\n");
    EXPECT_EQ(world.GlobalText("ExportObject1"), "Null");
    EXPECT_EQ(world.GlobalText("ExportObjCount"), "Null");
  }
}

TEST(ExportHook, CancelKeepsOrDropsTheSelection) {
  for (const bool keep : {true, false}) {
    SCOPED_TRACE(keep ? "keep" : "drop");
    World world(SettingLines{{"Settings", {"EnableKeepSelection=True"}}});
    world.Select({World::kGearbox, World::kBolt});
    world.session->GlobalData().Remove("ExportObject2");  // a gap is passed over
    world.session->GlobalData().Set("isKestrix", "True");
    GoToSendData(world, kNoSend);
    world.driver.Click("Command1");
    world.driver.AnswerBox(keep ? MessageAnswer::kYes : MessageAnswer::kNo).Click("Command3");
    EXPECT_EQ(world.Export(), 1);
    EXPECT_NE(world.driver.Transcript().find(kKeep), std::string::npos);
    EXPECT_EQ(world.GlobalText("ExportObject1"), keep ? "1201:1" : "Null");
    EXPECT_EQ(world.GlobalText("ExportObjCount"), keep ? "2" : "Null");
    EXPECT_EQ(world.GlobalText("isKestrix"), keep ? "True" : "Null");
    EXPECT_EQ(world.ExchangeFolders().size(), 0U);
  }
}

TEST(ExportHook, AnExportAfterACancelledOneStartsAfresh) {
  World world;
  world.Select({World::kGearbox});
  world.driver.CloseWindow();
  EXPECT_EQ(world.Export(), 1);
  EXPECT_TRUE(world.Wizard().ExportCancelled);

  world.Select({World::kGearbox});
  GoBehindSendData(world, kNoSend);
  EXPECT_EQ(world.Export(), 0);
  EXPECT_FALSE(world.Wizard().ExportCancelled);
  EXPECT_EQ(world.ExchangeFolders().size(), 1U);
  EXPECT_EQ(world.GlobalText("ExportObjCount"), "Null");

  // A cancel before any copy leaves the directories of earlier exports alone.
  world.Select({World::kGearbox});
  CancelOnStartPage(world);
  EXPECT_EQ(world.Export(), 1);
  EXPECT_EQ(world.ExchangeFolders().size(), 1U);
}

TEST(ExportHook, ReadOnlyFilesGoWithACancelledExport) {
  World world;
  world.Select({World::kGearbox});
  GoToSendData(world, kMail);
  CopyAll(world);
  world.driver.Do([&](UserActions& user) {
    world.platform.files.SetReadOnly(world.program.exchange.directoryPath + "/gearbox.stp", true);
    EXPECT_EQ(user.Click("Command3"), "");
  });
  EXPECT_EQ(world.Export(), 1);
  EXPECT_EQ(world.ExchangeFolders().size(), 0U);
}

TEST(ExportHook, AConfigurationThatDoesNotConvert) {
  World world(SettingLines{{"Settings", {"UseServerMonitor=yes"}}});
  world.Select({World::kGearbox});
  world.driver.AnswerBox().AnswerBox();
  EXPECT_EQ(world.Export(), 1);
  EXPECT_EQ(world.driver.Transcript(),
            "box \"Kestrix Error\" critical \"No configuration\" [ok]\n"
            "box \"Kestrix Error\" critical \"No start\" [ok]\n");
  EXPECT_EQ(world.GlobalText("ExportObjCount"), "1");
}

TEST(ExportHook, AnErrorThatNobodyHandles) {
  World world;
  PcRecordListPtr none;
  world.driver.AnswerBox();
  EXPECT_EQ(world.application.StartExport(nullptr, "", nullptr, nullptr, none), 1);
  EXPECT_EQ(world.driver.TakeTranscript(),
            "box \"Kestrix Error\" critical \"could not read ini values for Kestrix\" [ok]\n");

  world.session->GlobalData().Set("ExportObjCount", "many");
  world.driver.AnswerBox();
  EXPECT_EQ(world.Export("StructureMode"), 1);
  EXPECT_EQ(world.driver.Transcript(),
            "box \"Kestrix Error\" critical \"could not read ini values for Kestrix\" [ok]\n");
  EXPECT_EQ(world.GlobalText("ExportObjCount"), "many");
}

// Such an end runs no clean-up: neither its pages nor its directory may reach the next export.
TEST(ExportHook, AnExportAfterABrokenOneStartsAfresh) {
  World world;
  world.Select({World::kBolt});
  GoToSendData(world, kNoSend);
  CopyAll(world);
  world.driver.Do([&](UserActions& user) {
    world.session->GlobalData().Set("ExportObjCount", "many");
    EXPECT_EQ(user.Click("Command3"), "");
  });
  world.driver.AnswerBox();
  EXPECT_EQ(world.Export(), 1);
  EXPECT_NE(world.driver.TakeTranscript().find("could not read ini values for Kestrix"), std::string::npos);
  FileSystem& files = world.platform.files;
  for (const std::string& left : world.ExchangeFolders())
    files.DeleteFolder(world.ExchangePath() + "/" + left);

  world.session->GlobalData().Remove("ExportObjCount");
  world.Select({World::kGearbox});
  GoBehindSendData(world, kNoSend);
  EXPECT_EQ(world.Export(), 0);
  ASSERT_EQ(world.ExchangeFolders().size(), 1U);
  const std::string sent = world.ExchangePath() + "/" + world.ExchangeFolders().front();
  EXPECT_TRUE(files.FileExists(sent + "/gearbox.stp"));
  EXPECT_FALSE(files.FileExists(sent + "/bolt.stp"));
}

TEST(Hooks, NothingLeavesThemWhateverTheyGet) {
  World world;
  StartApplication& hooks = world.application;
  const PcRecordListPtr odd = world.host.CreateRecordList();
  odd->AddColumn("CLASS_ID", 255, 1);
  odd->AddColumn("OBJECT_ID", 255, 1);
  odd->SetValue("CLASS_ID", 0, "70000");
  odd->SetValue("OBJECT_ID", 0, "none");
  for (int box = 0; box < 10; ++box)
    world.driver.AnswerBox();
  PcRecordListPtr none;
  for (const PcRecordListPtr& list : {PcRecordListPtr(), odd}) {
    for (const PcSessionPtr& session : {PcSessionPtr(), world.session}) {
      EXPECT_EQ(hooks.CollectSelObjs(session, "", list, list, none), 0);
      EXPECT_EQ(hooks.LFCStage2(session, "", list, list, none), 0);
      EXPECT_EQ(hooks.LockObject(session, "", list, list, none), 0);
      EXPECT_EQ(hooks.UnlockObject(session, "", list, list, none), 0);
      EXPECT_EQ(hooks.GetLatestDataExObj(session, "", list), 0);
      EXPECT_EQ(hooks.ContinueBatchMode(session, "", list, list, none), 0);
    }
  }
  EXPECT_FALSE(hooks.StartServerMon("", nullptr, 1, 1, ""));
}

}  // namespace
}  // namespace tessel::test
