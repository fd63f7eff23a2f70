// Odette, the own send mode, no sending; two databases' rules; the check of the settings.
#include "sender/sender_world.h"

namespace tessel::test {
namespace {

class OtherModesTest : public SenderWorld {
 protected:
  // A program that tells its arguments and ends with a status.
  void WriteProgram(const std::string& lines) {
    folder.Write("deliver", "#!/bin/sh\n" + lines);
    std::filesystem::permissions(folder.Path("deliver"), std::filesystem::perms::owner_all);
  }
};

TEST_F(OtherModesTest, EndsWithTheStationsAcknowledgement) {
  WriteSettings("[Odette]\nOutbox=outbox\nAcknowledgements=answers\n");
  folder.MakeFolder("outbox");
  folder.MakeFolder("answers");
  const std::string base = ExportOne("odette");
  const std::string dataset = "DX900X" + Record("OBJECT_ID");
  EXPECT_EQ(Once(), 0) << err;
  EXPECT_EQ(EndOf(base), "New");
  EXPECT_EQ(folder.Tree("outbox"), (std::vector<std::string>{dataset + ".job", dataset + ".zip"}));
  EXPECT_EQ(folder.Read("outbox/" + dataset + ".zip"), folder.Read(In(base, "SubDir/Kestrix.zip")));
  const std::string job = folder.Read("outbox/" + dataset + ".job");
  EXPECT_EQ(job.find("[Job]\r\nPartner=Aldermoor Gears & Sons Ltd\r\nDataset=" + dataset +
                     "\r\nFile=" + dataset + ".zip\r\n"),
            0U)
      << job;
  EXPECT_NE(Record("VRKX_DX_STATUS_INFO").find("Handed to the transfer station"), std::string::npos);

  folder.Write("answers/" + dataset + ".err", "unknown partner\r\n");
  EXPECT_EQ(Once(), 1);
  EXPECT_EQ(EndOf(base), "Break");
  EXPECT_NE(Record("VRKX_DX_STATUS_INFO").find("unknown partner"), std::string::npos);
  EXPECT_EQ(Tessel({"continue", Database(), "--user", "anna", RecordKey()}), 0);
  EXPECT_EQ(Once(), 1) << "the job of the first hand-over lies there still";
  std::filesystem::remove(folder.Path("outbox/" + dataset + ".job"));
  EXPECT_EQ(Tessel({"continue", Database(), "--user", "anna", RecordKey()}), 0);
  EXPECT_EQ(Once(), 0) << err;
  EXPECT_EQ(EndOf(base), "New");
  folder.Write("answers/" + dataset + ".ack", "delivered 12:00");
  EXPECT_EQ(Once(), 0) << err;
  EXPECT_EQ(EndOf(base), "Sent");
  EXPECT_NE(Record("VRKX_DX_EXCH_PROTOCOL").find("delivered 12:00"), std::string::npos);
}

// The first issue's acknowledgement comes when nobody waits for it any more.
TEST_F(OtherModesTest, KeepsALateAcknowledgement) {
  const std::string odette = "[Odette]\nOutbox=outbox\n";
  WriteSettings(odette + "Timeout=0\n");
  folder.MakeFolder("outbox");
  const std::string base = ExportOne("odette");
  const std::string dataset = "DX900X" + Record("OBJECT_ID");
  folder.Write("outbox/" + dataset + ".ack", "of whom?");
  EXPECT_EQ(Once(), 1);
  EXPECT_NE(Record("VRKX_DX_STATUS_INFO").find("was not handed over"), std::string::npos);
  std::filesystem::remove(folder.Path("outbox/" + dataset + ".ack"));
  EXPECT_EQ(Sender({"--send-again", base + "_Break"}), 0);
  EXPECT_EQ(Once(), 0) << err;
  std::string journal = folder.Read(In(base, "KestrixServMon/journal.json"));
  const auto at = journal.find("\"handedOver\": ") + 14;
  folder.Write(In(base, "KestrixServMon/journal.json"),
               journal.replace(at, journal.find(',', at) - at, "1000"));
  EXPECT_EQ(Once(), 1);
  EXPECT_NE(Record("VRKX_DX_STATUS_INFO").find("not known whether it arrived"), std::string::npos);
  folder.Write("outbox/" + dataset + ".ack", "delivered");
  EXPECT_EQ(Sender({"--send-again", base + "_Break"}), 0);
  EXPECT_EQ(Once(), 0) << err;
  EXPECT_EQ(EndOf(base), "Sent");

  std::filesystem::copy(Database(), folder.Path("second.db"));
  folder.Write("sender.ini", "[Database]\nPath=company.db\n[Database 2]\nPath=second.db\n");
  EXPECT_EQ(Once(), 2) << "exchanges of two databases with one alias cannot be told apart";
  folder.Write("sender.ini",
               "[Database]\nPath=company.db\n[Database 2]\nPath=second.db\n"
               "DatasetPrefix=DX9\n" +
                   odette);
  EXPECT_EQ(Once(), 2);
  EXPECT_NE(err.find("the same Odette dataset names"), std::string::npos) << err;
}

struct CommandCase {
  const char* program;
  const char* settings;
  const char* end;
  const char* status;
};

TEST_F(OtherModesTest, LetsTheCommandDecide) {
  const CommandCase cases[] = {
      {"echo \"$#:$1:$2:$(basename \"$3\")\"; ls", "", "Sent", "Sent by "},
      {"echo refused by the portal; exit 3", "", "Break",
       "ended with status 3; it said: refused by the portal"},
      {"echo queued", "SuccessText=delivered\n", "Break", "did not say \"delivered\""},
      {"exit 75", "", "Break", "given up after 2 attempts"},
      {"sleep 20", "Timeout=0.2\n", "Break", "it is not known whether it arrived"},
      {"kill -9 $$", "", "Break", "it is not known whether it arrived"},
  };
  int number = 2;
  for (const CommandCase& each : cases) {
    SCOPED_TRACE(each.program);
    WriteProgram(each.program);
    WriteSettings(std::string("[Command]\nProgram=deliver\nArgument1={id} $(touch x)\nArgument2={text1}\n"
                              "Argument3={zip}\n") +
                  each.settings);
    const std::string base =
        Export("custom", {"901_302:902_404"}, {"--field", "1=a; rm -rf {zip}", "--field", "2=b"}).at(0);
    static_cast<void>(Once());
    EXPECT_EQ(EndOf(base), each.end) << err;
    EXPECT_NE(Record("VRKX_DX_STATUS_INFO", number).find(each.status), std::string::npos)
        << Record("VRKX_DX_STATUS_INFO", number);
    if (number == 2) {
      const std::string protocol = Record("VRKX_DX_EXCH_PROTOCOL", number);
      EXPECT_NE(protocol.find("3:DX-000002 $(touch x):a; rm -rf {zip}:Kestrix.zip"), std::string::npos)
          << protocol;
      EXPECT_FALSE(folder.Exists(In(base, "x"))) << "no shell in between";
    }
    std::filesystem::remove_all(folder.Path(In(base)));
    ++number;
  }
}

TEST_F(OtherModesTest, RecordsWhatIsNotSent) {
  const std::string base = Export("no-send", {}).at(0);
  EXPECT_EQ(Sender({"--once", "--json"}), 0) << err;
  EXPECT_EQ(EndOf(base), "Sent");
  EXPECT_EQ(Record("VRKX_DX_STATUS_INFO"), "Done, nothing to send");
  EXPECT_FALSE(folder.Exists(In(base, "SubDir")));
  EXPECT_EQ(out.find("{\"time\":\""), 0U) << out;
  EXPECT_NE(out.find("\"step\":\"sent\",\"problem\":false"), std::string::npos) << out;
}

TEST_F(OtherModesTest, ChecksTheSettings) {
  WriteSettings("Server=localhost:" + std::to_string(mailServer.port) + "\n[Odette]\nOutbox=nowhere\n");
  EXPECT_EQ(Tessel({"config", "set", Database(), "SMTPServer", "localhost:1"}), 0) << err;
  ExportOne("mail");
  EXPECT_EQ(Sender({"--check"}), 1);
  EXPECT_NE(out.find("PROBLEM  mail server localhost:1: no connection"), std::string::npos) << out;
  EXPECT_NE(out.find("1 exchanges to be sent or stopped, all writable"), std::string::npos) << out;
  EXPECT_NE(out.find("ok       mail server localhost:"), std::string::npos) << out;
  EXPECT_NE(out.find("PROBLEM  outbox " + folder.Path("nowhere") + ": it is not there"), std::string::npos)
      << out;
  folder.Write("sender.ini", "[Database]\nPath=nothing.db\n");
  EXPECT_EQ(Sender({"--list", "--json"}), 1);
  EXPECT_EQ(out, "");
  EXPECT_NE(err.find("nothing.db"), std::string::npos) << "the reason stands beside the list: " << err;
  folder.Write("sender.ini",
               "[Database]\nPath=nothing.db\nUsr=x\n[Mail]\nPort=0\nSecurity=none\n[Odd]\nno equals\n");
  EXPECT_EQ(Sender({"--check"}), 2);
  EXPECT_EQ(err, "The settings " + folder.Path("sender.ini") +
                     " are wrong:\n  line 3: there is no key \"Usr\" in [Database]\n"
                     "  line 5: Port=0: the value is out of range\n"
                     "  line 6: Security=none: the value is none of starttls, tls, plain\n"
                     "  line 7: there is no section [Odd]\n"
                     "  line 8: \"no equals\" is neither a [section] nor KEY=VALUE\n");
  for (const std::vector<std::string>& bad : std::vector<std::vector<std::string>>{
           {}, {"--once", "--watch"}, {"S@1@2"}, {"S@x@2@DX"}, {"--nonsense"}}) {
    WriteSettings();
    EXPECT_EQ(Sender(bad), 2);
  }
}

}  // namespace
}  // namespace tessel::test
