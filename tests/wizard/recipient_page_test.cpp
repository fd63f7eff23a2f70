#include "dispatch/recipients.h"
#include "support/wizard_script.h"

namespace tessel::test {
namespace {

const std::string kPage = "Tessel_3";
const std::string kSmith = "Smith Jo|902_21\n";
const std::string kJones = "Jones Al|902_22\n";

std::string Nodes(const World& world, const std::string& list) {
  return NodesOf(world.ControlOf<TreeList>(kPage, list));
}

std::string Recipients(World& world) {
  std::string rows;
  const PcRecordList& list = *world.Wizard().recipients;
  for (int row = 0; row < list.RowCount(); ++row) {
    const Recipient recipient = RecipientOfRow(list, row);
    rows += ObjectKeyText(recipient.customer, ':') + " " + ObjectKeyText(recipient.contact, ':') + " " +
            recipient.directory.substr(recipient.directory.rfind('/') + 1) + "\n";
  }
  return rows;
}

TEST(RecipientPage, ListsPartnersAndTheirContactPersons) {
  World world(SettingLines{{"DisplayAttributes", {"DisplayAttribCustom2=CITY"}}});
  world.Select({World::kGearbox});
  GoBehindSendData(world, kMail);
  LookAt(world, kPage, [&](Window&) {
    EXPECT_EQ(Nodes(world, "TreeView1"), "Acme Hull|901_11\nBolt |901_12\n");
    EXPECT_EQ(world.ControlOf<TreeList>(kPage, "TreeView1").Selected(), 0);
    EXPECT_EQ(Nodes(world, "TreeView2"), "");
  });
  world.driver.ClickNode("TreeView1", 0);
  // Jones is below Smith, who is below Jones; the inactive one is left out.
  LookAt(world, kPage, [&](Window&) { EXPECT_EQ(Nodes(world, "TreeView2"), kSmith + kJones); });
  world.driver.ClickNode("TreeView1", 1);
  LookAt(world, kPage, [&](Window&) { EXPECT_EQ(Nodes(world, "TreeView2"), "Brown |902_24\n"); });
  world.driver.Click("Command3");
  EXPECT_EQ(world.Export(), 1);
  EXPECT_TRUE(world.Traced("Insgesamt 2 Kundenobjekte gefunden: (ListCustomer/CommonXFunctions)"));
  EXPECT_TRUE(
      world.Traced("Kundenobjekte in Liste: (ListCustomer/CommonXFunctions); Anzahl: 1 Anzeige: Acme Hull"));
  EXPECT_TRUE(
      world.Traced("Kontakpersonen in Liste: (ListContactPerson/CommonXFunctions); Anzahl: 2 Anzeige: "
                   "Jones Al"));
}

TEST(RecipientPage, AttributeThatIsNoneEndsTheListWithATrace) {
  World world(SettingLines{{"DisplayAttributes", {"DisplayAttribCustom1=NO_SUCH"}}});
  world.Select({World::kGearbox});
  GoBehindSendData(world, kMail);
  LookAt(world, kPage, [&](Window&) { EXPECT_EQ(Nodes(world, "TreeView1"), ""); });
  world.driver.Click("Command3");
  EXPECT_EQ(world.Export(), 1);
  EXPECT_TRUE(world.Traced("Fehler in function: (ListCustomer/CommonXFunctions)"));
}

TEST(RecipientPage, SingleRecipientNeedsAPair) {
  World world(kSingleRecipient);
  world.Select({World::kGearbox});
  GoBehindSendData(world, kOdette);
  world.driver.Click("Command1").AnswerBox();
  world.driver.Refused([](UserActions& user) { return user.Click("Command4"); }, "Command4 is hidden");
  ChoosePair(world, "Acme ", "Smith Jo");
  world.driver.Click("Command1");
  EXPECT_EQ(world.Export(), 0);
  EXPECT_NE(world.driver.Transcript().find("box \"Kestrix\" information \"Choose a recipient\" [ok]"),
            std::string::npos);
  EXPECT_EQ(Recipients(world), "901:11 902:21 @@_anna_20240131_154502\n");
}

TEST(RecipientPage, CollectsSeveralRecipients) {
  World world;
  world.Select({World::kGearbox});
  GoBehindSendData(world, kOdette);
  world.driver.Click("Command4").AnswerBox().Click("Command1").AnswerBox();
  CollectPair(world, "Bolt ", "Brown ");
  CollectPair(world, "Acme ", "Jones Al");
  world.driver.Click("Command4").AnswerBox();
  CollectPair(world, "Acme ", "Smith Jo");
  CollectPair(world, "Bolt ", "Brown ");
  world.driver.AnswerBox();
  LookAt(world, kPage, [&](Window&) {
    EXPECT_EQ(Nodes(world, "TreeView3"),
              "Bolt  >> Brown |901_12_902_24\nAcme  >> Jones Al|901_11_902_22\nAcme  >> Smith "
              "Jo|901_11_902_21\n");
  });
  world.driver.ClickNode("TreeView3", 1).Click("Command5");
  CollectPair(world, "Acme ", "Jones Al");
  world.driver.Click("Command1");
  EXPECT_EQ(world.Export(), 0);
  EXPECT_EQ(Recipients(world),
            "901:12 902:24 @@_anna_20240131_154502\n901:11 902:21 @@_anna_20240131_15450a\n"
            "901:11 902:22 @@_anna_20240131_15450b\n");
  EXPECT_TRUE(world.Traced("MULTISELECTION: Kundenobjekte in Liste hinzugefuegt: 901_11_902_22"));
  EXPECT_EQ(world.ExchangeFolders(),
            (std::vector<std::string>{"Export_anna_20240131_154502_New", "Export_anna_20240131_15450a_New",
                                      "Export_anna_20240131_15450b_New"}));
}

TEST(RecipientPage, NoSendAfterRecipientsStartsTheListAfresh) {
  World world;
  world.Select({World::kGearbox});
  GoBehindSendData(world, kOdette);
  CollectPair(world, "Acme ", "Smith Jo");
  world.driver.Click("Command1");
  ASSERT_EQ(world.Export(), 0);
  world.Select({World::kBolt});
  GoBehindSendData(world, kNoSend);
  std::filesystem::remove_all(world.folder.Path("exchange/Export_anna_20240131_154502_New"));
  ASSERT_EQ(world.Export(), 0);
  EXPECT_EQ(Recipients(world), "0:0 0:0 @@_anna_20240131_154502\n");
}

TEST(RecipientPage, AdditionalValuesMenu) {
  World world;
  world.Select({World::kGearbox});
  GoBehindSendData(world, kOdette);
  CollectPair(world, "Acme ", "Jones Al");
  world.driver.ClickNode("TreeView3", 0);  // the left button opens nothing
  world.driver.Do(
      [](UserActions& user) { EXPECT_EQ(user.ReleaseButton("TreeView3", MouseButton::kRight), ""); });
  world.driver.ClickNode("TreeView3", 0, MouseButton::kRight).ChooseItem("mnuAddValues");
  world.driver.ClickNode("TreeView3", 0, MouseButton::kRight).ChooseItem("");
  world.driver.Click("Command3");
  EXPECT_EQ(world.Export(), 1);
  EXPECT_EQ(world.additionalValues,
            AdditionalValuesCalls{"edit 901:11 902:22 " + world.ExchangePath() + "/@@_anna_20240131_154502"});
}

}  // namespace
}  // namespace tessel::test
