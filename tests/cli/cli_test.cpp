#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <utility>

#include "cli/cli_world.h"
#include "embedded/store/database.h"

namespace tessel::test {
namespace {

using Arguments = std::vector<std::string>;

std::set<std::string> FilesIn(const std::string& folder) {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.insert(entry.path().filename().string());
  }
  return names;
}

std::string Between(const std::string& text, const std::string& begin, const std::string& end) {
  const auto first = text.find(begin);
  if (first == std::string::npos) return "nothing";
  const auto last = text.find(end, first + begin.size());
  return text.substr(first + begin.size(), last - first - begin.size());
}

std::string DataFile(const std::string& directory) {
  std::ifstream file(directory + "/Kestrix_Data.xml", std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST_F(CliWorld, BadUsage) {
  const Arguments cases[] = {
      {},
      {"exprot"},
      {"export", Database(), "--user", "anna", "--select", "1201:4711"},
      {"export", Database(), "--select", "1201:4711", "--no-send"},
      {"export", Database(), "--user", "anna", "--select", "1201:4711", "--mode", "fax"},
      {"export", Database(), "--user", "anna", "--select", "1201:4711", "--mode", "custom", "--field", "x=1"},
      {"export", Database(), "--user", "anna", "--select", "1201:4711", "--mode", "mail", "--no-send"},
      {"lock", Database(), "--user", "anna"},
  };
  for (const Arguments& arguments : cases) {
    EXPECT_EQ(Run(arguments), 2);
    EXPECT_NE(err, "");
    EXPECT_EQ(out, "");
  }
  EXPECT_EQ(Run({"--help"}), 0);
  EXPECT_NE(out.find("export"), std::string::npos);
}

TEST_F(CliWorld, ExportWithoutSending) {
  ASSERT_EQ(RunAs("anna", "export", {"--select", "1201:4712,1201:4713", "--no-send"}), 0) << err;
  const std::set<std::string> expected{"A-1100.stp",       "A-1200.stp",           "P-1110.stp", "P-1120.stp",
                                       "P-1210.stp",       "P-1220.stp",           "P-1300.stp", "P-1400.stp",
                                       "Kestrix_Data.xml", "Kestrix_Structure.xml"};
  EXPECT_EQ(FilesIn(LastLine()), expected);
  EXPECT_EQ(err, "");
}

TEST_F(CliWorld, WhatIsRefusedLeavesNothing) {
  struct Case {
    Arguments arguments;
    const char* reason;
  };
  const Case cases[] = {
      {{"--select", "1201:4714", "--no-send"}, "refused: 1 of 1 documents"},
      {{"--select", "1201:4711,1202:4732", "--no-send"}, "refused: 1 of 2 documents"},
      {{"--select", "1201:99", "--no-send"}, "there is no object 1201:99"},
      {{"--select", "1201:4711", "--mode", "mail"}, "this send mode needs a recipient"},
      {{"--select", "1201:4711", "--mode", "mail", "--recipient", "901_301:902_999"},
       "unknown recipient \"901_301:902_999\""},
      {{"--select", "1202:4721", "--mode", "mail", "--recipient", "901_301:902_401", "--recipient",
        "901_301:902_401", "--dry-run"},
       "the recipient \"901_301:902_401\" is named twice"},
      {{"--select", "1202:4721", "--no-send", "--content", "lost"}, "this send mode writes no mail"},
      {{"--select", "1201:4711", "--mode", "odette", "--recipient", "901_304:902_401"},
       "unknown recipient \"901_304:902_401\""},
      {{"--select", "1201:4711", "--mode", "custom", "--recipient", "901_301:902_401", "--field", "9=x"},
       "the custom form has no field 9"},
      {{"--select", "1201:4711", "--no-send", "--recipient", "901_301:902_401"},
       "this send mode asks for no recipient"},
      {{"--select", "1201:4711", "--no-send", "--field", "1=x"}, "this send mode shows no custom form"},
      {{"--select", "1201:4711", "--mode", "mail", "--recipient", "901_301:902_401", "--folder-structure",
        "no"},
       "unknown folder structure \"no\""},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(RunAs("anna", "export", row.arguments), 1);
    EXPECT_NE(err.find(row.reason), std::string::npos) << err;
    EXPECT_EQ(out, "");
    EXPECT_EQ(Exchanges(), 0U);
  }
  EXPECT_EQ(RunAs("nobody", "export", {"--select", "1201:4711", "--no-send"}), 1);
  EXPECT_EQ(Run({"host", "show", folder.Path("missing.db")}), 1);
}

TEST_F(CliWorld, AFailedCopySaysWhy) {
  std::filesystem::remove(folder.Path("company.db.vault/P-1010.stp"));
  EXPECT_EQ(RunAs("anna", "export", {"--select", "1202:4721", "--no-send"}), 1);
  EXPECT_NE(err.find("only 0 of 1 documents could be copied"), std::string::npos) << err;
  EXPECT_NE(err.find("P-1010.stp"), std::string::npos) << err;
  EXPECT_EQ(Exchanges(), 0U);
}

// The files are final then, but nobody will find out by the database to whom they went.
// Asks the program to end as soon as it draws how far the copy is.
class EndingTerminal : public std::stringbuf {
 public:
  explicit EndingTerminal(int signal) : signal_(signal) {}

 protected:
  int sync() override {
    if (signal_ != 0) std::raise(std::exchange(signal_, 0));
    return 0;
  }

 private:
  int signal_;
};

TEST_F(CliWorld, ASignalEndsAnExportAsACancelDoes) {
  EndingTerminal terminal(SIGTERM);
  std::ostream errors(&terminal);
  std::istringstream in;
  std::ostringstream output;
  EXPECT_EQ(cli::Run({"export", Database(), "--user", "anna", "--select", "1201:4712,1201:4713", "--no-send"},
                     {in, output, errors, true}),
            143);
  const std::string told = terminal.str();
  EXPECT_EQ(told.substr(told.find("\n") + 1), "the export was ended by TERM; nothing was exported\n");
  EXPECT_EQ(output.str(), "");
  EXPECT_EQ(Exchanges(), 0U);
  EXPECT_EQ(RunAs("anna", "export", {"--select", "1201:4712", "--no-send"}), 0) << "nothing is left of it";
}

// Asks the program to end as soon as it has said something.
class EndingListener : public std::stringbuf {
 public:
  EndingListener(int signal, std::string text) : signal_(signal), text_(std::move(text)) {}

 protected:
  std::streamsize xsputn(const char* text, std::streamsize length) override {
    const std::streamsize written = std::stringbuf::xsputn(text, length);
    if (signal_ != 0 && str().find(text_) != std::string::npos) std::raise(std::exchange(signal_, 0));
    return written;
  }

 private:
  int signal_;
  std::string text_;
};

TEST_F(CliWorld, ASignalEndsALockBehindTheDocumentInHand) {
  ASSERT_EQ(RunAs("ben", "lock", {"1202:4721"}), 0);
  EndingListener listener(SIGINT, "already locked");
  std::ostream errors(&listener);
  std::istringstream in;
  std::ostringstream output;
  EXPECT_EQ(cli::Run({"lock", Database(), "--user", "anna", "1202:4721", "1202:4723", "1202:4724"},
                     {in, output, errors, false}),
            130);
  EXPECT_NE(listener.str().find("\nended by Ctrl-C after 1 of 3 objects\n"), std::string::npos)
      << listener.str();
  EXPECT_EQ(RunAs("anna", "lock", {"1202:4723"}), 0) << "it was not locked before";
}

TEST_F(CliWorld, ALostRecordIsNoSuccess) {
  embedded::Database(Database())
      .ExecuteOnce(
          "create trigger FULL before insert on GENERAL_LINK begin select raise(abort, 'disk is full'); end");
  EXPECT_EQ(RunAs("anna", "export", {"--select", "1202:4721", "--no-send"}), 3);
  EXPECT_EQ(FilesIn(LastLine()).count("Kestrix_Data.xml"), 1U);
  EXPECT_NE(err.find("not recorded completely in the database: "), std::string::npos) << err;
}

// The icon is the first thing that goes wrong, and of no importance.
TEST_F(CliWorld, TheReasonIsNotTheNewestProblem) {
  EXPECT_EQ(RunAs("anna", "export",
                  {"--select", "1201:4711", "--mode", "mail", "--recipient", "901_301:902_401",
                   "--folder-structure", "nothing_here"}),
            1);
  EXPECT_EQ(err.find("problem: "), std::string::npos) << err;
  EXPECT_NE(err.find("unknown folder structure \"nothing_here\""), std::string::npos) << err;
}

TEST_F(CliWorld, MailToTwoRecipients) {
  ASSERT_EQ(RunAs("anna", "export",
                  {"--select", "1202:4721", "--mode", "mail", "--recipient", "901_301:902_401", "--recipient",
                   "901_302:902_404", "--subject", "Housing", "--content", "Two\nlines & more"}),
            0)
      << err;
  EXPECT_EQ(Exchanges(), 2U);
  const std::string data = DataFile(LastLine());
  EXPECT_EQ(Between(data, "<MailSubject>", "<"), "Housing");
  EXPECT_EQ(Between(data, "<MailContent>", "</"), "Two\nlines &amp; more");
  EXPECT_EQ(Between(data, "<ContactPersObjObjectId>", "<"), "404");
  EXPECT_NE(Between(data, "<MailRecipient>", "<"), "");
}

TEST_F(CliWorld, CustomFormAndFolderStructure) {
  ASSERT_EQ(RunAs("anna", "export",
                  {"--select", "1202:4721", "--mode", "custom", "--recipient", "901_301:902_401", "--field",
                   "1=first", "--field", "3=a\nb"}),
            0)
      << err;
  const std::string data = DataFile(LastLine());
  EXPECT_EQ(Between(data, "<CustomText_1>", "</"), "first");
  EXPECT_NE(data.find(">a\nb</CustomText_"), std::string::npos) << data;

  // Another user, since names of exchange directories carry the user and the second.
  ASSERT_EQ(RunAs("ben", "export",
                  {"--select", "1201:4711", "--mode", "mail", "--recipient", "901_301:902_401",
                   "--folder-structure", "903_501"}),
            0)
      << err;
  const std::string structured = DataFile(LastLine());
  EXPECT_EQ(Between(structured, "<UseFoldStruc>", "<"), "-1");
  EXPECT_EQ(Between(structured, "<FolderStrucObjIDs>", "_"), "903");
}

TEST_F(CliWorld, DryRunSaysWhatWouldGoToWhom) {
  ASSERT_EQ(RunAs("anna", "export",
                  {"--select", "1202:4721", "--mode", "mail", "--recipient", "901_301:902_401", "--dry-run"}),
            0)
      << err;
  EXPECT_NE(out.find("recipient: "), std::string::npos);
  EXPECT_NE(out.find("nothing was sent: dry run"), std::string::npos);
  EXPECT_EQ(Exchanges(), 0U);
}

TEST_F(CliWorld, LockAndUnlock) {
  EXPECT_EQ(RunAs("ben", "lock", {"1202:4721"}), 0) << err;
  EXPECT_EQ(out, "locked: 1202:4721\n");
  EXPECT_EQ(RunAs("anna", "lock", {"1202:4721"}), 1);
  EXPECT_NE(err.find("already locked!"), std::string::npos) << err;
  EXPECT_EQ(RunAs("anna", "unlock", {"1202:4721"}), 1);
  EXPECT_NE(err.find("is locked by another user!"), std::string::npos) << err;
  ASSERT_EQ(RunAs("anna", "export", {"--select", "1202:4721", "--no-send"}), 0) << err;
  EXPECT_EQ(RunAs("ben", "unlock", {"1202:4721"}), 0) << err;
  // Obsolete documents are passed over without a message; the status tells.
  EXPECT_EQ(RunAs("ben", "lock", {"1202:4731"}), 1);
  EXPECT_NE(err.find("1202:4731 was not locked: it is in state "), std::string::npos) << err;
}

TEST_F(CliWorld, ContinueAndLatest) {
  EXPECT_EQ(RunAs("anna", "continue", {"900:701"}), 1);
  const std::string stopped = "drives/C/temp/Exchange/Export_anna_20240305_101500_";
  folder.MakeFolder(stopped + "Break");
  EXPECT_EQ(RunAs("anna", "continue", {"900:701"}), 0) << err;
  EXPECT_TRUE(std::filesystem::exists(folder.Path(stopped + "New")));

  EXPECT_EQ(RunAs("anna", "latest", {"1202:4725"}), 0) << err;
  EXPECT_NE(out.find("DX-000001"), std::string::npos) << out;
  EXPECT_EQ(RunAs("anna", "latest", {"1203:4744"}), 1);
  EXPECT_NE(err.find("no linked data exchange object"), std::string::npos) << err;

  embedded::Database(Database()).ExecuteOnce("DROP TABLE DATA_EXCHANGE");
  EXPECT_EQ(RunAs("anna", "latest", {"1202:4725"}), 1);
  EXPECT_NE(err.find("no such table: DATA_EXCHANGE"), std::string::npos) << err;
  EXPECT_NE(err.find("no exchange object could be shown"), std::string::npos) << err;
}

TEST_F(CliWorld, DriveWalksAnExport) {
  const std::string script =
      "{\"do\":\"call\",\"hook\":\"CollectSelObjs\",\"first\":[{\"CLASS_ID\":1202,\"OBJECT_ID\":4721,"
      "\"STATE\":3},{\"CLASS_ID\":1202,\"OBJECT_ID\":4723,\"STATE\":3}]}\n"
      "{\"do\":\"call\",\"hook\":\"StartExport\"}\n"
      "{\"do\":\"click\",\"control\":\"Command1\"}\n"
      "{\"do\":\"check\",\"control\":\"Check1(5)\"}\n"
      "{\"do\":\"click\",\"control\":\"Command1\"}\n"
      "{\"do\":\"check\",\"control\":\"Check1\"}\n"
      "{\"do\":\"click\",\"control\":\"Command1\"}\n"
      "{\"do\":\"click\",\"control\":\"Command1\"}\n";
  EXPECT_EQ(Run({"drive", Database(), "--user", "anna"}, script), 0) << out << err;
  EXPECT_EQ(Exchanges(), 1U);

  // Input that ends in the middle cancels the export, and so does a signal.
  EXPECT_EQ(Run({"drive", Database(), "--user", "ben"}, script.substr(0, script.rfind("{"))), 0);
  EXPECT_EQ(Exchanges(), 1U);
  EndingListener listener(SIGTERM, "\"event\":\"progress\"");
  std::ostream events(&listener);
  std::istringstream in(script);
  std::ostringstream errors;
  EXPECT_EQ(cli::Run({"drive", Database(), "--user", "ben"}, {in, events, errors, false}), 143);
  EXPECT_EQ(errors.str(), "ended by TERM\n");
  EXPECT_EQ(listener.str().find("Tessel_3"), std::string::npos) << listener.str();
  EXPECT_EQ(Exchanges(), 1U);
}

}  // namespace
}  // namespace tessel::test
