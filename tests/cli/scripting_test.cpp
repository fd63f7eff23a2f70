// What somebody meets who scripts the command line.
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "cli/cli_world.h"
#include "common/outcome_words.h"
#include "embedded/store/database.h"

namespace tessel::test {
namespace {

using Arguments = std::vector<std::string>;
using Json = nlohmann::json;

TEST_F(CliWorld, SlipsAreNamedWithWhatWasMeant) {
  const std::string database = Database();
  struct Case {
    Arguments arguments;
    const char* told;
  };
  const Case cases[] = {
      {{"exprot"}, "there is no command \"exprot\"; did you mean \"export\"?"},
      {{"host", "shwo", database}, "did you mean \"show\"?"},
      {{"lock", database, "--usr", "anna", "1202:4721"},
       "there is no option \"--usr\"; did you mean \"--user\"?"},
      {{"lock", database, "--zzz", "1202:4721"}, "there is no option \"--zzz\"\n"},
      {{"lock", database, "--user", "m\xFCller", "1202:4721"}, "the argument \"m\\xFCller\" is not UTF-8"},
      {{"lock", database, "--user", "anna", "1202"}, "\"1202\" is no CLASS:OBJECT"},
      {{"export", database, "--user", "anna", "--select", "1202:4721,gearbox", "--no-send"},
       "\"gearbox\" is no CLASS:OBJECT"},
      {{"export", database, "--user", "anna", "--select", "1202:4721", "--mode", "mail", "--folder-structure",
        ""},
       "--folder-structure"},
      {{"export", database, "--user", "anna", "--select", "1202:4721", "--mode", "custom", "--field", "1=a",
        "--field", "01=b"},
       "field 1 is given twice"},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(Run(row.arguments), 2);
    EXPECT_NE(err.find(row.told), std::string::npos) << err;
    EXPECT_EQ(out, "");
  }
  EXPECT_EQ(Run({"--version"}), 0);
  EXPECT_EQ(out.rfind("tessel ", 0), 0U) << out;
  EXPECT_EQ(Run({"export", "--user", "anna", "--no-send", "--select", "1202:4721", database}), 0)
      << "the database is no document: " << err;
}

TEST_F(CliWorld, ResultsThatNobodyGetsAreNoSuccess) {
  for (const auto& [arguments, status] : std::initializer_list<std::pair<Arguments, int>>{
           {{"--help"}, 1},
           {{"host", "show", Database()}, 1},
           {{"export", Database(), "--user", "anna", "--select", "1202:4721", "--no-send"}, 3}}) {
    std::istringstream in;
    std::ofstream full("/dev/full");
    std::ostringstream errors;
    EXPECT_EQ(cli::Run(arguments, {in, full, errors, false, nullptr}), status);
    EXPECT_NE(errors.str().find("standard output could not be written"), std::string::npos) << errors.str();
    EXPECT_EQ(errors.str().find("handed over: ") != std::string::npos, status == 3);
  }
}

TEST_F(CliWorld, WhatIsMissingAtASiteIsSaidPlainly) {
  EXPECT_EQ(RunAs("anna", "lock", {"--language", "KLINGON", "1202:4721"}), 1);
  EXPECT_NE(err.find("The language KLINGON: there are no texts error.Kestrix_KLINGON"), std::string::npos)
      << err;
  embedded::Database(Database()).ExecuteOnce("UPDATE TESSEL_USER SET LANGUAGE = 'XYZ'");
  EXPECT_EQ(RunAs("anna", "lock", {"1202:4721"}), 0) << err;
  EXPECT_NE(err.find("warning: there are no texts error.Kestrix_XYZ"), std::string::npos) << err;
  EXPECT_EQ(RunAs("anna", "unlock", {"--quiet", "1202:4721"}), 0);
  EXPECT_EQ(err, "");
  embedded::Database(Database()).ExecuteOnce("DELETE FROM ADMIN_SETTING");
  EXPECT_EQ(RunAs("anna", "export", {"--select", "1202:4721", "--no-send"}), 1);
  EXPECT_NE(err.find("No settings object is linked to the user anna"), std::string::npos) << err;
}

TEST_F(CliWorld, AModelWhoseExchangesGetNoNumberIsWarnedOf) {
  const auto create = [&](const char* attributes) {
    folder.Write("model.json", std::string(R"({"alias": "A", "classMechanisms": ["VRKX_DX_TRANSMITTAL"],
      "sequences": [{"name": "S", "pattern": "%d"}], "classes": [{"id": 900, "name": "Exchange",
      "table": "EXCHANGE", "mechanisms": ["VRKX_DX_TRANSMITTAL"], "attributes": [)") +
                                   attributes + "]}]}");
    std::filesystem::remove_all(folder.Path("new.db.vault"));
    std::filesystem::remove(folder.Path("new.db"));
    EXPECT_EQ(Run({"host", "create", folder.Path("new.db"), folder.Path("model.json")}), 0) << err;
    return err;
  };
  constexpr const char* kLater = R"({"name": "B", "type": "text", "identifying": true, "sequence": "S"})";
  EXPECT_EQ(create(kLater), "");
  EXPECT_EQ(create((std::string(R"({"name": "A", "type": "text", "identifying": true}, )") + kLater).c_str()),
            "warning: class Exchange: the first identifying attribute A has no sequence: no exchange will be "
            "recorded\n");
  EXPECT_NE(create(R"({"name": "A", "type": "text"})").find("there is no identifying attribute"),
            std::string::npos);
}

// The steps of the trace are for those who read the trace.
TEST(OutcomeWords, SayWhatFailedInTheLanguageOfThePerson) {
  const Problem copy{
      "Fehler beim Kopieren (copyFile2ExDir/CommonXFunctions)", "1202_4721", 53, "No file x", {}};
  EXPECT_EQ(WordsOf(copy, Speech::kEnglish), "Copying the documents: No file x (1202_4721)");
  EXPECT_EQ(WordsOf(copy, Speech::kGerman),
            "Kopieren der Dokumente: Datei nicht gefunden (No file x) (1202_4721)");
  EXPECT_EQ(WordsOf(Problem{"A step of its own", {}, 8, "read only", {}}, Speech::kGerman),
            "A step of its own: read only");
  struct Told {
    CopyFailure failure;
    const char* english;
    const char* german;
  };
  const Told cases[] = {
      {{CopyTrouble::kNothingToCopy, "", "", 0, ""},
       "There is no document to copy.",
       "Es gibt kein Dokument zu kopieren."},
      {{CopyTrouble::kNoDirectory, "", "/x", 76, "Cannot create /x/y"},
       "The exchange directory could not be made below /x: Cannot create /x/y",
       "Das Austauschverzeichnis konnte nicht angelegt werden in /x: Pfad nicht gefunden (Cannot create "
       "/x/y)"},
      {{CopyTrouble::kNotCopied, "%2 ; P-1", "/%1", 440, "Nein"},
       "\"%2 ; P-1\" could not be copied to /%1: Nein",
       "\"%2 ; P-1\" konnte nicht kopiert werden nach /%1: Nein"},
      {{CopyTrouble::kNotProcessed, "", "", 0, ""},
       "The documents could not be processed.",
       "Die Dokumente konnten nicht bearbeitet werden."},
  };
  for (const Told& told : cases) {
    EXPECT_EQ(WordsOf(told.failure, Speech::kEnglish), told.english);
    EXPECT_EQ(WordsOf(told.failure, Speech::kGerman), told.german);
  }
}

TEST_F(CliWorld, ThePasswordComesFromInputOrAPerson) {
  embedded::Database(Database()).ExecuteOnce("UPDATE TESSEL_USER SET PASSWORD = 'geheim'");
  const Arguments command{"lock", Database(), "--user", "anna", "1202:4721"};
  EXPECT_EQ(Run(command), 1);
  Arguments fromInput = command;
  fromInput.emplace_back("--password-stdin");
  EXPECT_EQ(Run(fromInput, "falsch\n"), 1);
  EXPECT_EQ(Run(fromInput, "geheim\r\n"), 0) << err;
  std::istringstream in;
  std::ostringstream output;
  std::string asked;
  const auto person = [&asked](const std::string& question) {
    asked += question;
    return std::optional<std::string>("geheim");
  };
  EXPECT_EQ(
      cli::Run({"unlock", Database(), "--user", "anna", "1202:4721"}, {in, output, output, false, person}),
      0);
  EXPECT_EQ(asked, "Password of anna: ");
}

TEST_F(CliWorld, ResultsAsJson) {
  struct Case {
    Arguments arguments;
    int status;
    const char* member;  // that the result has, as a pointer
  };
  const std::string database = Database();
  const Case cases[] = {
      {{"host", "show", database}, 0, "/classes/0/objects"},
      {{"export", database, "--user", "anna", "--select", "1202:4721", "--mode", "mail", "--recipient",
        "901_301:902_401", "--dry-run"},
       0,
       "/recipients/0"},
      {{"export", database, "--user", "anna", "--select", "1202:4721", "--no-send"},
       0,
       "/directories/0/path"},
      {{"lock", database, "--user", "anna", "1202:4731"}, 1, "/documents/0/reason"},
      {{"lock", database, "--user", "anna", "1202:99"}, 1, "/error"},
      {{"continue", database, "--user", "anna", "900:701"}, 1, "/exchanges/0/result"},
      {{"latest", database, "--user", "anna", "1202:4725"}, 0, "/exchanges/0/attributes"},
      {{"recover", database}, 0, "/steps"},
      {{"config", "list", database}, 0, "/settings/0/keys/0/key"},
      {{"config", "get", database, "ExchangePath"}, 0, "/value"},
  };
  for (Case row : cases) {
    row.arguments.emplace_back("--json");
    EXPECT_EQ(Run(row.arguments), row.status) << err;
    const Json result = Json::parse(out, nullptr, false);
    ASSERT_TRUE(result.is_object()) << out;
    EXPECT_EQ(result.value("status", -1), row.status);
    EXPECT_TRUE(result.contains(Json::json_pointer(row.member))) << out;
  }
}

TEST_F(CliWorld, TheProgressReachesItsEnd) {
  std::istringstream in;
  std::ostringstream output;
  std::ostringstream errors;
  EXPECT_EQ(cli::Run({"export", Database(), "--user", "anna", "--select", "1201:4712,1201:4713", "--no-send"},
                     {in, output, errors, true, nullptr}),
            0);
  EXPECT_NE(errors.str().find("[##############################] 2 / 2 documents  56.4 kB  in "),
            std::string::npos)
      << errors.str();
}

}  // namespace
}  // namespace tessel::test
