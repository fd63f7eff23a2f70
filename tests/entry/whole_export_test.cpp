#include <gtest/gtest.h>

#include "embedded/session/failures.h"
#include "support/wizard_script.h"

namespace tessel::test {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* kFinal = "exchange/Export_anna_20240131_154502_New/";

std::string Content(const std::string& key, const std::string& instance, const std::string& access,
                    const std::string& description, const std::string& id, const std::string& file,
                    bool root) {
  const auto separator = key.find('_');
  return "<_STOBJECT_ Identifier=\"" + key + "\" Instance=\"" + instance + "\" ACCESS_AUTHORIZATION=\"" +
         access + "\" FIRST_DESCRIPTION=\"" + description + "\" SECOND_DESCRIPTION=\"" + id +
         "\" ORIG_FILE_NAME=\"" + file + "\" FILE_EXTENSION=\"" + file.substr(file.rfind('.') + 1) +
         "\" IS_DRAXA_DOC=\"0\" STRUCTURE_LEVEL=\"" + (root ? "0" : "2") + "\" LINK_NAME=\"" +
         (root ? "" : "NoName") + "\" LINK_DIRECTION=\"" + (root ? "0" : "-1") +
         "\" RENAME_FILE_NAME=\"\" PELICORE_CLASS_ID=\"" + key.substr(0, separator) +
         "\" PELICORE_OBJ_ID=\"" + key.substr(separator + 1) + "\" STATUS=\"3\" REVISION=\"A\"><![CDATA[" +
         description + "]]>";
}

std::string Node(const std::string& name, const std::string& key, const std::string& instance,
                 const std::string& rest, const std::string& value) {
  return "<" + name + " Identifier=\"" + key + "\" Instance=\"" + instance + "\"" + rest + "><![CDATA[" +
         value + "]]>";
}

TEST(WholeExport, AssemblyAndPartGoOutWithAllThatDescribesThem) {
  World world;
  world.Set(World::kGearbox, {{"VRKX_DX_FIRST_LOCK_USE", true}});
  world.Select({World::kGearbox, World::kShaft});
  GoBehindSendData(world, kNoSend);
  EXPECT_EQ(world.Export(), 0);

  const std::string link = " LINK_NAME=\"Product Structure\" LINK_DIRECTION=\"1\"";
  const std::string expected =
      "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><DataEx_Structure Creation_Date=\"20240131_154502\" "
      "Created_by=\"anna\" direction=\"Export\"><Content_List>" +
      Content("1201_1", "0", "Read/Write", "Gearbox", "A-1", "gearbox.stp", true) +
      Content("1202_2", "1", "ReadOnly", "Shaft", "P-2", "shaft.stp", false) + "</_STOBJECT_></_STOBJECT_>" +
      Content("1202_2", "0", "ReadOnly", "Shaft", "P-2", "shaft.stp", true) +
      "</_STOBJECT_></Content_List><Hierarchical_Structure>" +
      Node("_H_STOBJECT_", "1201_1", "0", "", "Gearbox") + Node("_H_STOBJECT_", "1202_2", "1", "", "Shaft") +
      "</_H_STOBJECT_></_H_STOBJECT_>" + Node("_H_STOBJECT_", "1202_2", "0", "", "Shaft") +
      "</_H_STOBJECT_></Hierarchical_Structure><Dependency_List>" +
      Node("_D_STOBJECT_", "1201_1", "0", link, "Gearbox") +
      Node("_D_STOBJECT_", "1202_2", "0", "", "Shaft") +
      "</_D_STOBJECT_></_D_STOBJECT_></Dependency_List></DataEx_Structure>";
  EXPECT_EQ(world.folder.Read(std::string(kFinal) + "Kestrix_Structure.xml"), expected);
  EXPECT_EQ(
      world.folder.Tree("exchange"),
      (Lines{"Export_anna_20240131_154502_New/", "Export_anna_20240131_154502_New/Kestrix_Data.xml",
             "Export_anna_20240131_154502_New/Kestrix_Structure.xml",
             "Export_anna_20240131_154502_New/gearbox.stp", "Export_anna_20240131_154502_New/shaft.stp"}));

  // The mark for writing is used up.
  EXPECT_EQ(world.Object(World::kGearbox)->GetValue("VRKX_DX_FIRST_LOCK_USE"), Value(false));
}

// What stands in the way, and the trace line that tells of it.
struct Obstacle {
  const char* name;
  std::function<void(World&)> put;
  std::string trace;
};

TEST(WholeExport, WhatCannotBeCopiedLeavesNothingBehind) {
  const Obstacle obstacles[] = {
      {"a name that leaves the directory",
       [](World& world) {
         world.Set(World::kBolt, {{"CAD_REF_FILE_NAME", "../../escaped.stp"}});
       },
       "Result of CopyFile Window (1=ok; 2=abord): 0"},
      {"a Windows path for a name",
       [](World& world) {
         world.Set(World::kBolt, {{"CAD_REF_FILE_NAME", "C:\\autoexec.bat"}});
       },
       "Result of CopyFile Window (1=ok; 2=abord): 0"},
      {"a file that is gone from the vault",
       [](World& world) { world.platform.files.DeleteFolder(world.folder.Path("vault")); },
       "Result of CopyFile Window (1=ok; 2=abord): 0"},
      {"the directory's place is taken by a file",
       [](World& world) {
         world.platform.files.DeleteFolder(world.ExchangePath());
         world.folder.Write("exchange", "a file");
       },
       "Fehler beim Erzeugen des temp. Austauschverzeichnisses (CreateNewExDir/CommonXFunctions"},
      {"the directory exists already",
       [](World& world) { world.folder.MakeFolder("exchange/@@_anna_20240131_154502"); },
       "Fehler beim Erzeugen des temp. Austauschverzeichnisses (CreateNewExDir/CommonXFunctions"},
  };
  for (const Obstacle& obstacle : obstacles) {
    SCOPED_TRACE(obstacle.name);
    World world;
    obstacle.put(world);
    world.Select({World::kBolt});
    GoToSendData(world, kNoSend);
    CopyAll(world);
    world.driver.Click("Command3");
    EXPECT_EQ(world.Export(), 1);
    EXPECT_TRUE(world.Traced(obstacle.trace));
    EXPECT_FALSE(world.platform.files.FileExists(world.folder.Path("escaped.stp")));
    EXPECT_FALSE(world.platform.files.FolderExists(world.folder.Path(kFinal)));
    EXPECT_EQ(world.program.exportOutcome.directories.size(), 0U);
  }
}

TEST(WholeExport, AHostThatFailsEndsInTheFailureOfTheStep) {
  using embedded::HostCall;
  struct Failure {
    embedded::PlannedFailure planned;
    bool copied;  // whether the documents still get to the dispatch
    const char* trace;
  };
  const Failure failures[] = {
      {{HostCall::kOperation, 1202, 1, 75, true}, false, "Result of CopyFile Window (1=ok; 2=abord): 0"},
      {{HostCall::kRead, 1202, 4, 99, true}, false, "Error during creation of structure file"},
      {{HostCall::kInsert, 900, 1, 19, false}, true, "inserting new data exchange object does not succeed"},
      {{HostCall::kInsert, 900, 1, 19, true},
       true,
       "Fehler beim Anlegen des Datenaustauschobjekts (CreateExchangeObject / Kestrix_ExObj)"},
      {{HostCall::kLink, 2000, 1, 19, true},
       true,
       "Fehler beim Anlegen des Datenaustauschobjekts (CreateExchangeObject / Kestrix_ExObj)"},
  };
  for (const Failure& failure : failures) {
    SCOPED_TRACE(failure.trace);
    World world;
    world.Select({World::kBolt});
    GoToSendData(world, kNoSend);
    world.driver.Check("Check1");
    world.driver.Do([&](UserActions& user) {
      world.host.FailNext(failure.planned);
      EXPECT_EQ(user.Click("Command1"), "");
      EXPECT_EQ(world.ControlOf<TreeList>("Tessel_2", "TreeView2").CheckedCount(), failure.copied ? 1 : 0);
    });
    world.driver.Click(failure.copied ? "Command1" : "Command3");
    EXPECT_EQ(world.Export(), failure.copied ? 0 : 1);
    EXPECT_TRUE(world.Traced(failure.trace));
    EXPECT_EQ(world.ExchangeFolders().size(), failure.copied ? 1U : 0U);
  }
}

TEST(WholeExport, ValuesThatTheEncodingLacksSurvive) {
  World world(SettingLines{{"Settings", {"XMLStructureEncoding=us-ascii"}}});
  world.Set(World::kBolt, {{"VRK_DESCRIPTION", "a]]>b \"q\" <&> \xC3\x9C \x01 end"}});
  world.Select({World::kBolt});
  GoBehindSendData(world, kNoSend);
  EXPECT_EQ(world.Export(), 0);
  const std::string file = world.folder.Read(std::string(kFinal) + "Kestrix_Structure.xml");
  EXPECT_NE(file.find("<![CDATA[a]]]]><![CDATA[>b \"q\" <&> ]]>&#220;<![CDATA[ ? end]]>"), std::string::npos)
      << file;
  EXPECT_NE(file.find("FIRST_DESCRIPTION=\"a]]&gt;b &quot;q&quot; &lt;&amp;&gt; &#220; ? end\""),
            std::string::npos)
      << file;
}

}  // namespace
}  // namespace tessel::test
