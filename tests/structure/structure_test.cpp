// The structure file on a host of a few documents.
#include "structure/structure.h"

#include <gtest/gtest.h>

#include "structure/structure_world.h"
#include "structure/xml/xml.h"

namespace tessel {
namespace {

using test::StructureWorld;

constexpr ClassId kAssembly = 1201;
constexpr ClassId kPart = 1202;
constexpr ClassId kUses = 500;
constexpr ClassId kRefers = 501;
constexpr ObjectKey kA{kAssembly, 1};
constexpr ObjectKey kB{kPart, 2};
constexpr ObjectKey kC{kPart, 3};
constexpr ObjectKey kD{kAssembly, 4};

// Objects as maps of values.
class Documents : public test::ObjectSource {
 public:
  void Add(const ObjectKey& key, const std::string& description, const std::string& file) {
    rows[key] = {{"VRK_DESCRIPTION", description},
                 {"VRK_ID", Value()},
                 {"CAD_REF_FILE_NAME", file},
                 {"STATE", "Released"},
                 {"REVISION", "A"},
                 {"VRKX_DX_FIRST_LOCK_USE", Value()}};
  }
  [[nodiscard]] bool Has(const ObjectKey& key) const override { return rows.contains(key); }
  [[nodiscard]] Value Get(const ObjectKey& key, std::string_view name) const override {
    const auto& values = rows.at(key);
    const auto found = values.find(std::string(name));
    if (found == values.end()) throw HostError("no attribute " + std::string(name));
    return found->second;
  }
  void Set(const ObjectKey& key, std::string_view name, const Value& value) override {
    rows[key][std::string(name)] = value;
  }
  std::map<ObjectKey, std::map<std::string, Value>> rows;
};

// Four documents, two of them assemblies, and the structure document of a selection.
struct DocumentWorld {
  DocumentWorld() {
    documents.Add(kA, "Assembly A", "a.1.asm");
    documents.Add(kB, "Part B", "b");
    documents.Add(kC, "Part C", "c.prt");
    documents.Add(kD, "Assembly D", "d.asm");
    auto& metaData = *world.session->metaData;
    metaData.mechanisms = {"VRK_DRAXA_DOCUMENT", "Vrk_Draxa_Part", "Vrk_Other"};
    AddClass(kAssembly, "Assembly", {"VRK_DRAXA_DOCUMENT", "Vrk_Other"});
    AddClass(kPart, "Part", {"VRK_DRAXA_DOCUMENT", "Vrk_Draxa_Part"});
    AddClass(kUses, "Uses", {});
    AddClass(kRefers, "Refers", {});
  }

  void AddClass(ClassId id, const char* name, std::vector<std::string> mechanisms) {
    world.session->metaData->classes[id] =
        std::make_shared<test::FakeClass>(id, name, kUses, std::move(mechanisms));
  }
  void Start(const std::vector<ObjectKey>& selection) {
    CommonXFunctions::StartStructureDocument(world.services, world.state);
    for (const ObjectKey& key : selection) {
      const auto object = world.session->ObjectStore()->Object(key);
      CommonXFunctions::AddSelectedObject(world.services, world.state, *object);
    }
  }
  // Lists of other columns or rows than a copy makes.
  using Rows = std::vector<std::vector<Value>>;
  void SetFiles(const std::vector<std::string>& columns, const Rows& rows) {
    world.exchange.copied.SetFiles(std::make_shared<test::FakeList>(columns, rows));
  }
  void SetLinks(const std::vector<std::string>& columns, const Rows& rows) {
    world.exchange.copied.SetLinks(std::make_shared<test::FakeList>(columns, rows));
  }
  std::string Saved() {
    XML::SaveXMLFile(*world.state.document, world.platform.files, world.platform.encodings, trace.trace,
                     folder.Path("out.xml"));
    return folder.Read("out.xml");
  }
  // What stands in the element of a list.
  std::string Saved(const std::string& list) {
    const std::string text = Saved();
    const std::size_t start = text.find("<" + list + ">") + list.size() + 2;
    return text.substr(start, text.find("</" + list + ">") - start);
  }
  // The nodes below an element as "1(2,3(4))": object ids only.
  static std::string Outline(XmlNode element) {
    std::string text;
    for (XmlNode child = element.FirstChild(); child; child = child.NextSibling()) {
      if (child.Type() != XmlNodeType::kElement) continue;
      const std::string below = Outline(child);
      text += (text.empty() ? "" : ",") +
              std::to_string(ParseObjectKey(child.Attribute("Identifier"), '_').objectId);
      if (!below.empty()) text += "(" + below + ")";
    }
    return text;
  }
  [[nodiscard]] bool Traced(const std::string& start) const {
    const auto lines = trace.writer->Lines();
    return std::any_of(lines.begin(), lines.end(),
                       [&](const std::string& line) { return line.starts_with(start); });
  }

  Documents documents;
  StructureWorld world{documents};
  const test::TemporaryFolder& folder = world.folder;
  test::RecordingTrace& trace = world.trace;
};

class StructureTest : public testing::Test, public DocumentWorld {};

TEST_F(StructureTest, BuildsTheWholeFile) {
  Start({kA});
  documents.rows[kA]["VRKX_DX_FIRST_LOCK_USE"] = true;
  const auto files =
      world.SetCopy({{kB}, {kA}, {kC, 5}}, {{kUses, kA, kB, 1}, {kRefers, kB, kA, -1}, {kUses, kA, kC, 1}});
  files->dumpFails = true;
  ASSERT_TRUE(world.Create("1201_1"));
  EXPECT_EQ(
      Saved(),
      "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>"
      "<DataEx_Structure Creation_Date=\"20240131_154502\" Created_by=\"user1\" direction=\"Export\">"
      "<Content_List>"
      "<_STOBJECT_ Identifier=\"1201_1\" Instance=\"0\" ACCESS_AUTHORIZATION=\"Read/Write\""
      " FIRST_DESCRIPTION=\"Assembly A\" SECOND_DESCRIPTION=\"\" ORIG_FILE_NAME=\"a.1.asm\" "
      "FILE_EXTENSION=\"asm\""
      " IS_DRAXA_DOC=\"0\" STRUCTURE_LEVEL=\"0\" LINK_NAME=\"\" LINK_DIRECTION=\"0\" RENAME_FILE_NAME=\"\""
      " PELICORE_CLASS_ID=\"1201\" PELICORE_OBJ_ID=\"1\" STATUS=\"Released\" "
      "REVISION=\"A\"><![CDATA[Assembly A]]>"
      "<_STOBJECT_ Identifier=\"1202_2\" Instance=\"0\" ACCESS_AUTHORIZATION=\"ReadOnly\""
      " FIRST_DESCRIPTION=\"Part B\" SECOND_DESCRIPTION=\"\" ORIG_FILE_NAME=\"b\" FILE_EXTENSION=\"b\""
      " IS_DRAXA_DOC=\"1\" STRUCTURE_LEVEL=\"2\" LINK_NAME=\"NoName\" LINK_DIRECTION=\"-1\" "
      "RENAME_FILE_NAME=\"\""
      " PELICORE_CLASS_ID=\"1202\" PELICORE_OBJ_ID=\"2\" STATUS=\"Released\" REVISION=\"A\"><![CDATA[Part "
      "B]]>"
      "</_STOBJECT_></_STOBJECT_></Content_List>"
      "<Hierarchical_Structure><_H_STOBJECT_ Identifier=\"1201_1\" Instance=\"0\"><![CDATA[Assembly A]]>"
      "<_H_STOBJECT_ Identifier=\"1202_2\" Instance=\"0\"><![CDATA[Part B]]></_H_STOBJECT_></_H_STOBJECT_>"
      "</Hierarchical_Structure><Dependency_List>"
      "<_D_STOBJECT_ Identifier=\"1201_1\" Instance=\"0\" LINK_NAME=\"Uses\" LINK_DIRECTION=\"1\">"
      "<![CDATA[Assembly A]]><_D_STOBJECT_ Identifier=\"1202_2\" Instance=\"0\"><![CDATA[Part "
      "B]]></_D_STOBJECT_>"
      "</_D_STOBJECT_>"
      "<_D_STOBJECT_ Identifier=\"1202_2\" Instance=\"1\" LINK_NAME=\"Refers\" LINK_DIRECTION=\"-1\">"
      "<![CDATA[Part B]]><_D_STOBJECT_ Identifier=\"1201_1\" Instance=\"1\"><![CDATA[Assembly "
      "A]]></_D_STOBJECT_>"
      "</_D_STOBJECT_></Dependency_List></DataEx_Structure>");
  EXPECT_EQ(files->GetValue("ROOT_OBJ", 1), Value(1));
  EXPECT_EQ(files->dumps, std::vector<std::string>{"Test C:\\temp\\RecFile.txt"});
  EXPECT_EQ(world.ExportedRows(), 3);
  EXPECT_EQ(world.state.defaultHierarchicalLinkClassName, "Uses");
}

TEST_F(StructureTest, TheFirstStructureUsesUpTheLock) {
  documents.rows[kA]["VRKX_DX_FIRST_LOCK_USE"] = true;
  for (const char* access : {"Read/Write", "ReadOnly"}) {
    Start({kA});
    world.SetCopy({{kA}}, {});
    ASSERT_TRUE(world.Create("1201_1"));
    EXPECT_EQ(world.state.currentRootNode.Attribute("ACCESS_AUTHORIZATION"), access);
  }
  EXPECT_EQ(documents.rows[kA]["VRKX_DX_FIRST_LOCK_USE"], Value(false));
  documents.rows[kA]["VRKX_DX_FIRST_LOCK_USE"] = true;
  world.session->updateCode = 17;
  Start({kA});
  EXPECT_TRUE(world.Create("1201_1"));
  EXPECT_TRUE(Traced("object not updated, error code: 17"));
}

TEST_F(StructureTest, SharedPartsAreNumberedAcrossRoots) {
  world.declarations.configuration.GenStrucFile = false;
  Start({kA, kD});
  world.SetCopy({{kA}, {kC}}, {{kUses, kA, kC, 1}});
  ASSERT_TRUE(world.Create("1201_1"));
  world.SetCopy({{kC}, {kD}}, {});
  ASSERT_TRUE(world.Create("1201_4"));
  EXPECT_EQ(Outline(world.state.contentList), "1(3),4(3)");
  const auto parts = world.state.document->ElementsByTagName("_STOBJECT_");
  EXPECT_EQ(parts[1].Attribute("Instance") + parts[3].Attribute("Instance"), "01");
  EXPECT_TRUE(world.state.document->ElementsByTagName("Dependency_List").empty());
  EXPECT_EQ(world.ExportedRows(), 4);
  // Rows that stand in the record keep their marks when the host gives no list for the next copy.
  EXPECT_EQ(CommonXFunctions::AllCopiedFiles(world.services, world.exchange, nullptr, nullptr), 0);
  ASSERT_TRUE(world.Create("1201_4"));
  EXPECT_EQ(world.ExportedRows(), 6);
  const auto& lists = world.exchange.copied.Exported();
  EXPECT_EQ(lists[0]->GetValue("ROOT_OBJ", 0), Value(1));
  EXPECT_EQ(lists[1]->GetValue("ROOT_OBJ", 1), Value(1));
  EXPECT_NE(lists[1], lists[2]);
}

TEST_F(StructureTest, LinksQualifyByTheCopiedRowsOfBothEnds) {
  struct Case {
    const char* what;
    std::vector<StructureWorld::File> files;
    std::vector<CopiedLink> links;
    const char* hierarchy;
    const char* dependencies;
  };
  const Case cases[] = {
      {"plain", {{kA}, {kB}}, {{kUses, kA, kB, 1}}, "1(2)", "1(2)"},
      {"other link class", {{kA}, {kB}}, {{kRefers, kA, kB, 1}}, "1", "1(2)"},
      {"end not copied", {{kA}, {kB, 5}}, {{kUses, kA, kB, 1}}, "1", ""},
      {"end copied twice", {{kA}, {kB}, {kB}}, {{kUses, kA, kB, 1}}, "1", ""},
      {"end copied twice, other not", {{kA, 5}, {kB}, {kB}}, {{kUses, kA, kB, 1}}, "1(2)", "1(2)"},
      {"to itself, copied once", {{kA}}, {{kUses, kA, kA, 1}}, "1", ""},
      {"to itself, copied twice", {{kA}, {kA}}, {{kUses, kA, kA, 1}}, "1(1)", "1(1)"},
      {"shared part",
       {{kA}, {kD}, {kB}},
       {{kUses, kA, kB, 1}, {kUses, kA, kD, 1}, {kUses, kD, kB, 1}},
       "1(2,4(2))",
       "1(2),1(4),4(2)"},
      {"cycle",
       {{kA}, {kD}, {kB}},
       {{kUses, kA, kD, 1}, {kUses, kD, kA, 1}, {kUses, kD, kB, 1}},
       "1(4(1,2))",
       "1(4),4(1),4(2)"},
      {"link twice", {{kA}, {kB}}, {{kUses, kA, kB, 1}, {kUses, kA, kB, 1}}, "1(2,2)", "1(2),1(2)"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.what);
    Start({kA});
    world.SetCopy(row.files, row.links);
    EXPECT_TRUE(world.Create("1201_1"));
    EXPECT_EQ(Outline(world.state.hierarchicalStructure), row.hierarchy);
    EXPECT_EQ(Outline(world.state.dependencyList), row.dependencies);
  }
}

TEST_F(StructureTest, EndsInTheFailureThatTheTraceTells) {
  struct Case {
    const char* what;
    const char* tag;
    std::function<void(DocumentWorld&)> spoil;
    const char* trace;
    int exportRows;  // -1: no list
  };
  const Case cases[] = {
      {"no node", "1201_9", [](DocumentWorld&) {}, "No node of the selected object", -1},
      {"object gone", "1201_1", [](DocumentWorld& t) { t.documents.rows.erase(kA); },
       "Fehlerabbruch im Modul (CreateStructure/CommonXFunctions) [91", -1},
      {"no list", "1201_1", [](DocumentWorld& t) { t.world.exchange.copied.SetFiles(nullptr); },
       "CopiedFilesRec is nothing", -1},
      {"root not copied", "1201_1", [](DocumentWorld& t) { t.world.SetCopy({{kB}}, {}); },
       "Error: Could not find selected root object in record list created during copy file operation!", 1},
      {"no ROOT_OBJ", "1201_1",
       [](DocumentWorld& t) {
         t.SetFiles({"CLASS_ID", "OBJECT_ID"}, {{kAssembly, 1}});
       },
       "Fehlerabbruch im Modul (CreateStructure/CommonXFunctions) [440 The record list has no column "
       "\"ROOT_OBJ\"",
       -1},
      {"attribute missing", "1201_1", [](DocumentWorld& t) { t.documents.rows[kA].erase("STATE"); },
       "Fehlerabbruch im Modul (CreateStructure/CommonXFunctions) [440 no attribute STATE", -1},
      {"part gone", "1201_1", [](DocumentWorld& t) { t.documents.rows.erase(kB); },
       "Fehlerabbruch im Modul (BuildContentList/CommonXFunctions) [91 Object variable not set: object "
       "1202_2",
       2},
      {"Null row", "1201_1",
       [](DocumentWorld& t) {
         t.SetFiles(StructureWorld::kFileColumns, {{kAssembly, 1, 6, 0}, {}});
       },
       "Fehlerabbruch im Modul (BuildContentList/CommonXFunctions) [94", 2},
      {"link class unknown", "1201_1",
       [](DocumentWorld& t) { t.world.session->metaData->classes.erase(kRefers); },
       "Fehlerabbruch im Modul (BuildHierarchicalStructure/CommonXFunctions) [91 Object variable not set: "
       "class 501",
       2},
      {"empty list", "1201_1", [](DocumentWorld& t) { t.SetFiles({}, {}); },
       "Error: Could not find selected root object in record list created during copy file operation!", 0},
      {"links without columns", "1201_1", [](DocumentWorld& t) { t.SetLinks({"CLASS_ID"}, {{kUses}}); },
       "Fehlerabbruch im Modul (BuildHierarchicalStructure/CommonXFunctions) [440", 2},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.what);
    DocumentWorld fresh;
    fresh.Start({kA});
    fresh.world.SetCopy({{kA}, {kB}}, {{kUses, kA, kB, 1}, {kRefers, kA, kB, 1}});
    row.spoil(fresh);
    EXPECT_FALSE(fresh.world.Create(row.tag));
    EXPECT_TRUE(fresh.Traced(row.trace)) << testing::PrintToString(fresh.trace.writer->Lines());
    EXPECT_EQ(fresh.world.ExportedRows(), row.exportRows);
  }
}

TEST_F(StructureTest, AnUnreadableLinkEndsItsListWhereItStands) {
  const Value none;
  const auto setLinks = [&](const std::vector<Value>& unreadable) {
    world.SetCopy({{kA}, {kB}, {kC}}, {});
    SetLinks(StructureWorld::kLinkColumns,
             {{kUses, kAssembly, 1, kPart, 2, 1}, unreadable, {kUses, kAssembly, 1, kPart, 3, 1}});
  };
  Start({kA});
  setLinks({kUses, none, none, kPart, 2, 1});
  EXPECT_FALSE(world.Create("1201_1"));
  EXPECT_EQ(Outline(world.state.hierarchicalStructure), "1(2)");

  // Without a say in the hierarchy of the root, the row breaks off the dependencies alone.
  Start({kA});
  setLinks({kUses, kPart, 9, kPart, 2, none});
  EXPECT_FALSE(world.Create("1201_1"));
  EXPECT_EQ(Outline(world.state.hierarchicalStructure), "1(2,3)");
  EXPECT_EQ(Outline(world.state.dependencyList), "1(2)");

  Start({kA});
  SetLinks({}, {});
  EXPECT_TRUE(world.Create("1201_1"));
}

TEST_F(StructureTest, WithoutDisplayAttributesTheDescriptionsAreEmpty) {
  world.declarations.configuration.DisplayAttribute1.clear();
  world.declarations.configuration.DisplayAttribute2.clear();
  Start({kA});
  EXPECT_TRUE(Traced("!! NODE NAME (DESCRIPTION1: '') IS EMPTY FOR OBJECT: '1201_1' !!!"));
  world.SetCopy({{kA}, {kB}}, {});
  ASSERT_TRUE(world.Create("1201_1"));
  EXPECT_NE(Saved("Content_List").find("FIRST_DESCRIPTION=\"\" SECOND_DESCRIPTION=\"\" ORIG_FILE_NAME=\"a"),
            std::string::npos)
      << Saved("Content_List");
}

TEST_F(StructureTest, TracesAnEmptyNameAndKeepsOddValues) {
  documents.Add(kA, "", "]]>\u20AC\".\x01");
  Start({kA});
  EXPECT_TRUE(Traced("!! NODE NAME (DESCRIPTION1: 'VRK_DESCRIPTION') IS EMPTY FOR OBJECT: '1201_1' !!!"));
  world.SetCopy({{kA}}, {});
  ASSERT_TRUE(world.Create("1201_1"));
  EXPECT_NE(Saved("Content_List").find("ORIG_FILE_NAME=\"]]&gt;&#8364;&quot;.?\" FILE_EXTENSION=\"?\""),
            std::string::npos);
}

TEST_F(StructureTest, FollowsAChainOfAnyDepthAndReadsEachObjectOnce) {
  constexpr int kLength = 50000;
  std::vector<StructureWorld::File> files;
  std::vector<CopiedLink> links;
  for (ObjectId id = 1; id <= kLength; ++id) {
    documents.Add({kPart, id}, "x", "x.prt");
    files.push_back({{kPart, id}});
    if (id > 1) links.push_back({kUses, {kPart, id - 1}, {kPart, id}, 1});
  }
  trace.trace = Trace(nullptr);
  Start({{kPart, 1}});
  world.session->objectsRead = 0;
  world.SetCopy(files, links);
  ASSERT_TRUE(world.Create("1202_1"));
  EXPECT_EQ(world.session->objectsRead, kLength);
  EXPECT_EQ(world.state.document->ElementsByTagName("_H_STOBJECT_").size(), std::size_t{kLength});
}

}  // namespace
}  // namespace tessel
