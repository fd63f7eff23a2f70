// Directories that cannot be sent: each is put aside with its reason, nothing leaves, and the next is served.
#include <functional>

#include "sender/sender_world.h"

namespace tessel::test {
namespace {

struct BadDirectory {
  const char* name;
  // Spoils the exchange with the record DX-000002.
  std::function<void(SenderWorld&, const TemporaryFolder&, const std::string& path)> spoil;
  const char* reason;
  const char* phase;  // of the record afterwards; "1": it was not touched
};

std::string Replace(std::string text, const std::string& old, const std::string& with) {
  const auto at = text.find(old);
  EXPECT_NE(at, std::string::npos) << old;
  return text.replace(at, old.size(), with);
}

// Puts another text into the data file.
auto Edit(const std::string& old, const std::string& with) {
  return [=](SenderWorld&, const TemporaryFolder& folder, const std::string& path) {
    folder.Write(path + "Kestrix_Data.xml", Replace(folder.Read(path + "Kestrix_Data.xml"), old, with));
  };
}

class BadDirectoryTest : public SenderWorld, public testing::WithParamInterface<int> {
 protected:
  [[nodiscard]] std::string Reason(const std::string& base) const {
    return folder.Read(ExchangePath() + "/" + base + "_Break/KestrixServMon/journal.json");
  }
};

const std::vector<BadDirectory>& Cases() {
  static const std::vector<BadDirectory> cases{
      {"damaged", Edit("</DataEx_Datas>", "</DataEx"), "it is no XML", "3"},
      {"other root", Edit("<DataEx_Datas>", "<Other xmlns='x'></Other><DataEx_Datas>"), "damaged", "3"},
      {"no object", Edit("<DataExchangeObjID>", "<DataExchangeObjID>0</DataExchangeObjID><Was>"), "damaged",
       "1"},
      {"object gone", Edit("<DataExchangeObjID>", "<DataExchangeObjID>7"), "is gone", "1"},
      {"leaves the directory", Edit("Kestrix.zip", "../../Kestrix.zip"), "no plain file name", "3"},
      {"subdirectory leaves", Edit("<SubExDir>SubDir", "<SubExDir>..\\.."), "no plain file name", "3"},
      {"foreign attribute", Edit(">VRKX_DX_STATUS_INFO<", ">VRK_ID<"), "to be reported in", "3"},
      {"foreign class", Edit("<DataExchangeClassID>900", "<DataExchangeClassID>901"), "is gone", "1"},
      {"bad sender", Edit("<MailSender>", "<MailSender>x@y.example&#13;&#10;Bcc: z@z.example, "),
       "control characters", "3"},
      {"no recipient", Edit("<MailRecipient>", "<MailRecipient>nobody at all "), "no mail address", "3"},
      {"bad server", Edit("<Mail_SMTP_Server>", "<Mail_SMTP_Server>x y/"), "names no mail server", "3"},
      {"link",
       [](SenderWorld&, const TemporaryFolder& folder, const std::string& path) {
         std::filesystem::create_symlink("/etc/passwd", folder.Path(path + "linked.stp"));
       },
       "no regular file", "3"},
      {"link to a folder",
       [](SenderWorld&, const TemporaryFolder& folder, const std::string& path) {
         std::filesystem::create_directory_symlink("/etc", folder.Path(path + "linked"));
       },
       "no regular file", "3"},
      {"link to nothing",
       [](SenderWorld&, const TemporaryFolder& folder, const std::string& path) {
         std::filesystem::create_symlink("nowhere", folder.Path(path + "gone.stp"));
       },
       "no regular file", "3"},
      {"named like the package",
       [](SenderWorld&, const TemporaryFolder& folder, const std::string& path) {
         folder.Write(path + "SubDir/Kestrix.zip", "mine");
       },
       "bears the name of the package", "3"},
      {"package in the data file's place",
       [](SenderWorld& world, const TemporaryFolder& folder, const std::string& path) {
         Edit("<SubExDir>SubDir", "<SubExDir>")(world, folder, path);
         Edit("Kestrix.zip", "kestrix_Data.XML")(world, folder, path);
       },
       "bears the name of the package", "3"},
      {"package in the sender's folder", Edit("<SubExDir>SubDir", "<SubExDir>KestrixServMon"),
       "named like the folder", "3"},
  };
  return cases;
}

TEST_P(BadDirectoryTest, IsPutAside) {
  const BadDirectory& bad = Cases()[static_cast<std::size_t>(GetParam())];
  SCOPED_TRACE(bad.name);
  const auto bases = Export("mail", {"901_301:902_401", "901_302:902_404"});
  bad.spoil(*this, folder, ExchangePath() + "/" + bases.at(0) + "_New/");
  EXPECT_EQ(Once(), 1) << err;
  EXPECT_EQ(EndOf(bases[0]), "Break") << err;
  EXPECT_NE(Reason(bases[0]).find(bad.reason), std::string::npos) << Reason(bases[0]);
  EXPECT_EQ(Record("VRKX_DX_PROCESS_PHASE"), bad.phase);
  EXPECT_EQ(EndOf(bases[1]), "Sent");
  EXPECT_EQ(Mails(), 1U) << "only the good one left";
}

INSTANTIATE_TEST_SUITE_P(All, BadDirectoryTest, testing::Range(0, static_cast<int>(Cases().size())),
                         [](const auto& one) {
                           return CaseName(Cases()[static_cast<std::size_t>(one.param)].name);
                         });

class DirectoryTest : public SenderWorld {
 protected:
  [[nodiscard]] std::string Reason(const std::string& base) const {
    return folder.Read(In(base, "KestrixServMon/journal.json"));
  }
};

TEST_F(DirectoryTest, OfAnotherExchangesObjectIsNotReportedThere) {
  const std::string base = ExportOne("mail");
  const std::string copy = folder.Path(ExchangePath() + "/Export_zzz_New");
  std::filesystem::copy(folder.Path(ExchangePath() + "/" + base + "_New"), copy,
                        std::filesystem::copy_options::recursive);
  WriteSettings("[Command]\n");
  EXPECT_EQ(Once(), 1);
  EXPECT_EQ(Mails(), 1U) << "one object, one mail";
  EXPECT_EQ(Record("VRKX_DX_PROCESS_PHASE"), "4");
  EXPECT_EQ((EndOf(base) == "Sent") + (EndOf("Export_zzz") == "Sent"), 1);
  EXPECT_EQ((EndOf(base) == "Break") + (EndOf("Export_zzz") == "Break"), 1);
}

// Without a data file the name of the directory leads to the record, or what is left of the file does; never
// when another directory has the same object.
TEST_F(DirectoryTest, WithADamagedDataFileIsStoppedOnRecordAndContinuedWhenItIsMended) {
  const std::string base = ExportOne("mail");
  const std::string path = folder.Path(ExchangePath() + "/");
  const std::string good = folder.Read(In(base, "Kestrix_Data.xml"));
  const auto cut = [](const std::string& text) { return text.substr(0, text.find("<ZipFileName>")); };
  std::filesystem::copy(path + base + "_New", path + "Export_copy_New",
                        std::filesystem::copy_options::recursive);
  folder.Write(In("Export_copy", "Kestrix_Data.xml"), cut(good));
  folder.Write("sender.ini", Replace(folder.Read("sender.ini"), "Language=ENG", "Language=GER"));
  EXPECT_EQ(Once(), 1);
  EXPECT_EQ(EndOf(base), "Sent");
  EXPECT_EQ(EndOf("Export_copy"), "Break");
  EXPECT_EQ(Record("VRKX_DX_PROCESS_PHASE"), "4") << "not the copy's";
  EXPECT_NE(err.find("unrecorded Export_copy_New"), std::string::npos) << err;
  EXPECT_NE(err.find("stopped Export_copy_Break: Die Datendatei ist beschädigt"), std::string::npos) << err;
  std::filesystem::remove_all(path + "Export_copy_Break");

  EXPECT_EQ(Sender({"--send-again", base + "_Sent"}), 0) << err;
  folder.Write(In(base, "Kestrix_Data.xml"), "no XML at all");
  EXPECT_EQ(Once(), 1);
  EXPECT_EQ(Record("VRKX_DX_PROCESS_PHASE"), "3") << "known by the directory's name";
  EXPECT_EQ(Record("VRKX_DX_STATUS_INFO").find("Angehalten: Die Datendatei ist beschädigt: sie ist kein XML"),
            0U)
      << Record("VRKX_DX_STATUS_INFO");
  EXPECT_EQ(Sender({"--list", "--json"}), 0);
  EXPECT_NE(out.find("\"id\":\"DX-000002\""), std::string::npos) << out;
  EXPECT_NE(out.find("\"recorded\":true,\"problem\":\"The data file is damaged"), std::string::npos) << out;
  folder.Write(In(base, "Kestrix_Data.xml"), good);
  EXPECT_EQ(Tessel({"continue", Database(), "--user", "anna", RecordKey()}), 0) << err;
  EXPECT_EQ(Once(), 0) << err;
  EXPECT_EQ(EndOf(base), "Sent");
  EXPECT_EQ(Mails(), 2U);

  const std::string fresh = ExportOne("mail");
  folder.Write(In(fresh, "Kestrix_Data.xml"), cut(folder.Read(In(fresh, "Kestrix_Data.xml"))));
  EXPECT_EQ(Once(), 1);
  EXPECT_EQ(Record("VRKX_DX_PROCESS_PHASE", 3), "3") << "known by what is left of the data file: " << err;
  EXPECT_NE(folder.Read(In(fresh, "KestrixServMon/protocol.txt")).find("Angehalten"), std::string::npos);
}

// What the sender had begun is in the reason, whatever else went wrong; the journal's loss is no fresh start.
TEST_F(DirectoryTest, IsNeverTakenForAFreshOneAfterATransfer) {
  const std::string base = ExportOne("mail");
  Misbehave("mail 451\nmail 451");
  EXPECT_EQ(Once(), 1);
  const std::string journal = In(base, "KestrixServMon/journal.json");
  const std::string stopped = folder.Read(journal);
  const std::string dataFile = folder.Read(In(base, "Kestrix_Data.xml"));
  EXPECT_EQ(Tessel({"continue", Database(), "--user", "anna", RecordKey()}), 0) << err;
  const auto again = [&](const std::string& stage, const std::string& phase) {
    if (EndOf(base) == "Break")
      std::filesystem::rename(folder.Path(ExchangePath() + "/" + base + "_Break"),
                              folder.Path(ExchangePath() + "/" + base + "_New"));
    folder.Write(In(base, "KestrixServMon/journal.json"), Replace(stopped, "\"stopped\"", stage));
    SetRecord("VRKX_DX_PROCESS_PHASE = " + phase);
  };
  again("\"sending\"", "1");
  folder.Write(In(base, "Kestrix_Data.xml"), "<");
  EXPECT_EQ(Once(), 1);
  EXPECT_NE(Reason(base).find("not known whether it arrived"), std::string::npos) << Reason(base);

  folder.Write(In(base, "Kestrix_Data.xml"), dataFile);
  again("\"stopping\"", "2");
  const std::string queued = folder.Path(ExchangePath()) + "/" + base + "_New/SubDir";
  SetRecord("VRKX_DX_EXCHANGE_ROOT_DIR = '" + queued + "'");
  EXPECT_EQ(Once(), 1) << "the stop has not reached the record yet";
  EXPECT_EQ(EndOf(base), "Break");

  for (const char* phase : {"1", "2"}) {
    again("\"stopped\"", phase);
    std::filesystem::remove(folder.Path(In(base, "KestrixServMon/journal.json")));
    EXPECT_EQ(Once(), 1);
    EXPECT_NE(Reason(base).find("is missing"), std::string::npos) << Reason(base);
  }
  EXPECT_EQ(Mails(), 0U);
  EXPECT_EQ(Tessel({"continue", Database(), "--user", "anna", RecordKey()}), 0) << err;
  EXPECT_EQ(Once(), 0) << "the package of then is no document: " << err;
  EXPECT_EQ(Mails(), 1U);
}

TEST_F(DirectoryTest, LeadsToNothingOutside) {
  const std::string base = ExportOne("mail");
  folder.Write("outside/protocol.txt", "theirs");
  std::filesystem::create_directory_symlink(folder.Path("outside"), folder.Path(In(base, "KestrixServMon")));
  EXPECT_EQ(Once(), 1);
  EXPECT_EQ(Record("VRKX_DX_PROCESS_PHASE"), "3");
  EXPECT_EQ(folder.Tree("outside"), std::vector<std::string>{"protocol.txt"});
  EXPECT_EQ(folder.Read("outside/protocol.txt"), "theirs");
}

// The later exchange of a name would end in a name that is another's.
TEST_F(DirectoryTest, WhoseLaterNameIsTakenIsNotSent) {
  const std::string base = ExportOne("mail");
  const std::string taken = ExchangePath() + "/" + base + "_Break";
  folder.MakeFolder(taken);
  EXPECT_EQ(Once(), 0);
  EXPECT_NE(err.find("its later name is taken"), std::string::npos) << err;
  EXPECT_EQ(Mails(), 0U);
  std::filesystem::remove(folder.Path(taken));
  EXPECT_EQ(Once(), 0) << err;
  EXPECT_EQ(EndOf(base), "Sent");
}

// Whoever continued it came to no end: the record says so, the name does not.
TEST_F(DirectoryTest, ThatWasContinuedByHalvesIsPutBack) {
  const std::string base = ExportOne("mail");
  Misbehave("rcpt 550");
  EXPECT_EQ(Once(), 1);
  SetRecord("VRKX_DX_PROCESS_PHASE = 2");
  EXPECT_EQ(Once(), 0) << err;
  EXPECT_EQ(EndOf(base), "Sent");
  EXPECT_EQ(Mails(), 1U);
}

TEST_F(DirectoryTest, ThatShrankIsNotSent) {
  const std::string base = ExportOne("mail");
  Misbehave("rcpt 550");
  EXPECT_EQ(Once(), 1);
  std::string document;
  for (const std::string& name : folder.Tree(In(base))) {
    if (name.ends_with(".stp")) document = name;
  }
  const std::string content = folder.Read(In(base, document));
  folder.Write(In(base, document), content.substr(1));
  EXPECT_EQ(Sender({"--send-again", base + "_Break"}), 0);
  EXPECT_EQ(Once(), 1);
  EXPECT_NE(Record("VRKX_DX_STATUS_INFO").find("shorter than its"), std::string::npos)
      << Record("VRKX_DX_STATUS_INFO");
  folder.Write(In(base, document), content);
  EXPECT_EQ(Sender({"--send-again", base + "_Break"}), 0);
  EXPECT_EQ(Once(), 0) << err;
  EXPECT_EQ(Mails(), 1U);
}

TEST_F(DirectoryTest, IsLeftAloneWhenItIsNotForUs) {
  folder.MakeFolder(ExchangePath() + "/Notes_New");
  folder.MakeFolder(ExchangePath() + "/@@_anna_20240131_154502");
  const std::string base = ExportOne("mail");
  SetRecord("VRKX_DX_PROCESS_PHASE = 3");
  EXPECT_EQ(Once(), 0);
  EXPECT_EQ(EndOf("Notes"), "New");
  EXPECT_EQ(EndOf(base), "New") << "its exchange is stopped, and not continued";
  EXPECT_NE(err.find("left Notes_New: it holds no data file"), std::string::npos) << err;
  EXPECT_EQ(Sender({"--list", "--json"}), 0);
  EXPECT_NE(out.find("\"state\":\"queued\""), std::string::npos) << out;
}

}  // namespace
}  // namespace tessel::test
