#include "config/deklarationen.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "config/settings_world.h"
#include "support/expect_error.h"

namespace tessel {
namespace {

using Lines = std::vector<std::string>;
using test::SettingsWorld;

SettingsWorld WorldOf(const std::string& text) {
  return SettingsWorld({.settings = {{"Initialization", text}}});
}

TEST(ReadConfiguration, WithoutKeysEveryValueTakesItsDefault) {
  SettingsWorld world;
  ASSERT_TRUE(world.declarations.ReadConfiguration(world.errors));
  const Configuration& values = world.declarations.configuration;
  EXPECT_EQ(values.ExchangeDirectory, "C:\\temp\\Exchange");
  EXPECT_EQ(values.LanguageFilePath, world.folder.Path("program"));
  EXPECT_EQ(values.DisplayAttribCustom2, "");
  EXPECT_EQ(values.i_ShowMailStruc, 2);
  EXPECT_TRUE(values.GenStrucFile);
  EXPECT_FALSE(values.UseServerMonitor);

  const Lines lines = world.trace.writer->Lines();
  const auto first = std::find(lines.begin(), lines.end(), "pciniAdminTool is not nothing");
  std::string traced;
  for (auto line = first; line != lines.end(); ++line) {
    if (line->find(": ") != std::string::npos) traced += *line + "|";
  }
  EXPECT_EQ(traced,
            "DisplayAttribute1: VRK_DESCRIPTION|DisplayAttribute2: VRK_ID|DisplayAttribCustom1: VRK_ID|"
            "DisplayAttribCustom2: |DisplayAttribContact1: VRK_ID|DisplayAttribContact2: CN_FIRST_NAME|"
            "DisplayAttribFoldStruc: VRK_DESCRIPTION|ExchangeDirectory: C:\\temp\\Exchange|"
            "TraceFilePath: C:\\temp|ExportPrefix: Export|LanguageFilePath: " +
                world.folder.Path("program") +
                "|SubExDir: SubDir|UserEmailAttrName: USER_EMAIL|StructureFileName: Kestrix_Structure.xml|"
                "DataFileName: Kestrix_Data.xml|lockInfo: Objekt geblockt|UnLockRole: Unlock|UseUrl: False|"
                "SMTPServer: |b_UsePartnerList: False|b_UseCustomForm: False|b_UseRootObjRel: True|"
                "b_UseCustomObjRel: True|b_UseContactPersObjRel: True|i_ShowMail: 1|i_ShowMailStruc: 2|"
                "i_ShowOdette: 1|i_ShowCustomSend: 1|i_ShowNoSend: 1|GenStrucFile: True|"
                "b_AllowMultiRecipientSelection: True|b_LinkAllToMainTransObj: True|UseServerMonitor: False|"
                "XMLStructureEncoding: iso-8859-1|b_PresetCopyAllBox: False|b_EnKeepSel: False|");
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "Get Admin ClassID"), 1);
}

TEST(ReadConfiguration, ValuesAreReadAfreshEachTime) {
  SettingsWorld world = WorldOf(
      "[Settings]\r\nUseServerMonitor=1\r\n[AvailableSendModi]\r\nMail=0\r\n"
      "[ini_xml]\r\nStructureFileName=x.xml\r\n[Path]\r\nTraceFile=D:\\trace\r\n");
  ASSERT_TRUE(world.declarations.ReadConfiguration(world.errors));
  EXPECT_TRUE(world.declarations.configuration.UseServerMonitor);
  EXPECT_EQ(world.declarations.configuration.i_ShowMail, 0);
  EXPECT_EQ(world.declarations.configuration.StructureFileName, "Kestrix_Structure.xml");
  EXPECT_EQ(world.declarations.startup.TracePath, "D:\\trace");

  world.Set({20, 11}, {{"VRKX_VALUE_LONG", "[AvailableSendModi]\r\nMail=2\r\n"}});
  ASSERT_TRUE(world.declarations.ReadConfiguration(world.errors));
  EXPECT_FALSE(world.declarations.configuration.UseServerMonitor);
  EXPECT_EQ(world.declarations.configuration.i_ShowMail, 2);
}

TEST(ReadConfiguration, AValueThatDoesNotConvertStopsTheStart) {
  struct Case {
    const char* text;
    int error;
    const char* description;
  };
  const Case cases[] = {
      {"[Settings]\r\nUseServerMonitor=yes\r\n", 13, "[Settings] UseServerMonitor: Type mismatch: \"yes\""},
      {"[Settings]\r\nUseServerMonitor=\r\n", 13, "[Settings] UseServerMonitor: Type mismatch: \"\""},
      {"[Settings]\r\nPresetCopyAllBox=True \r\n", 13,
       "[Settings] PresetCopyAllBox: Type mismatch: \"True \""},
      {"[AvailableSendModi]\r\nMail=one\r\n", 13, "[AvailableSendModi] Mail: Type mismatch: \"one\""},
      {"[AvailableSendModi]\r\nMail=40000\r\n", 6, "[AvailableSendModi] Mail: Overflow"}};
  for (const Case& each : cases) {
    SettingsWorld world = WorldOf(each.text + std::string("[Path]\r\nExportPrefix=Out\r\n"));
    world.folder.Write("program/error.Kestrix_GER", "e9020 Bad settings\r\n");
    world.declarations.configuration.b_EnKeepSel = true;
    EXPECT_FALSE(world.declarations.ReadConfiguration(world.errors)) << each.text;
    EXPECT_EQ(world.trace.writer->entries.back().text, "Stop on error: Could not initiate Variables!");
    EXPECT_EQ(world.trace.writer->entries.back().number, each.error) << each.text;
    EXPECT_EQ(world.trace.writer->entries.back().description, each.description);
    EXPECT_EQ(world.user.seen, Lines{"critical|Kestrix Error|Bad settings"});
    EXPECT_EQ(world.declarations.configuration.ExportPrefix, "Out");
    EXPECT_TRUE(world.declarations.configuration.b_EnKeepSel);  // read later, so it keeps its value
  }
}

TEST(ReadConfiguration, OwnFilesNeedNamesOfTheirOwn) {
  for (const char* names :
       {"StructurFileName=a.xml\r\nDataFileName=A.XML", "DataFileName=neutralformats.XML"}) {
    SettingsWorld world = WorldOf(std::string("[ini_xml]\r\n") + names + "\r\n");
    EXPECT_FALSE(world.declarations.ReadConfiguration(world.errors)) << names;
    EXPECT_EQ(world.trace.writer->entries.back().number, 5);
  }
  SettingsWorld world = WorldOf("[Path]\r\nLanguageFile=\r\n");
  world.folder.Write("program/error.Kestrix_GER", "e9020 Bad settings\r\n");
  EXPECT_EQ(world.errors.ErrorHandle("e9020"), "Bad settings");
  EXPECT_TRUE(world.declarations.ReadConfiguration(world.errors));
  EXPECT_EQ(world.errors.ErrorHandle("e9020"), "no Message found");  // an empty folder is none
}

TEST(ReadConfiguration, ClassesComeFromTheirMechanisms) {
  constexpr int kNone = -1;  // the database does not know the mechanism
  struct Case {
    const char* what;
    int documents, transmittals, companies, contacts;
    bool done;
    std::size_t boxes;
    const char* traced;
  };
  const Case cases[] = {
      {"one each", 1, 1, 1, 1, true, 0, " ... there is one supported class. Use this one for transmittals"},
      {"three transmittals", 2, 3, 1, 1, true, 0,
       " ... there are '3' supported classes. Use the first one for transmittals"},
      {"two contacts", 2, 1, 1, 2, true, 0,
       " ... there are '2' supported classes. Use the first one for contact person"},
      {"no documents", 0, 1, 1, 1, false, 0,
       "... no supported classes for the 'Supplier exchange document behavior' has been found"},
      {"documents unknown", kNone, 1, 1, 1, false, 0,
       "... no supported classes for the 'Supplier exchange document behavior' has been found"},
      {"no transmittals", 1, 0, 1, 1, false, 1,
       "... no supported class(es) for 'transmittals behavior' has been found"},
      {"transmittals unknown", 1, kNone, 1, 1, false, 0,
       "... no supported class(es) for 'transmittals behavior' has been found"},
      {"no companies", 1, 1, 0, 1, false, 1,
       "... no supported class(es) for 'company behavior' has been found"},
      {"companies unknown", 1, 1, kNone, 1, true, 0,
       "... no supported class(es) for 'company behavior' has been found"},
      {"contacts unknown", 1, 1, 1, kNone, true, 0,
       "... no supported class(es) for 'contact person behavior' has been found"},
  };
  for (const Case& each : cases) {
    test::SettingsWorldOptions options;
    options.mechanisms.clear();
    const std::pair<const char*, int> counts[] = {{"VRKX_DX_SUPPLIER_EXCH_DOC", each.documents},
                                                  {"VRKX_DX_TRANSMITTAL", each.transmittals},
                                                  {"VRKX_DX_SUPPLIER_COMPANY", each.companies},
                                                  {"VRKX_DX_SUPPLIER_CONT_PERSON", each.contacts}};
    for (const auto& [mechanism, count] : counts) {
      if (count != kNone) options.mechanisms.emplace_back(mechanism, count);
    }
    SettingsWorld world(options);
    EXPECT_EQ(world.declarations.ReadConfiguration(world.errors), each.done) << each.what;
    EXPECT_EQ(world.user.seen.size(), each.boxes) << each.what;
    EXPECT_TRUE(world.Traced(each.traced)) << each.what;
    if (each.transmittals > 0 && each.documents > 0) {
      EXPECT_EQ(world.declarations.startup.TransmittalClassID, 200);
    }
  }
}

TEST(ReadConfiguration, FolderStructuresMatterInTheirModeAlone) {
  struct Case {
    bool mode;
    bool known;
    int count;
    bool done;
    ClassId classId;
  };
  const Case cases[] = {{false, true, 0, true, 0},
                        {true, true, 0, false, 0},
                        {true, false, 0, true, 0},
                        {true, true, 2, true, 500},
                        {false, true, 2, true, 0}};
  for (const Case& each : cases) {
    test::SettingsWorldOptions options;
    if (each.known) options.mechanisms.emplace_back("VRKX_DX_FOLDER_STRUCTURE", each.count);
    SettingsWorld world(options);
    world.declarations.startup.FolderStructureMode = each.mode;
    EXPECT_EQ(world.declarations.ReadConfiguration(world.errors), each.done);
    EXPECT_EQ(world.declarations.startup.FolderStructureClassID, each.classId);
    EXPECT_EQ(world.user.seen.size(), 0U);
  }
}

TEST(StartUpSteps, TheHostsAnswersAreKept) {
  SettingsWorld world;
  Deklarationen& declarations = world.declarations;
  EXPECT_TRUE(declarations.SetSessionGlobal(world.session));
  EXPECT_TRUE(declarations.SetDefaultBehavior());
  EXPECT_TRUE(declarations.SetIconDirectory());
  EXPECT_EQ(
      world.trace.writer->Lines(),
      (Lines{"Set PcSession as global variable", "  session has been set globally with result: True",
             "set default Behavior for Pelicore operations", "  Behavior has been set with result: True",
             "Set Icon directory", "  Icon directory has been set with result: /icons"}));
  for (int number = 1; number <= 4; ++number) {
    EXPECT_EQ(declarations.startup.DefaultBehavior->Get(number), number == 1 ? 2 : 0);
  }
}

TEST(StartUpSteps, WithoutASessionTheyFailQuietly) {
  SettingsWorld world;
  Deklarationen declarations(world.trace.trace, world.user, "/program", nullptr);
  EXPECT_FALSE(declarations.SetDefaultBehavior());
  EXPECT_FALSE(declarations.SetIconDirectory());
  EXPECT_TRUE(world.Traced("  Behavior has been set with result: False"));
  EXPECT_EQ(declarations.Folder(), "/program");
  EXPECT_EQ(test::ErrorNumberOf([&] { (void)declarations.Language(); }), 91);
}

TEST(ConfigurationReader, SectionsComeFromTheSettingsFoundOrGiven) {
  SettingsWorld world(
      {.settings = {{"Mapping", "[M]\r\nx\r\n"}, {"Initialization", "[M]\r\na=1\r\n#c\r\n\r\nb==c\r\n"}}});
  AdminConfigurationReader reader(world.trace.trace);
  EXPECT_EQ(reader.SectionEntries(world.session, "M"), (Lines{"a=1", "b==c"}));
  const PcObjectPtr mapping = world.Object({20, 11});
  EXPECT_EQ(reader.SectionLines(world.session, "M", {.object = mapping}), Lines{"x"});
  EXPECT_EQ(reader.ReadValue(world.session, "M", "x", "none", {.setName = "Mapping"}), "none");
}

}  // namespace
}  // namespace tessel
