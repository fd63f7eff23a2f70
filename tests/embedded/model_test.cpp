#include <gtest/gtest.h>

#include <sstream>

#include "embedded/small_world.h"
#include "embedded/store/describe.h"

namespace tessel::test {
namespace {

using embedded::CreateDatabase;
using embedded::EmbeddedHost;

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

class ModelTest : public ::testing::Test, public Machine {
 protected:
  ModelTest() {
    folder.Write("model/a.stp", "A");
    folder.Write("model/sub/b.stp", "B");
  }
  std::string Create(const std::string& model) {
    folder.Write("model/m.json", model);
    return ErrorOf([&] { CreateDatabase(files, folder.Path("x.db"), folder.Path("model/m.json")); });
  }

  FileSystem& files = platform.files;
  embedded::UnattendedDialogs dialogs;
};

TEST_F(ModelTest, ProblemsNameFileObjectAndAttributeAndLeaveNothing) {
  struct Case {
    std::string model;
    const char* problem;
  };
  const std::string good = SmallModel();
  const Case cases[] = {
      {"{ \"alias\": ", "m.json: parse error at line 1"},
      {"[]", "m.json: an object in braces is expected"},
      {R"({"attributeSets": {"unused": )" + std::string(100000, '[') + std::string(100000, ']') + "}}",
       "m.json: values are nested too deeply"},
      {Replaced(good, "\"alias\"", "\"alais\""),
       "m.json: unknown key \"alais\"\nm.json: \"alias\" is missing"},
      {Replaced(good, "\"id\": 900", "\"id\": 40000"),
       "m.json: class \"Data Exchange\": \"id\" is not a whole number from 1 to 32767"},
      {Replaced(good, "\"id\": 900", "\"id\": 1201"),
       "m.json: class \"Assembly\": the id or the name is taken by another class"},
      {Replaced(good, "DATA_EXCHANGE", "part"), "m.json: class \"Part\": another class has the table PART"},
      {Replaced(good, "DATA_EXCHANGE", "TESSEL_USER"),
       "m.json: class \"Data Exchange\": the table name TESSEL_USER is taken"},
      {Replaced(good, "\"DATA_EXCHANGE\"", "\"A (B) --\""),
       "m.json: class \"Data Exchange\": \"table\" is not made of letters, digits and _"},
      {Replaced(good, "\"PART\"", "\"SELECT\""), "class \"Part\": the database refuses the table SELECT"},
      {Replaced(good, "\"type\": \"double\" }", "\"type\": \"real\" }"),
       "m.json: class \"Assembly\": attribute \"WEIGHT\": unknown type \"real\""},
      {Replaced(good, "\"default\": \"Checked In\"", "\"default\": \"Lost\""),
       "m.json: class \"Assembly\": attribute \"VRK_STATE\": \"default\": class \"State\" has no value "
       "\"Lost\""},
      {Replaced(good, "DX-%04d%%", "DX-%s"),
       "m.json: sequence \"Exchange\": \"pattern\" does not hold one %d or %0Nd"},
      {Replaced(good, "[\"TRANSMITTAL\"], \"attributes\"", "[\"TRANSMITAL\"], \"attributes\""),
       "m.json: class \"Data Exchange\": unknown class mechanism \"TRANSMITAL\""},
      {Replaced(good, "\"first\": [\"Assembly\"", "\"first\": [\"Assemblies\""),
       "m.json: link class \"Structure\": \"first\": unknown class \"Assemblies\""},
      {Replaced(good, "\"object\": \"ben\"", "\"object\": \"bob\""),
       "m.json: user \"ben\": \"object\": no object has the name \"bob\""},
      {SmallModel(R"({"class": "Part", "name": "p", "values": {"NOPE": 1, "STATE": "x", "VRK_ID": {}}})"),
       "m.json: object \"p\": attribute \"NOPE\": class \"Part\" has no such attribute\n"
       "m.json: object \"p\": attribute \"STATE\": Type mismatch: \"x\"\n"
       "m.json: object \"p\": attribute \"VRK_ID\": neither a text nor a number nor a Boolean nor a list of "
       "lines"},
      {SmallModel(R"({"class": "Part", "values": {"VRK_ID": "123456789012345678901", "STATE": 70000}})"),
       "m.json: object number 3: attribute \"STATE\": Overflow\n"
       "m.json: object number 3: attribute \"VRK_ID\": longer than 20 characters"},
      {SmallModel(R"({"class": "Part", "name": "p", "values": {"OBJECT_ID": 7}})"),
       "m.json: object \"p\": attribute \"OBJECT_ID\": the host sets this attribute itself"},
      {SmallModel(R"({"class": "Part", "name": "p", "values": {"LOCKED_BY": "nobody"}})"),
       "m.json: object \"p\": attribute \"LOCKED_BY\": no object has the name \"nobody\""},
      {SmallModel(R"({"class": "Part", "name": "p", "values": {"LOCKED_BY": "p"}})"),
       "m.json: object \"p\": attribute \"LOCKED_BY\": object \"p\" is of class \"Part\""},
      {SmallModel(R"({"class": "Part", "name": "anna"})"),
       "m.json: object \"anna\": another object has this name"},
      {SmallModel(R"({"class": "USERS", "id": 100})"),
       "m.json: object number 3: class \"USERS\" has an object 100 already"},
      {SmallModel(Document("Part", 3, "nowhere.stp")), "m.json: object \"3\": "},
      {SmallModel(Document("Part", 3, "a.stp", R"("CAD_REF_FILE_NAME": "../a.stp")")),
       "m.json: object \"3\": attribute \"CAD_REF_FILE_NAME\": \"../a.stp\" is no plain file name"},
      {SmallModel(Document("Part", 3, "a.stp") + "," + Document("Part", 4, "a.stp")),
       "m.json: object \"4\": another object brings a vault file \"a.stp\"; give a FILE_NAME"},
      {SmallModel(Document("Part", 3, "", R"("FILE_NAME": "lost.stp")")),
       "m.json: object \"3\": attribute \"FILE_NAME\": no object brings a vault file \"lost.stp\""},
      {SmallModel(R"({"class": "Object Locking", "values": {"OPER_CLASS_ID": 1, "OPER_OBJECT_ID": 2}},
                     {"class": "Object Locking", "values": {"OPER_CLASS_ID": 1, "OPER_OBJECT_ID": 2}})"),
       "m.json: object number 4: the database refuses it: "},
      {SmallModel(Document("Part", 3), Link("Structure", 3, 4)),
       "m.json: link number 1 (3 to 4): \"to\": no object has the name \"4\""},
      {SmallModel("", R"({"class": "Structure", "from": "anna", "to": "ben"})"),
       "m.json: link number 1 (anna to ben): link class \"Structure\" does not tie class \"USERS\" to class"},
  };
  for (const Case& each : cases) {
    const std::string error = Create(each.model);
    EXPECT_NE(error.find(each.problem), std::string::npos) << each.problem << "\n  got: " << error;
    for (const char* made : {"x.db", "x.db.new", "x.db.vault"})
      EXPECT_FALSE(folder.Exists(made)) << each.problem << made;
  }
}

TEST_F(ModelTest, ADatabaseAndItsVaultAreMadeAndNeverOverwritten) {
  ASSERT_EQ(Create("// a comment\n" + SmallModel(Document("Part", 3, "sub/b.stp") + "," +
                                                 Document("Part", 4, "a.stp", R"("FILE_NAME": "p4.stp")"))),
            "");
  EXPECT_EQ(folder.Tree("x.db.vault"), (std::vector<std::string>{"b.stp", "p4.stp"}));
  EXPECT_FALSE(folder.Exists("x.db.new"));
  const std::string before = folder.Read("x.db");
  EXPECT_NE(Create(SmallModel()).find("x.db exists already"), std::string::npos);
  EXPECT_EQ(folder.Read("x.db"), before);
  std::filesystem::remove(folder.Path("x.db"));
  EXPECT_NE(Create(SmallModel()).find("x.db.vault exists already"), std::string::npos);
}

TEST_F(ModelTest, WhatWasWrittenIsReadBack) {
  ASSERT_EQ(Create(SmallModel(R"({"class": "Part", "name": "p", "file": "a.stp", "values": {
      "VRK_ID": "Ä-1", "VRK_COMMENT": ["[Path]", "X=${MODEL_DIR}/x", ""], "LOCKED_BY": "ben",
      "VRK_STATE": "Released", "LOCKED": true, "WEIGHT": 2.5}})")),
            "");
  {
    EmbeddedHost host(folder.Path("x.db"), HostOptionsOf(*this, dialogs));
    const PcSessionPtr session = host.OpenSession("anna", "secret");
    const PcObjectPtr part = session->ObjectStore()->Object({1202, 102});
    ASSERT_NE(part, nullptr);
    EXPECT_EQ(part->GetText("VRK_COMMENT"), "[Path]\r\nX=" + folder.Path("model") + "/x\r\n");
    EXPECT_EQ(part->GetValue("LOCKED_BY"), Value(101));
    EXPECT_EQ(part->GetValue("VRK_STATE"), Value(3));
    EXPECT_EQ(part->GetValue("LOCKED"), Value(true));
    EXPECT_EQ(part->GetText("CAD_REF_FILE_NAME"), "a.stp");
    EXPECT_EQ(session->ConfigurationValue("Size"), folder.Path("model") + "/large");
    const PcMetaDataPtr metaData = session->MetaData();
    EXPECT_EQ(metaData->ClassMechanismCount(), 3);
    EXPECT_EQ(metaData->ClassMechanism("DOC")->SupportedClass(1)->Name(), "Part");
    EXPECT_EQ(metaData->ClassMechanism("EMPTY")->SupportedClassCount(), 0);
    EXPECT_EQ(metaData->LinkClassesBetween(1201, 1202).size(), 2u);
    EXPECT_EQ(metaData->LinkClassesBetween(10, 1202).front()->Name(), "General Link");
    EXPECT_EQ(metaData->ClassById(1201)->DefaultHierarchicalLinkClassId(), 2001);
    EXPECT_EQ(metaData->DatabaseMechanism("Admin"), nullptr);
  }
  std::ostringstream text;
  embedded::PrintDescription(embedded::DescribeDatabase(files, folder.Path("x.db")), text);
  EXPECT_NE(text.str().find("Class 1202 Part (PART): 1\n  1202_102  Ä-1  a.stp\n"), std::string::npos)
      << text.str();
  EXPECT_NE(text.str().find("  anna  10_100  role Designer  role Unlock\n"), std::string::npos);
}

TEST_F(ModelTest, OnlyADatabaseOfItsOwnIsOpened) {
  const embedded::HostOptions options = HostOptionsOf(*this, dialogs);
  EXPECT_EQ(ErrorNumberOf([&] { EmbeddedHost host(folder.Path("none.db"), options); }), 53);
  EXPECT_FALSE(folder.Exists("none.db"));
  folder.Write("text.db", std::string(5000, 'x'));
  EXPECT_NE(ErrorOf([&] { EmbeddedHost host(folder.Path("text.db"), options); }), "");
}

}  // namespace
}  // namespace tessel::test
