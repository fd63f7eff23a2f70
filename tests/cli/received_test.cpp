#include <gtest/gtest.h>
#include <zip.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include "cli/cli_world.h"

namespace tessel::test {
namespace {

namespace fs = std::filesystem;

// A mail of two documents that has all three files of the export's own.
class ReceivedExchange : public CliWorld {
 protected:
  ReceivedExchange() {
    EXPECT_EQ(RunAs("anna", "export",
                    {"--select", "1201:4712,1202:4721", "--mode", "mail", "--recipient", "901_301:902_401",
                     "--subject", "<b>Housing & shaft</b>"}),
              0)
        << err;
    sent = LastLine();
  }
  ~ReceivedExchange() override { fs::remove_all(folder.Path("copy")); }
  // A fresh copy of what was sent, to be spoiled.
  std::string Copy() {
    const std::string copy = folder.Path("copy");
    fs::remove_all(copy);
    fs::copy(sent, copy);
    return copy;
  }
  void Replace(const std::string& file, const std::string& text, const std::string& by) const {
    std::string bytes = folder.Read("copy/" + file);
    const auto found = bytes.find(text);
    ASSERT_NE(found, std::string::npos) << file << ": " << text;
    folder.Write("copy/" + file, bytes.replace(found, text.size(), by));
  }
  // Packs a directory below a prefix; the zip library stores the files when it closes.
  std::string Pack(const std::string& directory, const std::string& prefix) const {
    std::string archivePath = folder.Path("packed.zip");
    zip_t* archive = zip_open(archivePath.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    for (const auto& entry : fs::directory_iterator(directory)) {
      const std::string name = prefix + entry.path().filename().string();
      zip_file_add(archive, name.c_str(), zip_source_file(archive, entry.path().c_str(), 0, 0),
                   ZIP_FL_ENC_UTF_8);
    }
    EXPECT_EQ(zip_close(archive), 0);
    return archivePath;
  }

  std::string sent;
};

TEST_F(ReceivedExchange, EverythingThatDoesNotFitIsTold) {
  struct Damage {
    std::function<void(const std::string& copy)> spoil;
    const char* told;
  };
  const auto replace = [this](const char* file, const char* text, const char* by) {
    return [=, this](const std::string&) { Replace(file, text, by); };
  };
  constexpr const char* kStructure = "Kestrix_Structure.xml";
  constexpr const char* kData = "Kestrix_Data.xml";
  const Damage damages[] = {
      {[](const std::string& copy) { fs::remove(copy + "/P-1110.stp"); }, "P-1110.stp: is missing"},
      {[](const std::string& copy) { fs::rename(copy + "/P-1110.stp", copy + "/p-1110.stp"); },
       "p-1110.stp: is listed nowhere"},
      {[](const std::string& copy) { std::ofstream(copy + "/virus.exe") << "x"; },
       "virus.exe: is listed nowhere"},
      {[](const std::string& copy) { fs::create_directory(copy + "/more"); }, "more: is a folder"},
      {[](const std::string& copy) {
         fs::remove(copy + "/P-1110.stp");
         fs::create_symlink("/etc/passwd", copy + "/P-1110.stp");
       },
       "P-1110.stp: is no plain file"},
      {[](const std::string& copy) { fs::remove(copy + "/Kestrix_Data.xml"); }, "there is no data file"},
      {[](const std::string& copy) { fs::remove(copy + "/Kestrix_Structure.xml"); },
       "the structure file is missing"},
      {[](const std::string& copy) { fs::resize_file(copy + "/Kestrix_Structure.xml", 2000); },
       "it is no well-formed XML"},
      {replace(kStructure, "?><DataEx", "?><!DOCTYPE d [<!ENTITY e \"e\">]><DataEx"),
       "it has a document type"},
      {replace(kStructure, "IS_DRAXA_DOC=\"1\"", "IS_DRAXA_DOC=\"7\""), "IS_DRAXA_DOC"},
      {replace(kStructure, " STATUS=\"3\"", ""), "it has no STATUS"},
      {replace(kStructure, "ORIG_FILE_NAME=\"P-1110.stp\"", "ORIG_FILE_NAME=\"../P-1110.stp\""),
       "is no file name"},
      {replace(kStructure, "ORIG_FILE_NAME=\"P-1110.stp\"", "ORIG_FILE_NAME=\"P-1120.stp\""), ", too"},
      {replace(kStructure, "PELICORE_OBJ_ID=\"4724\"", "PELICORE_OBJ_ID=\"4725\""), "its ids say 1202_4725"},
      {replace(kStructure, "<_H_STOBJECT_ Identifier=\"1202_4724\"", "<_H_STOBJECT_ Identifier=\"1202_9\""),
       "it stands in the hierarchy, but not in the content list"},
      {replace(kStructure, "<_H_STOBJECT_ Identifier=\"1202_4724\" Instance=\"0\"",
               "<_H_STOBJECT_ Identifier=\"1202_4724\" Instance=\"3\""),
       "has no instance 0"},
      {replace(kData, "<UseFoldStruc>0<", "<UseFoldStruc>1<"), "UseFoldStruc"},
      {replace(kData, "</FolderStrucClassID>", "</FolderStrucClassID><Evil/>"),
       "the element Evil has no place here"},
      {replace("NeutralFormats.xml", "<PartDocument>", "<PartDocument/><PartDocument>"),
       "NeutralFormats.xml"},
  };
  for (const Damage& damage : damages) {
    const std::string copy = Copy();
    EXPECT_EQ(Run({"verify", copy}), 0) << err;
    damage.spoil(copy);
    EXPECT_EQ(Run({"verify", sent, copy}), 1) << damage.told;
    EXPECT_NE(err.find(damage.told), std::string::npos) << damage.told << "\n" << err;
    EXPECT_EQ(out, "ok: " + sent + " (5 documents)\n");
    EXPECT_NE(Run({"inspect", copy}), 2);
  }
  const std::string handled = Copy() + "_Sent";
  fs::rename(folder.Path("copy"), handled);
  for (const char* own : {"KestrixServMon", "SubDir"})
    fs::create_directory(handled + "/" + own);
  EXPECT_EQ(Run({"verify", handled}), 0) << err;
  fs::create_directory(handled + "/more");
  EXPECT_EQ(Run({"verify", handled}), 1);
  fs::remove(handled + "/Kestrix_Data.xml");
  for (const char* own : {"KestrixServMon", "SubDir", "more"})
    fs::remove(handled + "/" + own);
  EXPECT_EQ(Run({"verify", Pack(handled, "")}), 0) << err;
  EXPECT_EQ(Run({"verify", folder.Path("nowhere")}), 1);
  EXPECT_NE(err.find("There is no "), std::string::npos) << err;
}

// With the recorded sums nothing gets through.
TEST_F(ReceivedExchange, RecordedSumsFindEveryChange) {
  EXPECT_EQ(Run({"verify", "--database", Database(), sent}), 1);
  EXPECT_NE(err.find("the database keeps no check sums of the exchange 900_"), std::string::npos) << err;
  ASSERT_EQ(Run({"config", "set", Database(), "RecordChecksums", "True"}), 0) << err;
  ASSERT_EQ(RunAs("ben", "export",
                  {"--select", "1201:4712", "--mode", "mail", "--recipient", "901_301:902_401", "--recipient",
                   "901_302:902_404"}),
            0)
      << err;
  const std::string second = LastLine();
  sent = out.substr(0, out.find('\n'));
  ASSERT_EQ(Run({"verify", "--database", Database(), sent, second}), 0) << err;

  const auto spoiled = [this](const std::string& copy) {
    return Run({"verify", "--database", Database(), copy}) == 1;
  };
  for (const auto& entry : fs::directory_iterator(sent)) {
    const std::string file = "copy/" + entry.path().filename().string();
    for (const double place : {0.0, 0.1, 0.35, 0.5, 0.75, 0.999}) {
      Copy();
      std::string bytes = folder.Read(file);
      bytes[static_cast<std::size_t>(place * static_cast<double>(bytes.size()))] ^= 4;
      folder.Write(file, bytes);
      EXPECT_TRUE(spoiled(folder.Path("copy"))) << file << " at " << place;
    }
    fs::remove(folder.Path(file));
    EXPECT_TRUE(spoiled(folder.Path("copy"))) << file;
    fs::rename(Copy() + "/" + entry.path().filename().string(), folder.Path("copy/other"));
    EXPECT_TRUE(spoiled(folder.Path("copy"))) << file;
  }
  fs::rename(Copy() + "/P-1110.stp", folder.Path("copy/swap"));
  fs::rename(folder.Path("copy/P-1120.stp"), folder.Path("copy/P-1110.stp"));
  fs::rename(folder.Path("copy/swap"), folder.Path("copy/P-1120.stp"));
  EXPECT_TRUE(spoiled(folder.Path("copy")));
  EXPECT_NE(err.find("P-1110.stp: "), std::string::npos) << err;
  fs::copy(Copy() + "/P-1110.stp", folder.Path("copy/P-1110a.stp"));
  EXPECT_TRUE(spoiled(folder.Path("copy")));
  EXPECT_NE(err.find("P-1110a.stp: was not sent"), std::string::npos) << err;
}

TEST_F(ReceivedExchange, ArchivesAreReadLikeDirectories) {
  for (const char* prefix : {"", "Export_anna/"}) {
    EXPECT_EQ(Run({"verify", Pack(sent, prefix)}), 0) << err;
    EXPECT_NE(out.find("(5 documents)"), std::string::npos) << out;
  }
  const std::string archive = Pack(sent, "");
  std::string bytes = folder.Read("packed.zip");
  bytes[bytes.size() / 3] ^= 1;
  folder.Write("packed.zip", bytes);
  EXPECT_EQ(Run({"verify", archive}), 1);
  EXPECT_EQ(Run({"verify", Pack(sent, "../")}), 1);
  EXPECT_NE(err.find("leaves its directory"), std::string::npos) << err;
  EXPECT_EQ(Run({"verify", folder.Write("no.zip", "no archive")}), 1);
  EXPECT_NE(err.find("as a directory or a ZIP archive"), std::string::npos) << err;
}

TEST_F(ReceivedExchange, IsShownToPeopleAndPrograms) {
  ASSERT_EQ(Run({"inspect", sent}), 0) << err;
  for (const char* line : {"send mode: mail", "subject: <b>Housing & shaft</b>", "documents: 5",
                           "  |- Antriebswelle, Baugruppe  1201_4712  A-1100.stp  (12.9 kB, revision A)\n"
                           "  |  |- Antriebswelle Ø 25  1202_4724  P-1110.stp  (3.2 kB, revision A)\n",
                           "Ritzel z = 18  1202_4725  (Product Structure, 1)"}) {
    EXPECT_NE(out.find(line), std::string::npos) << line << "\n" << out;
  }
  const std::string page = folder.Path("page.html");
  ASSERT_EQ(Run({"inspect", sent, "--html", page}), 0) << err;
  const std::string html = folder.Read("page.html");
  EXPECT_NE(html.find("&lt;b&gt;Housing &amp; shaft&lt;/b&gt;"), std::string::npos);
  EXPECT_EQ(html.find("<b>Housing"), std::string::npos);
  EXPECT_NE(html.find("<summary>Antriebswelle, Baugruppe"), std::string::npos);
  for (const char* outside : {"http", "<script", "<link"})
    EXPECT_EQ(html.find(outside), std::string::npos) << outside;
  ASSERT_EQ(Run({"inspect", sent, "--json"}), 0) << err;
  EXPECT_NE(out.find("\"identifier\": \"1202_4724\""), std::string::npos);
  EXPECT_NE(out.find("\"problems\": []"), std::string::npos);
}

}  // namespace
}  // namespace tessel::test
