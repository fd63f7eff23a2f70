// Send modes 1 and 2 against a real mail server with encryption and a password.
#include <cstdint>
#include <cstdlib>

#include "sender/sender_world.h"

namespace tessel::test {
namespace {

// Bytes that no packing makes fewer.
std::string Noise(std::size_t size) {
  std::string noise;
  std::uint32_t seed = 1;
  while (noise.size() < size)
    noise += static_cast<char>((seed = seed * 1664525 + 1013904223) >> 24);
  return noise;
}

class MailTest : public SenderWorld {
 protected:
  using SenderWorld::SenderWorld;
  MailTest() : MailTest(std::vector<std::string>{}) {}

  // What a recipient unpacks, compared with what was exported, byte for byte.
  void ExpectPackage(int mail, const std::string& base, bool withStructure) {
    const std::string unpacked = "unpacked" + std::to_string(mail);
    folder.MakeFolder(unpacked);
    static_cast<void>(ShowMail(mail, folder.Path(unpacked)));
    std::vector<std::string> expected;
    for (const std::string& name : folder.Tree(In(base))) {
      const bool own = name.starts_with("KestrixServMon") || name.starts_with("SubDir");
      if (own || name == "Kestrix_Data.xml") continue;
      if (name == "NeutralFormats.xml" && folder.Read(In(base, name)).find("<Neutral_Formats") < 80) continue;
      if (name == "Kestrix_Structure.xml" && !withStructure) continue;
      expected.push_back(name);
      EXPECT_TRUE(folder.Read(unpacked + "/" + name) == folder.Read(In(base, name))) << name;
    }
    EXPECT_EQ(folder.Tree(unpacked), expected);
    EXPECT_GE(expected.size(), 1U);
  }
};

TEST_F(MailTest, SendsEachRecipientItsDocumentsAndRecordsIt) {
  const auto bases = Export("mail-structure", {"901_301:902_401", "901_302:902_404"});
  ASSERT_EQ(bases.size(), 2U) << out;
  folder.Write("sender.ini.log", std::string(1'100'000, 'x'));
  EXPECT_EQ(Sender({"WENDELAU-000001@900@5003@DX-000003"}), 0) << err;
  ASSERT_EQ(Mails(), 2U) << err;
  EXPECT_EQ(folder.Read("sender.ini.log.1").size(), 1'100'000U) << "a log that has grown is put aside";
  EXPECT_NE(folder.Read("sender.ini.log").find(" started: by session WENDELAU-000001"), std::string::npos);
  for (const std::string& base : bases)
    EXPECT_EQ(EndOf(base), "Sent");
  // Workers may take the two in either order.
  const bool inOrder = ShowMail(1).find("DX-000002") != std::string::npos;
  ExpectPackage(inOrder ? 1 : 2, bases[0], true);
  ExpectPackage(inOrder ? 2 : 1, bases[1], true);
  const std::string shown = ShowMail(inOrder ? 1 : 2);
  EXPECT_NE(
      shown.find(
          "From: anna.vogt@wendelau.example\nTo: p.brandt@koernwald.example\nSubject: Wellen Größe 4\n"),
      std::string::npos)
      << shown;
  EXPECT_NE(shown.find("\nGrüße\n"), std::string::npos) << shown;
  const std::string envelope = folder.Read(inOrder ? "mail/mail-001.json" : "mail/mail-002.json");
  EXPECT_NE(envelope.find("\"login\": \"kestrix\", \"encrypted\": true"), std::string::npos) << envelope;

  EXPECT_EQ(Record("VRKX_DX_PROCESS_PHASE"), "4");
  EXPECT_EQ(
      Record("VRKX_DX_STATUS_INFO"),
      "Sent by mail through localhost:" + std::to_string(mailServer.port) + " to p.brandt@koernwald.example");
  EXPECT_EQ(Record("VRKX_DX_EXCHANGE_ROOT_DIR"), "C:\\temp\\Exchange\\" + bases[0] + "_Sent\\SubDir");
  const std::string protocol = Record("VRKX_DX_EXCH_PROTOCOL");
  for (const char* part : {" Packed ", " into Kestrix.zip", " Sent by mail ", "taken as"})
    EXPECT_NE(protocol.find(part), std::string::npos) << part << " in " << protocol;
  EXPECT_EQ(Once(), 0) << "nothing is left";
  EXPECT_EQ(Mails(), 2U);
}

TEST_F(MailTest, LeavesOutTheStructureFileInModeOne) {
  const std::string base = ExportOne("mail");
  folder.Write(In(base, "NeutralFormats.xml"), "<Model>a document of that name</Model>");
  EXPECT_EQ(Once(), 0) << err;
  ExpectPackage(1, base, false);
}

TEST_F(MailTest, ContinuesARefusedMail) {
  const std::string base = ExportOne("mail-structure");
  Misbehave("rcpt 550");
  EXPECT_EQ(Once(), 1);
  EXPECT_EQ(EndOf(base), "Break");
  EXPECT_EQ(Record("VRKX_DX_PROCESS_PHASE"), "3");
  EXPECT_NE(Record("VRKX_DX_STATUS_INFO").find("550 nobody of that name"), std::string::npos);
  EXPECT_EQ(Sender({"--list"}), 0);
  EXPECT_EQ(out.find("stopped  DX-000002  " + base + "_Break  localhost:"), 0U) << out;
  EXPECT_EQ(Once(), 0) << "a stopped exchange is left alone";

  EXPECT_EQ(Tessel({"continue", Database(), "--user", "anna", RecordKey()}), 0) << err;
  EXPECT_EQ(EndOf(base), "New");
  EXPECT_EQ(Record("VRKX_DX_PROCESS_PHASE"), "2");
  EXPECT_EQ(Once(), 0) << err;
  EXPECT_EQ(EndOf(base), "Sent");
  EXPECT_EQ(Record("VRKX_DX_PROCESS_PHASE"), "4");
  ASSERT_EQ(Mails(), 1U);
  ExpectPackage(1, base, true);
}

struct Trouble {
  const char* behaviour;
  const char* settings;
  const char* end;     // of the directory
  std::size_t mails;   // that arrived
  const char* reason;  // in the status
};

class MailTroubleTest : public MailTest, public testing::WithParamInterface<Trouble> {};

TEST_P(MailTroubleTest, EndsWithItsReasonAndServesTheNext) {
  const Trouble& trouble = GetParam();
  const std::string base = ExportOne("mail");
  Misbehave(trouble.behaviour);
  if (*trouble.settings != '\0') WriteSettings(trouble.settings);
  const bool sent = std::string(trouble.end) == "Sent";
  EXPECT_EQ(Once(), sent ? 0 : 1) << err;
  EXPECT_EQ(EndOf(base), trouble.end) << err;
  EXPECT_EQ(Mails(), trouble.mails);
  EXPECT_NE(Record("VRKX_DX_STATUS_INFO").find(trouble.reason), std::string::npos)
      << Record("VRKX_DX_STATUS_INFO") << "\n"
      << err;
  if (sent) return;
  WriteSettings();
  Misbehave("");
  EXPECT_EQ(Once(), 0);
  EXPECT_EQ(Sender({"--send-again", base + "_Break"}), 0) << err;
  EXPECT_EQ(Once(), 0) << err;
  EXPECT_EQ(EndOf(base), "Sent");
  EXPECT_EQ(Mails(), trouble.mails + 1);
}

INSTANTIATE_TEST_SUITE_P(
    All, MailTroubleTest,
    testing::Values(Trouble{"mail 451", "", "Sent", 1, "Sent by mail"},
                    Trouble{"data 452", "", "Sent", 1, "Sent by mail"},
                    Trouble{"mail 451\nmail 451", "", "Break", 0, "given up after 2 attempts"},
                    Trouble{"mail 550", "", "Break", 0, "550 not now"},
                    Trouble{"data 554", "", "Break", 0, "554 no room"},
                    Trouble{"drop-after", "", "Break", 1, "it is not known whether it arrived"},
                    Trouble{"drop-silent", "", "Break", 0, "it is not known whether it arrived"},
                    Trouble{"garbage-after", "", "Break", 1, "it is not known whether it arrived"},
                    Trouble{"hang-after", "StallTimeout=1\n", "Break", 1,
                            "it is not known whether it arrived"},
                    Trouble{"hang", "", "Sent", 1, "Sent by mail"},
                    Trouble{"hang\nhang", "", "Break", 0, "given up after 2 attempts"},
                    Trouble{"garbage\ngarbage", "", "Break", 0, "localhost:"},
                    Trouble{"", "MaxSize=1000\n", "Break", 0, "bytes, allowed are 1000 (setting MaxSize)"}),
    [](const auto& one) { return CaseName(std::string(one.param.behaviour) + one.param.settings); });

// What a server cannot have, it has not got: the mail is sent again without asking.
TEST_F(MailTest, IsSentAfterTheConnectionBrokeInsideTheMail) {
  const std::string base = ExportOne("mail");
  folder.Write(In(base, "Messung.dat"), Noise(20'000'000));
  Misbehave("drop-in");
  WriteSettings("MaxSize=100000000\n");
  EXPECT_EQ(Once(), 0) << err;
  EXPECT_NE(err.find("later"), std::string::npos) << err;
  EXPECT_EQ(Mails(), 1U);
  ExpectPackage(1, base, false);
}

// Addresses, names and subject beyond ASCII as they stand on the wire and in the mail.
TEST_F(MailTest, SendsToAddressesBeyondAscii) {
  const std::string base = ExportOne("mail");
  std::string data = folder.Read(In(base, "Kestrix_Data.xml"));
  const auto at = data.find("<MailRecipient>") + 15;
  data.replace(at, data.find("</MailRecipient>") - at,
               "M&#252;ller, J&#246;rg &lt;j&#246;rg@gr&#246;&#223;e.example&gt;");
  folder.Write(In(base, "Kestrix_Data.xml"), data);
  EXPECT_EQ(Once(), 0) << err;
  const std::string envelope = folder.Read("mail/mail-001.json");
  EXPECT_NE(envelope.find("\"to\": [\"jörg@xn--gre-6ka8i.example\"]"), std::string::npos) << envelope;
  EXPECT_NE(envelope.find("\"SMTPUTF8\""), std::string::npos) << envelope;
  EXPECT_NE(ShowMail(1).find("\nTo: \"Müller, Jörg\" <jörg@xn--gre-6ka8i.example>\n"), std::string::npos)
      << ShowMail(1);
}

TEST_F(MailTest, RecordsTheFinalPathAsUrlWhereItIsWanted) {
  EXPECT_EQ(Tessel({"config", "set", Database(), "UseURL2RefExDir", "True"}), 0) << err;
  const std::string base = ExportOne("mail");
  EXPECT_EQ(Once(), 0) << err;
  const std::string url = "file:///C:/temp/Exchange/" + base + "_Sent/SubDir";
  EXPECT_EQ(Record("VRKX_DX_EXCHANGE_ROOT_DIR"), url);
  EXPECT_EQ(Sender({"--send-again", "DX-000002"}), 0) << err;
  Misbehave("mail 550");
  EXPECT_EQ(Once(), 1);
  EXPECT_EQ(Record("VRKX_DX_EXCHANGE_ROOT_DIR"), "C:\\temp\\Exchange\\" + base + "_Break\\SubDir");
  EXPECT_EQ(Tessel({"continue", Database(), "--user", "anna", RecordKey()}), 0) << err;
  EXPECT_EQ(Once(), 0) << err;
  EXPECT_EQ(Record("VRKX_DX_EXCHANGE_ROOT_DIR"), url);
}

// A file system of its own that the package does not fit on.
class SmallDiskTest : public MailTest {
 protected:
  void SetUp() override {
    folder.MakeFolder(ExchangePath());
    mounted_ =
        std::system(
            ("mount -t tmpfs -o size=3m tmpfs " + folder.Path(ExchangePath()) + " 2>/dev/null").c_str()) == 0;
    if (!mounted_) GTEST_SKIP() << "this account may not mount";
  }
  ~SmallDiskTest() override {
    if (mounted_) static_cast<void>(std::system(("umount " + folder.Path(ExchangePath())).c_str()));
  }

 private:
  bool mounted_ = false;
};

TEST_F(SmallDiskTest, StopsUntilThereIsRoom) {
  const auto bases = Export("mail", {"901_301:902_401", "901_302:902_404"});
  folder.Write(In(bases[0], "Messung.dat"), Noise(1'700'000));
  EXPECT_EQ(Once(), 1);
  EXPECT_EQ(EndOf(bases[0]), "Break") << err;
  EXPECT_EQ(EndOf(bases[1]), "Sent") << "the next one is served: " << err;
  EXPECT_EQ(Mails(), 1U);
  const std::string status = Record("VRKX_DX_STATUS_INFO");
  EXPECT_NE(status.find("No space left"), std::string::npos) << status;
  EXPECT_EQ(std::system(("mount -o remount,size=20m " + folder.Path(ExchangePath())).c_str()), 0);
  EXPECT_EQ(Tessel({"continue", Database(), "--user", "anna", RecordKey()}), 0) << err;
  EXPECT_EQ(Once(), 0) << err;
  EXPECT_EQ(Mails(), 2U);
}

TEST_F(MailTest, KeepsTheIdentityOfAMailThatMayHaveArrived) {
  const auto messageId = [&](int mail) {
    const std::string shown = ShowMail(mail);
    const auto at = shown.find("Message-ID: ");
    return shown.substr(at, shown.find('\n', at) - at);
  };
  const std::string base = ExportOne("mail");
  Misbehave("drop-after");
  EXPECT_EQ(Once(), 1);
  EXPECT_EQ(Tessel({"continue", Database(), "--user", "anna", RecordKey()}), 0);
  EXPECT_EQ(Once(), 0) << err;
  ASSERT_EQ(Mails(), 2U);
  EXPECT_EQ(messageId(1), messageId(2));
  EXPECT_EQ(Sender({"--send-again", "DX-000002"}), 0) << err;
  EXPECT_EQ(Record("VRKX_DX_PROCESS_PHASE"), "2");
  EXPECT_EQ(Sender({"--send-again", "DX-000002"}), 2) << "it is in the queue already";
  EXPECT_EQ(Once(), 0) << err;
  ASSERT_EQ(Mails(), 3U);
  EXPECT_NE(messageId(3), messageId(1)) << "sent again on purpose it is another mail";

  Misbehave("drop-after");
  EXPECT_EQ(Sender({"--send-again", base + "_Sent"}), 0);
  EXPECT_EQ(Once(), 1);
  EXPECT_EQ(Sender({"--mark-sent", RecordKey()}), 0) << err;
  EXPECT_EQ(EndOf(base), "Sent");
  EXPECT_EQ(Record("VRKX_DX_PROCESS_PHASE"), "4");
}

TEST_F(MailTest, TrustsNoServerWithoutReason) {
  const std::string base = ExportOne("mail");
  const auto stopsFor = [&](const std::string& settings, const std::string& reason) {
    folder.Write("sender.ini",
                 "[Database]\nPath=company.db\nLanguage=ENG\n[Queue]\nAttempts=1\n[Mail]\n" + settings);
    EXPECT_EQ(Once(), 1);
    EXPECT_NE(Record("VRKX_DX_STATUS_INFO").find(reason), std::string::npos) << Record("VRKX_DX_STATUS_INFO");
    EXPECT_EQ(Mails(), 0U);
    EXPECT_EQ(Sender({"--send-again", base + "_Break"}), 0) << err;
  };
  stopsFor("AuthFile=login\n", "certificate");
  stopsFor("CAFile=mail/ca.pem\n", "530");
  const std::string data = folder.Read(In(base, "Kestrix_Data.xml"));
  std::string elsewhere = data;
  elsewhere.replace(elsewhere.find(">localhost:") + 1, 9, "127.0.0.1");
  folder.Write(In(base, "Kestrix_Data.xml"), elsewhere);
  stopsFor("CAFile=mail/ca.pem\n", "the server's certificate is not accepted");
  folder.Write(In(base, "Kestrix_Data.xml"), data);
  folder.Write("bad", "machine localhost login kestrix password falsch\n");
  std::filesystem::permissions(folder.Path("bad"), std::filesystem::perms::owner_all);
  stopsFor("CAFile=mail/ca.pem\nAuthFile=bad\n", "535");
  const std::string login = folder.Read("login");
  WriteSettings();
  for (const char* more : {"default login kestrix password geheim\n", "macdef init\nx\n"}) {
    folder.Write("login", login + "machine \"default\" password default\n" + more);
    EXPECT_EQ(Once(), 1);
    EXPECT_NE(err.find("for every server"), std::string::npos) << err;
  }
  folder.Write("login", login);
  std::filesystem::permissions(folder.Path("login"), std::filesystem::perms::others_read,
                               std::filesystem::perm_options::add);
  WriteSettings();
  EXPECT_EQ(Once(), 1);
  EXPECT_NE(err.find("others than its owner may use it"), std::string::npos) << err;
  EXPECT_EQ(EndOf(base), "New") << "another account's sender may use it";
}

class SmallServerTest : public MailTest {
 protected:
  SmallServerTest() : MailTest({"--size", "2000"}) {}
};

TEST_F(SmallServerTest, IsNotGivenAMailThatItWouldNotTake) {
  const std::string base = ExportOne("mail");
  EXPECT_EQ(Once(), 1);
  EXPECT_NE(Record("VRKX_DX_STATUS_INFO").find("bytes, the server takes 2000"), std::string::npos)
      << Record("VRKX_DX_STATUS_INFO");
  EXPECT_EQ(err.find("sending"), std::string::npos) << "refused before the transfer";
}

class OpenServerTest : public MailTest {
 protected:
  OpenServerTest() : MailTest({"--no-starttls"}) {}
};

TEST_F(OpenServerTest, GetsNothingInTheOpenUnlessAllowed) {
  const std::string base = ExportOne("mail");
  EXPECT_EQ(Once(), 1);
  EXPECT_EQ(Mails(), 0U);
  WriteSettings("Security=plain\n");
  EXPECT_EQ(Sender({"--send-again", base + "_Break"}), 0) << err;
  EXPECT_EQ(Once(), 0) << err;
  EXPECT_EQ(Mails(), 1U);
  EXPECT_NE(folder.Read("mail/mail-001.json").find("\"login\": \"\""), std::string::npos) << "no password";
}

class TlsServerTest : public MailTest {
 protected:
  TlsServerTest() : MailTest({"--tls"}) {}
};

TEST_F(TlsServerTest, TakesMailEncryptedFromTheBeginning) {
  const std::string base = ExportOne("mail");
  WriteSettings("Security=tls\n");
  EXPECT_EQ(Once(), 0) << err;
  ExpectPackage(1, base, false);
}

}  // namespace
}  // namespace tessel::test
