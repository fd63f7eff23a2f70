#include "support/wizard_script.h"

namespace tessel::test {
namespace {

constexpr const char* kConfirm = "Do you really want to cancel the data export process?";
constexpr const char* kKeep = "Do you want to keep your selektion?";

struct Path {
  int mode;
  bool structureMode;
  std::vector<std::string> customClient;  // lines of that section
  std::string pages;                      // in the order in which they are shown
};

// The forward action of a page.
void GoForward(World& world, const std::string& page, int mode) {
  ScriptDriver& driver = world.driver;
  if (page == "Tessel_1") driver.Check("Check1(" + std::to_string(mode) + ")");
  if (page == "Tessel_2") CopyAll(world);
  if (page == "Tessel_3") CollectPair(world, "Acme ", "Smith Jo");
  if (page == "Tessel_4a") driver.ClickNode("TreeView1", 1);
  driver.Click("Command1");
}

const std::vector<std::string> kFinalFolder{"Export_anna_20240131_154502_New"};

TEST(Flow, EveryPathForward) {
  const std::vector<std::string> form{"UseCustomForm=True"};
  const std::vector<std::string> list{"UsePartnerList=True"};
  const std::vector<std::string> both{"UseCustomForm=True", "UsePartnerList=True"};
  const Path paths[] = {
      {kMail, false, {}, "0 1 2 3 5"},     {kMailStructure, false, both, "0 1 2 3 5"},
      {kOdette, false, {}, "0 1 2 3"},     {kOdette, false, form, "0 1 2 3 4"},
      {kCustom, false, {}, "0 1 2"},       {kCustom, false, form, "0 1 2 4"},
      {kCustom, false, list, "0 1 2 3"},   {kCustom, false, both, "0 1 2 3 4"},
      {kNoSend, false, both, "0 1 2"},     {kMail, true, {}, "0 1 2 3 4a 5"},
      {kOdette, true, {}, "0 1 2 3 4a"},   {kOdette, true, form, "0 1 2 3 4a 4"},
      {kCustom, true, list, "0 1 2 3 4a"}, {kCustom, true, both, "0 1 2 3 4a 4"},
      {kCustom, true, form, "0 1 2 4"},    {kNoSend, true, {}, "0 1 2"},
  };
  for (const Path& path : paths) {
    SCOPED_TRACE(std::to_string(path.mode) + ": " + path.pages);
    World world(SettingLines{{"CustomClient", path.customClient}});
    world.Select({World::kGearbox});
    std::string expected;
    for (const std::string& number : SplitText(path.pages, " ")) {
      GoForward(world, "Tessel_" + number, path.mode);
      expected += "show Tessel_" + number + "\nhide Tessel_" + number + "\n";
    }
    EXPECT_EQ(world.Export(path.structureMode ? "StructureMode" : ""), 0);
    EXPECT_EQ(world.driver.Transcript(), expected);
    EXPECT_TRUE(world.Wizard().ExportFinished);
    EXPECT_EQ(world.program.exportOutcome.dispatch, DispatchEnd::kFinished);
    EXPECT_EQ(world.ExchangeFolders(), kFinalFolder);
    EXPECT_EQ(world.GlobalText("ExportObjCount"), "Null");
  }
}

TEST(Flow, GoingBackAndForward) {
  World world;
  world.Select({World::kGearbox});
  const Rect moved{300, 450, 9000, 6000};
  const Rect movedAgain{600, 750, 8000, 7000};
  const auto expectBounds = [&](const char* page, const Rect& bounds) {
    LookAt(world, page, [bounds](Window& window) { EXPECT_EQ(window.Bounds(), bounds); });
  };
  GoToSendData(world, kMail);
  world.driver.Resize(moved).Click("Command2");
  expectBounds("Tessel_1", moved);
  world.driver.Resize(movedAgain).Check("Check1(1)").Click("Command1");
  expectBounds("Tessel_2", movedAgain);
  CopyAll(world);
  world.driver.Click("Command1");
  expectBounds("Tessel_3", movedAgain);
  CollectPair(world, "Acme ", "Smith Jo");
  world.driver.Click("Command1");
  expectBounds("Tessel_4a", movedAgain);
  world.driver.Resize(moved).Click("Command2");
  LookAt(world, "Tessel_3", [&](Window& window) {
    EXPECT_EQ(window.Bounds(), moved);
    EXPECT_EQ(world.Wizard().NavigatedFrom, PageId::kFolderStructure);
    EXPECT_EQ(world.ControlOf<TreeList>("Tessel_3", "TreeView3").NodeCount(), 0);
  });
  world.driver.Click("Command2");
  expectBounds("Tessel_2", moved);
  world.driver.Click("Command3");
  EXPECT_EQ(world.Export("StructureMode"), 1);
}

TEST(Flow, GoingBackAndForthWithoutEnd) {
  World world;
  world.Select({World::kGearbox});
  GoToSendData(world, kMail);
  for (int round = 0; round < 400; ++round)
    world.driver.Click("Command2").Click("Command1");
  world.driver.Click("Command2").Check("Check1(5)").Click("Command1");
  CopyAll(world);
  world.driver.Click("Command1");
  EXPECT_EQ(world.Export(), 0);
  EXPECT_EQ(world.ExchangeFolders(), kFinalFolder);
}

// Cancel button of a page, after going there, and the questions it asks.
struct CancelCase {
  std::string page;
  std::string button;
  bool keepEnabled;
  MessageAnswer answer;
  bool asked;
};

TEST(Flow, CancelButtons) {
  const CancelCase cases[] = {
      {"Tessel_0", "Command2", false, MessageAnswer::kNo, false},
      {"Tessel_0", "Command2", true, MessageAnswer::kYes, true},
      {"Tessel_1", "Command2", true, MessageAnswer::kNo, true},
      {"Tessel_2", "Command3", true, MessageAnswer::kYes, true},
      {"Tessel_2 copied", "Command3", true, MessageAnswer::kYes, false},
      {"Tessel_3", "Command3", true, MessageAnswer::kYes, false},
  };
  for (const CancelCase& row : cases) {
    SCOPED_TRACE(row.page + (row.keepEnabled ? " asking" : ""));
    World world(SettingLines{{"Settings", {row.keepEnabled ? "EnableKeepSelection=true" : ""}}});
    world.Select({World::kGearbox});
    if (row.page != "Tessel_0") GoToSendMode(world);
    if (row.page > "Tessel_1") world.driver.Click("Command1");
    if (row.page > "Tessel_2") CopyAll(world);
    if (row.page == "Tessel_3") world.driver.Click("Command1");
    if (row.asked) world.driver.AnswerBox(row.answer);
    world.driver.Click(row.button);
    EXPECT_EQ(world.Export(), 1);
    const std::string question = std::string("box \"\" none \"") + kKeep + "\"";
    EXPECT_EQ(world.driver.Transcript().find(question) != std::string::npos, row.asked);
    const bool kept = row.asked && row.answer == MessageAnswer::kYes;
    EXPECT_EQ(world.Wizard().KeepSelection, kept);
    EXPECT_EQ(world.GlobalText("ExportObjCount"), kept ? "1" : "Null");
    EXPECT_EQ(world.ExchangeFolders(), std::vector<std::string>{});
  }
}

TEST(Flow, ClosingAPage) {
  struct Row {
    int pages;  // presses of Command1 before the page
    std::string box;
  };
  const std::string cancelled = "box \"Kestrix\" none \"The export is cancelled\" [ok]";
  for (const Row& row : {Row{0, ""}, Row{1, ""}, Row{2, ""}, Row{3, cancelled}}) {
    SCOPED_TRACE(row.pages);
    World world;
    world.Select({World::kGearbox});
    for (int page = 0; page < row.pages; ++page) {
      if (page == 2) CopyAll(world);
      world.driver.Click("Command1");
    }
    if (!row.box.empty()) world.driver.AnswerBox();
    world.driver.CloseWindow();
    EXPECT_EQ(world.Export(), 1);
    EXPECT_EQ(world.driver.Transcript().find("box") == std::string::npos, row.box.empty());
    EXPECT_NE(world.driver.Transcript().find(row.box), std::string::npos);
    EXPECT_EQ(world.ExchangeFolders(), std::vector<std::string>{});
  }
}

TEST(Flow, LastPagesConfirmTheirClosing) {
  const std::string no = std::string("box \"Cancel\" none \"") + kConfirm + "\" [no]\n";
  const std::string yes = std::string("box \"Cancel\" none \"") + kConfirm + "\" [yes]\n";
  struct Row {
    int mode;
    std::string operation;
    std::string page;
  };
  for (const Row& row : {Row{kMail, "", "Tessel_5"}, Row{kOdette, "", "Tessel_4"},
                         Row{kOdette, "StructureMode", "Tessel_4a"}}) {
    SCOPED_TRACE(row.page);
    World world(SettingLines{{"CustomClient", {"UseCustomForm=True"}}});
    world.Select({World::kGearbox});
    GoBehindSendData(world, row.mode);
    CollectPair(world, "Acme ", "Smith Jo");
    world.driver.Click("Command1").CloseWindow().CloseWindow();
    world.driver.AnswerBox(MessageAnswer::kNo).AnswerBox(MessageAnswer::kYes);
    EXPECT_EQ(world.Export(row.operation), 1);
    const std::string end = "show " + row.page + "\n" + no + yes + "hide " + row.page + "\n";
    EXPECT_EQ(world.driver.Transcript().substr(world.driver.Transcript().find("show " + row.page)), end);
    EXPECT_EQ(world.ExchangeFolders(), std::vector<std::string>{});
  }
}

// A file name that leads out of the directory ends the dispatch before anything is final.
const SettingLines kFailingDispatch{{"ini_xml", {"DataFileName=../data.xml"}},
                                    {"CustomClient", {"UseCustomForm=True"}}};
constexpr const char* kDispatchError = "Fehler beim Aufbauen der XML Dateien (Command1_Click/Tessel_4)";

TEST(Flow, FailedDispatchOfTheSendDataPageCountsAsFinished) {
  World world(kFailingDispatch);
  world.Select({World::kGearbox});
  GoBehindSendData(world, kNoSend);
  EXPECT_EQ(world.Export(), 0);
  EXPECT_TRUE(world.Traced(kDispatchError));
  EXPECT_EQ(world.program.exportOutcome.dispatch, DispatchEnd::kFailed);
  EXPECT_EQ(world.ExchangeFolders(), std::vector<std::string>{}) << "nobody could reach it any more";
}

TEST(Flow, FailedDispatchLeavesTheMailPageOpen) {
  World world(kFailingDispatch);
  world.Select({World::kGearbox});
  GoBehindSendData(world, kMail);
  CollectPair(world, "Acme ", "Smith Jo");
  world.driver.Click("Command1").Click("Command1");
  LookAt(world, "Tessel_5", [&](Window&) { EXPECT_TRUE(world.Traced(kDispatchError)); });
  world.driver.CloseWindow().AnswerBox(MessageAnswer::kYes);
  EXPECT_EQ(world.Export(), 1);
  EXPECT_EQ(world.program.exportOutcome.dispatch, DispatchEnd::kFailed);
  EXPECT_EQ(world.ExchangeFolders(), std::vector<std::string>{});
}

TEST(Flow, CleanUpAsksACustomPageWhoseDispatchFailed) {
  World world(kFailingDispatch);
  world.Select({World::kGearbox});
  GoBehindSendData(world, kCustom);
  world.driver.Click("Command1").AnswerBox(MessageAnswer::kNo);
  EXPECT_EQ(world.Export(), 1);
  EXPECT_FALSE(world.PageWindow("Tessel_4").Unloaded());
  EXPECT_TRUE(world.PageWindow("Tessel_2").Unloaded());
}

}  // namespace
}  // namespace tessel::test
