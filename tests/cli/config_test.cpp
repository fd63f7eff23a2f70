#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <functional>

#include "administration/catalogue_codes.h"
#include "administration/settings_text.h"
#include "cli/cli_world.h"
#include "embedded/store/database.h"

namespace tessel::test {
namespace {

using administration::SettingsText;

TEST(SettingsText, ChangesOneLineAndKeepsTheRest) {
  const std::string text = "#head\r\n[A]\r\nx=1\r\nx = 2\r\n odd\r\nx=3\r\n\r\n[B] tail\r\ny=a=b";
  struct Change {
    const char* section;
    const char* key;
    std::string after;
  };
  const Change changes[] = {
      {"A", "x", "#head\r\n[A]\r\nx=N\r\nx = 2\r\n odd\r\nx=3\r\n\r\n[B] tail\r\ny=a=b"},
      {"A", "z", "#head\r\n[A]\r\nx=1\r\nx = 2\r\n odd\r\nx=3\r\nz=N\r\n\r\n[B] tail\r\ny=a=b"},
      {"B", "y", text + "\r\ny=N\r\n"},
      {"C", "k", text + "\r\n[C]\r\nk=N\r\n"},
  };
  for (const Change& change : changes) {
    SettingsText settings(text);
    settings.Set(change.section, change.key, "N");
    EXPECT_EQ(settings.Text(), change.after);
    EXPECT_EQ(settings.Find(change.section, change.key), "N");
  }
  SettingsText settings(text);
  EXPECT_TRUE(settings.Unset("A", "x"));
  EXPECT_FALSE(settings.Unset("B", "y"));
  EXPECT_EQ(settings.Text(), "#head\r\n[A]\r\nx = 2\r\n odd\r\n\r\n[B] tail\r\ny=a=b");
  SettingsText empty("");
  empty.Set("A", "x", "1");
  EXPECT_EQ(empty.Text(), "[A]\r\nx=1\r\n");
}

TEST(CatalogueCodes, AreThoseOfTheDocumentation) {
  std::ifstream file(std::string(TESSEL_EXAMPLES) + "/../docs/catalogues.md");
  std::string documented;
  std::string known;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("| `") && line[8] == '`' && line.substr(3, 2) != "cc")
      documented += line.substr(3, 5) + " ";
  }
  for (const char* code : administration::kCatalogueCodes)
    known += std::string(code) + " ";
  EXPECT_EQ(known, documented);
}

class ConfigWorld : public CliWorld {
 protected:
  int Config(const std::string& verb, std::vector<std::string> rest = {}) {
    rest.insert(rest.begin(), {"config", verb, Database()});
    return Run(rest);
  }
  [[nodiscard]] std::string Stored() const {
    embedded::Database sql(Database());
    return sql.Query("SELECT VRKX_VALUE_LONG FROM ADMIN_SETTING WHERE OBJECT_ID = 201").rows[0][0].AsText();
  }
  void Store(const std::string& text) const {
    embedded::Database(Database())
        .Execute("UPDATE ADMIN_SETTING SET VRKX_VALUE_LONG = :text WHERE OBJECT_ID = 201", {Value(text)});
  }
  void Execute(const std::string& statement) const { embedded::Database(Database()).ExecuteOnce(statement); }
  [[nodiscard]] std::string Edited(std::string text, const std::string& from, const std::string& to) const {
    const auto found = text.find(from);
    EXPECT_NE(found, std::string::npos) << from;
    return text.replace(found, from.size(), to);
  }
};

TEST_F(ConfigWorld, ListsGetsSetsAndUnsets) {
  const std::string before = Stored();
  ASSERT_EQ(Config("list"), 0) << err;
  for (const char* line :
       {"INI-001 (Einstellungen des Datenaustauschs) of anna, ben, admin, sender\n",
        "ExchangePath=C:\\temp\\Exchange  (default)\n    Directory below which",
        "DisplayAttribCustom2=CITY  (default: )\n", "[Verification]\nRecordChecksums=False"}) {
    EXPECT_NE(out.find(line), std::string::npos) << line << "\n" << out;
  }
  ASSERT_EQ(Config("set", {"ExchangePath", "D:\\Out"}), 0) << err;
  ASSERT_EQ(Config("set", {"Mail.SMTPServer", "mx", "--user", "anna"}), 0) << err;
  EXPECT_EQ(Stored(), Edited(Edited(before, "SMTPServer=mail.wendelau.example", "SMTPServer=mx"),
                             "SubExDir=SubDir\r\n", "SubExDir=SubDir\r\nExchangePath=D:\\Out\r\n"));
  ASSERT_EQ(Config("get", {"ExchangePath"}), 0);
  EXPECT_EQ(out, "D:\\Out\n");
  ASSERT_EQ(Config("unset", {"ExchangePath"}), 0);
  EXPECT_EQ(Config("unset", {"ExchangePath"}), 1);
  ASSERT_EQ(Config("get", {"ExchangePath"}), 0);
  EXPECT_EQ(out, "C:\\temp\\Exchange\n");
}

TEST_F(ConfigWorld, WhatAStartUpWouldRefuseIsRefused) {
  struct Refusal {
    std::vector<std::string> arguments;
    const char* told;
  };
  const Refusal refusals[] = {
      {{"UseServerMonitor", "yes"}, "it is no Boolean"},
      {{"NoSend", "70000"}, "no integer of 16 bits"},
      {{"ExchangePath", "D:\\a=b"}, "second \"=\""},
      {{"ExportPrefix", "a\nb"}, "line end"},
      {{"DataFileName", "../x.xml"}, "no plain file name"},
      {{"DataFileName", "neutralformats.XML"}, "the name of the neutral formats"},
      {{"ExchangePath", "temp/out"}, "does not begin at a drive"},
      {{"PresetCopyAllBox", "True "}, "blanks around it"},
      {{"StructureFileName", "x.xml"}, "the nearest is ini_xml.StructurFileName"},
      {{"SMTPServer", "mx", "--user", "nobody"}, "There is no user nobody"},
  };
  const std::string before = Stored();
  for (const Refusal& refusal : refusals) {
    EXPECT_EQ(Config("set", refusal.arguments), 1) << refusal.told;
    EXPECT_NE(err.find(refusal.told), std::string::npos) << err;
  }
  EXPECT_EQ(Stored(), before);
}

TEST_F(ConfigWorld, AnEditorChangesTheTextAndMendsItsLineEnds) {
  std::string lineFeeds = Stored();
  for (auto found = lineFeeds.find('\r'); found != std::string::npos; found = lineFeeds.find('\r'))
    lineFeeds.erase(found, 1);
  const std::string before = Stored();
  Store(lineFeeds);
  EXPECT_EQ(Config("set", {"SMTPServer", "mx"}), 1);
  EXPECT_NE(err.find("LF alone"), std::string::npos) << err;
  setenv("VISUAL", "sed -i s/SubExDir=SubDir/SubExDir=Sub/", 1);
  EXPECT_EQ(Config("edit"), 0) << err;
  EXPECT_EQ(Stored(), Edited(before, "SubExDir=SubDir", "SubExDir=Sub"));
  setenv("VISUAL", "sed -i s/UsePartnerList=True/UsePartnerList=Ja/", 1);
  EXPECT_EQ(Config("edit"), 1);
  EXPECT_NE(err.find("CustomClient.UsePartnerList=Ja: it is no Boolean"), std::string::npos) << err;
  setenv("VISUAL", "false", 1);
  EXPECT_EQ(Config("edit"), 1);
  EXPECT_NE(err.find("the text is kept in "), std::string::npos) << err;
  unsetenv("VISUAL");
}

TEST_F(ConfigWorld, CheckTellsWhatPeopleWouldMeet) {
  EXPECT_EQ(Config("check"), 0) << out << err;
  const std::string good = Stored();
  const auto edit = [&](const char* from, const char* to) {
    return [=, this] { Store(Edited(good, from, to)); };
  };
  const auto sql = [&](const char* statement) { return [=, this] { Execute(statement); }; };
  struct Fault {
    std::function<void()> make;
    int status;
    const char* told;
  };
  const Fault faults[] = {
      {edit("UseServerMonitor=0", "UseServerMonitor=ja"), 1, "every start-up ends with e9020"},
      {edit("DataFileName=Kestrix_Data.xml", "DataFileName=kestrix_structure.XML"), 1,
       "three different names"},
      {edit("XMLStructureEncoding=iso-8859-1", "XMLStructureEncoding=utf-7"), 1, "in the encoding \"utf-7\""},
      {edit("ExportPrefix=Export", "ExchangePath=/proc/no"), 1,
       "no exchange directory can be made in /proc/no"},
      {edit("[Lock]", "[Lock]\r\nLockedInf=x"), 0, "the nearest is Lock.LockedInfo"},
      {edit("UserEmail=USER_EMAIL", "UserEmail=NONE"), 0, "user anna: there is no attribute NONE"},
      {edit("UserEmail=USER_EMAIL", "UserEmail = USER_EMAIL"), 0, "blanks belong to the key"},
      {edit("MultiLine_2||False", "MultiLine_2|False"), 0,
       "does not say whether the field has several lines"},
      {edit("DisplayAttribute1=VRK_DESCRIPTION", "DisplayAttribute1=MATERIAL"), 0,
       "the class CAD Assembly has no such attribute"},
      {edit("LanguageFile=", "LanguageFile=/none"), 1, "there is no folder /none"},
      {edit("LanguageFile=", "LanguageFile=\r\n#"), 1, "the settings name no folder"},
      {[&] {
         std::string text;
         for (const char c : good)
           text += c == '\r' ? "" : std::string(1, c);
         Store(text);
       },
       1, "the lines end with LF alone"},
      {sql("UPDATE ADMIN_SETTING SET VRKX_VALUE_1 = 'Other' WHERE OBJECT_ID = 202"), 0,
       "Contact Person 902_401: its settings object is not named \"DRAXASettings\""},
      {sql("UPDATE TESSEL_USER SET LANGUAGE = 'FRA' WHERE LOGIN = 'ben'"), 1, "error.Kestrix_FRA"},
      {sql("UPDATE ADMIN_SETTING SET VRKX_VALUE_LONG = '[Mapping_XML_StructureFile]' || char(13,10) || 'a|b' "
           "WHERE OBJECT_ID = 203"),
       1, "the mapping line \"a|b\" has no \"||\""},
      {sql("UPDATE ADMIN_SETTING SET VRKX_VALUE_1 = 'Other' WHERE OBJECT_ID = 201"), 1,
       "user ben: no linked settings object is named \"Initialization\""},
      {sql("DELETE FROM GENERAL_LINK WHERE OBJECT_ID1 = 101 AND CLASS_ID1 = 10"), 1,
       "user anna: no settings object is linked"},
      {sql("UPDATE TESSEL_METADATA SET CONTENT = replace(replace(CONTENT, '\"Supplier Exchange\"', "
           "'\"Other\"'), "
           "'[[\"OPER_CLASS_ID\",\"OPER_OBJECT_ID\"]]', '[]')"),
       1, "every export ends with e9010"},
      {sql("UPDATE TESSEL_METADATA SET CONTENT = replace(CONTENT, '\"sequence\":\"Exchange number\",', '')"),
       1, "the first identifying attribute VRK_ID has no sequence: no exchange can be recorded"},
  };
  for (const Fault& fault : faults) {
    fault.make();
    EXPECT_EQ(Config("check"), fault.status) << fault.told << "\n" << out;
    EXPECT_NE(out.find(fault.told), std::string::npos) << fault.told << "\n" << out << err;
    Store(good);
  }
  EXPECT_NE(out.find("allows several records for a document"), std::string::npos) << out;
}

}  // namespace
}  // namespace tessel::test
