#include "support/wizard_script.h"

namespace tessel::test {
namespace {

const std::string kPage = "Tessel_5";

std::string Shown(const Window& window) {
  std::string shown = window.FindById("Label2")->Caption() + "|";
  for (const char* id : {"Text1(0)", "Text1(1)", "Text1(2)", "Text1(3)"})
    shown += static_cast<const TextBox&>(*window.FindById(id)).Text() + "|";
  return shown;
}

void ExpectShown(World& world, const std::string& shown) {
  LookAt(world, kPage, [shown](Window& window) { EXPECT_EQ(Shown(window), shown); });
}

std::string Records(World& world) {
  std::string lines;
  for (const MailRecord& mail : world.Wizard().mails) {
    lines += mail.sender + "|" + mail.recipientAddress + "|" + mail.smtpServer + "|" + mail.subject + "|" +
             mail.content + "\n";
  }
  return lines;
}

TEST(MailDataPage, StepsThroughTheRecipients) {
  World world(SettingLines{{"Mail", {"SMTPServer=smtp.home"}}});
  world.Select({World::kGearbox});
  GoBehindSendData(world, kMail);
  CollectPair(world, "Acme ", "Smith Jo");
  CollectPair(world, "Bolt ", "Brown ");
  CollectPair(world, "Acme ", "Jones Al");
  world.driver.Click("Command1");
  ExpectShown(world, "1 / 3|smith@acme|anna@home|||");
  world.driver.Type("Text1(1)", "mallory@home").Type("Text1(2)", "Gearbox").Type("Text1(3)", "Hello\nJo");
  world.driver.Click("Command1");
  ExpectShown(world, "2 / 3||mallory@home|Gearbox|Hello\nJo|");
  world.driver.Type("Text1(0)", "brown@bolt").Click("Command1");
  ExpectShown(world, "3 / 3|jones@acme|mallory@home|Gearbox|Hello\nJo|");
  world.driver.Type("Text1(2)", "For Al").Click("Command1");
  EXPECT_EQ(world.Export(), 0);
  EXPECT_EQ(Records(world),
            "anna@home|smith@acme|smtp.home|Gearbox|Hello\nJo\n|brown@bolt||Gearbox|Hello\nJo\n"
            "|jones@acme||For Al|Hello\nJo\n");
  for (const char* line : {"Mail Betreff: For Al", "Mail Inhalt: Hello\nJo", "Mail recipient: brown@bolt"})
    EXPECT_TRUE(world.Traced(line)) << line;
  const std::string data = world.folder.Read("exchange/Export_anna_20240131_15450b_New/Kestrix_Data.xml");
  EXPECT_NE(data.find("<MailSender>anna@home</MailSender>"), std::string::npos);
  EXPECT_NE(data.find("<MailSubject>For Al</MailSubject>"), std::string::npos);
}

// The page stays loaded: the next export finds subject and content as they were left.
TEST(MailDataPage, SingleRecipientAndTheNextExport) {
  World world(kSingleRecipient);
  for (const char* subject : {"", "Subject"}) {
    world.Select({World::kGearbox});
    GoBehindSendData(world, kMailStructure);
    ChoosePair(world, "Bolt ", "Brown ");
    world.driver.Click("Command1");
    ExpectShown(world, std::string("||anna@home|") + subject + "||");
    // What a counter of the next export must not be taken for.
    LookAt(world, kPage, [](Window& window) { window.FindById("Label2")->SetCaption("2 / 2"); });
    world.driver.Type("Text1(2)", "Subject").Click("Command1");
    EXPECT_EQ(world.Export(), 0);
    EXPECT_EQ(Records(world), "anna@home|||Subject|\n");
    std::filesystem::remove_all(world.folder.Path("exchange"));
    world.folder.MakeFolder("exchange");
  }
}

}  // namespace
}  // namespace tessel::test
