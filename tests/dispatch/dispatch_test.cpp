#include "dispatch/dispatch.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>

#include "dispatch/recipients.h"
#include "dispatch/recovery.h"
#include "selection/start_up.h"
#include "structure/xml/dx_xml.h"
#include "structure/xml/xml.h"
#include "support/export_world.h"
#include "support/failing_files.h"

namespace tessel {
namespace {

using Lines = std::vector<std::string>;
using test::SettingLines;

constexpr const char* kName = "@@_anna_20240131_154502";
constexpr const char* kDispatchError = "Fehler beim Aufbauen der XML Dateien (Command1_Click/Tessel_4)";

class RecordingValues : public AdditionalValues {
 public:
  RecordingValues(Lines& calls, const std::function<void()>& meanwhile)
      : calls_(calls), meanwhile_(meanwhile) {}
  int Edit(const AdditionalValuesRequest&) override { return 0; }
  int Apply(const AdditionalValuesRequest& request) override {
    calls_.push_back(ObjectKeyText(request.customer, '_') + " " + ObjectKeyText(request.contact, '_') + " " +
                     request.directory.substr(request.directory.rfind('/') + 1) +
                     (request.traceWriter ? "" : " no trace"));
    if (meanwhile_) meanwhile_();
    return 1;
  }

 private:
  Lines& calls_;
  const std::function<void()>& meanwhile_;
};

// Elements of a data file that differ from test to test.
struct Expected {
  int sendMode = 5;
  std::string recipient;
  std::string mail = {};
  std::string object = {};
  std::string folderStructure = {};
  std::string custom = {};
};

std::string DataFile(const Expected& expected) {
  return "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><DataEx_Datas>20240131_154502_anna<Protocol/>"
         "<UserSelected_Send_Mode>" +
         std::to_string(expected.sendMode) + "</UserSelected_Send_Mode>" + expected.recipient +
         expected.mail + "<DataExchangeClassID>900</DataExchangeClassID><DataExchangeObjID>" +
         expected.object +
         "</DataExchangeObjID><DataExObj_StatusAttrName>VRKX_DX_STATUS_INFO</DataExObj_StatusAttrName>"
         "<ExImpAttrName>VRKX_DX_EXCHANGE_TYPE</ExImpAttrName>"
         "<ProtocolAttrName>VRKX_DX_EXCH_PROTOCOL</ProtocolAttrName>"
         "<URLAttrName>VRKX_DX_EXCHANGE_ROOT_DIR</URLAttrName>"
         "<StructureFileName>Kestrix_Structure.xml</StructureFileName><SubExDir>SubDir</SubExDir>"
         "<DBAlias>WORLD</DBAlias><ZipFileName>Kestrix.zip</ZipFileName>"
         "<ContinueStatusAttr>VRKX_DX_PROCESS_PHASE</ContinueStatusAttr>" +
         expected.folderStructure +
         "<FolderStructureNameAttr>VRKX_DX_TARGET_FOLDER</FolderStructureNameAttr>"
         "<FolderStrucClassID>0</FolderStrucClassID>" +
         expected.custom + "</DataEx_Datas>";
}

std::string RecipientElements(const ObjectKey& customer, const ObjectKey& contact) {
  return "<CustomerObjClassID>" + std::to_string(customer.classId) +
         "</CustomerObjClassID><CustomerObjObjectId>" + std::to_string(customer.objectId) +
         "</CustomerObjObjectId><ContactPersObjClassID>" + std::to_string(contact.classId) +
         "</ContactPersObjClassID><ContactPersObjObjectId>" + std::to_string(contact.objectId) +
         "</ContactPersObjObjectId>";
}

constexpr const char* kNoFolderStructure =
    "<FolderStrucObjIDs>-1</FolderStrucObjIDs><UseFoldStruc>0</UseFoldStruc>";

// An export after its copy: the exchange directory with one file, and a structure with two documents.
class DispatchTest : public testing::Test {
 protected:
  void Prepare(const SettingLines& settings, const SettingLines& company = {},
               const SettingLines& contact = {}) {
    world_ = std::make_unique<test::ExportWorld>(
        test::CompanyOptions{.settings = settings, .companySettings = company, .contactSettings = contact});
    exchange_ = {};
    structure_ = {};
    ASSERT_TRUE(CommonXFunctions::Init(world_->services, world_->session));
    exchange_.directoryPath = world_->folder.Path(std::string("ex/") + kName);
    world_->folder.Write(std::string("ex/") + kName + "/gearbox.stp", "gearbox");
    structure_.document = XML::InitXMLDoc();
    XML::InstructGerman(*structure_.document, "", "iso-8859-1");
    structure_.root = XML::CreateRootElement(*structure_.document, "DataEx_Structure", "");
    structure_.contentList = XML::CreateElement(*structure_.document, "Content_List", "", structure_.root);
    const XmlNode gearbox = AddNode("Gearbox", structure_.contentList, "1201_1");
    AddNode("Shaft", gearbox, "1202_2");
    exchange_.copied.SetFiles(world_->ObjectList({{1201, 1}}));
    exchange_.copied.Files()->AddColumn("ROOT_OBJ", 2, 2);
    exchange_.copied.Files()->SetValue("ROOT_OBJ", 0, Value(1));
    exchange_.copied.AddToExport();
    request_.recipients = NewRecipientList(world_->host);
    request_.sendMode = SendMode::kNoSend;
    request_.selectedFolderStructure = "-1";
    world_->trace.writer->Clear();
  }
  XmlNode AddNode(const std::string& value, XmlNode parent, const std::string& identifier) {
    return DX_XML::CreateDXNodeElement(*structure_.document, "_STOBJECT_", value, parent, identifier);
  }
  void AddRecipient(const ObjectKey& customer, const ObjectKey& contact) {
    const int row = request_.recipients->RowCount();
    AppendRecipient(*request_.recipients,
                    {customer, contact, RecipientDirectory(exchange_.directoryPath, row)});
  }
  void AddThreeRecipients() {
    AddRecipient({901, 11}, {902, 21});
    AddRecipient({901, 11}, {902, 22});
    AddRecipient({901, 12}, {});
  }
  bool Run() { return Run(world_->services); }
  bool Run(Services& services) {
    DispatchParts parts{services, exchange_, structure_,
                        [this] { return std::make_unique<RecordingValues>(additional_, meanwhile_); }};
    outcome_ = {};
    RunDispatch(parts, request_, outcome_);
    return outcome_.dispatch == DispatchEnd::kFinished;
  }
  // The directories of the outcome, those without a whole record with a "?".
  Lines HandedOverTo() const {
    Lines lines;
    for (const HandedOver& one : outcome_.directories)
      lines.push_back(one.directory + (one.recordWhole ? "" : "?"));
    return lines;
  }
  Lines Tree() { return world_->folder.Tree("ex"); }
  std::string File(const std::string& path) { return world_->folder.Read("ex/" + path); }
  // Ids of the data exchange objects in the database, in order.
  Lines ExchangeObjects() {
    const std::string ids = world_->Rows("select OBJECT_ID from DATA_EXCHANGE order by OBJECT_ID");
    return ids.empty() ? Lines{} : SplitText(ids, "; ");
  }

  std::unique_ptr<test::ExportWorld> world_;
  ExchangeState exchange_;
  StructureState structure_;
  DispatchRequest request_;
  ExportOutcome outcome_;
  Lines additional_;
  std::function<void()> meanwhile_;  // what others do while a recipient's directory is being filled
};

TEST_F(DispatchTest, OneExportWithoutRecipient) {
  Prepare({});
  AddRecipient({}, {});
  world_->errors.ProtocolText = "copied\r\n";
  ASSERT_TRUE(Run());
  const std::string name = "Export_anna_20240131_154502_New";
  EXPECT_EQ(Tree(), (Lines{name + "/", name + "/Kestrix_Data.xml", name + "/Kestrix_Structure.xml",
                           name + "/gearbox.stp"}));
  const Lines objects = ExchangeObjects();
  ASSERT_EQ(objects.size(), 1U);
  EXPECT_EQ(File(name + "/Kestrix_Data.xml"), DataFile({.sendMode = 5,
                                                        .recipient = RecipientElements({}, {}),
                                                        .object = objects[0],
                                                        .folderStructure = kNoFolderStructure}));
  EXPECT_EQ(File(name + "/Kestrix_Structure.xml"),
            "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><DataEx_Structure><Content_List>"
            "<_STOBJECT_ Identifier=\"1201_1\" Instance=\"0\"><![CDATA[Gearbox]]>"
            "<_STOBJECT_ Identifier=\"1202_2\" Instance=\"0\"><![CDATA[Shaft]]></_STOBJECT_></_STOBJECT_>"
            "</Content_List></DataEx_Structure>");
  const ObjectKey object{900, ParseInt32(objects[0])};
  EXPECT_EQ(world_->Stored(object, "VRKX_DX_EXCH_PROTOCOL"), "copied\r\n");
  EXPECT_EQ(world_->Rows("select CLASS_ID2, OBJECT_ID2 from GENERAL_LINK where OBJECT_ID1 = " + objects[0]),
            "1201|1");
  EXPECT_EQ(additional_, Lines{std::string("0_0 0_0 ") + kName});
  EXPECT_EQ(HandedOverTo(), Lines{world_->folder.Path("ex/" + name)});
  EXPECT_TRUE(outcome_.Whole());
  EXPECT_TRUE(world_->Traced("No custmerObjClassID and no CustomerObjObjectID"));
  EXPECT_TRUE(world_->launcher.starts.empty());
  EXPECT_TRUE(world_->user.seen.empty());
  EXPECT_FALSE(structure_.document);
}

TEST_F(DispatchTest, ThreeMailsAndTheMonitorForTheLast) {
  Prepare({{"Settings", {"UseServerMonitor=1"}}},
          {{"Neutral_Formats", {"ProductDocument=STEP", "PartDocument=JT"}}},
          {{"Neutral_Formats", {"PartDocument=STEP"}}});
  AddThreeRecipients();
  request_.sendMode = SendMode::kMail;
  request_.mails = {{"anna@x", "jo@acme", "smtp.x", "One", "Text <1>"},
                    {"other@x", "al@acme", "other.x", "Two", ""},
                    {"", "", "", "Three", "Text 3"}};
  world_->errors.ProtocolText = "protocol";
  ASSERT_TRUE(Run());
  const Lines names = {"Export_anna_20240131_154502_New", "Export_anna_20240131_15450a_New",
                       "Export_anna_20240131_15450b_New"};
  Lines tree;
  for (const std::string& name : names) {
    for (const char* file :
         {"/", "/Kestrix_Data.xml", "/Kestrix_Structure.xml", "/NeutralFormats.xml", "/gearbox.stp"}) {
      // Bolt, the third, has no formats, and gets none of Acme's.
      if (name != names[2] || file != std::string("/NeutralFormats.xml")) tree.push_back(name + file);
    }
  }
  EXPECT_EQ(Tree(), tree);
  EXPECT_EQ(File(names[0] + "/NeutralFormats.xml"),
            "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><Neutral_Formats>"
            "<ProductDocument>STEP</ProductDocument><PartDocument>STEP</PartDocument><DrawingDocument/>"
            "</Neutral_Formats>");
  const Lines objects = ExchangeObjects();
  ASSERT_EQ(objects.size(), 3U);
  const Lines mails = {
      "<MailSender>anna@x</MailSender><MailContent>Text "
      "&lt;1&gt;</MailContent><MailRecipient>jo@acme</MailRecipient>"
      "<Mail_SMTP_Server>smtp.x</Mail_SMTP_Server><MailSubject>One</MailSubject>",
      "<MailSender>anna@x</MailSender><MailContent/><MailRecipient>al@acme</MailRecipient>"
      "<Mail_SMTP_Server>smtp.x</Mail_SMTP_Server><MailSubject>Two</MailSubject>",
      "<MailSender>anna@x</MailSender><MailContent>Text 3</MailContent><MailRecipient/>"
      "<Mail_SMTP_Server>smtp.x</Mail_SMTP_Server><MailSubject>Three</MailSubject>"};
  for (std::size_t i = 0; i < 3; ++i) {
    const Recipient recipient = RecipientOfRow(*request_.recipients, static_cast<int>(i));
    EXPECT_EQ(File(names[i] + "/Kestrix_Data.xml"),
              DataFile({.sendMode = 1,
                        .recipient = RecipientElements(recipient.customer, recipient.contact),
                        .mail = mails[i],
                        .object = objects[i],
                        .folderStructure = kNoFolderStructure}));
  }
  EXPECT_EQ(world_->Stored({900, ParseInt32(objects[0])}, "VRKX_DX_EXCH_PROTOCOL"), "protocol");
  EXPECT_EQ(world_->Stored({900, ParseInt32(objects[1])}, "VRKX_DX_EXCH_PROTOCOL"), "");
  EXPECT_EQ(world_->launcher.starts,
            Lines{world_->folder.Path("program/KestrixServMon.exe") + " [" + world_->session->Identifier() +
                  "@900@" + objects[2] + "@DX-009]"});
  // Neutral formats 200 (the first two recipients have them), values 500, backup 250, move 500.
  EXPECT_EQ(world_->pauser.pauses, (std::vector<int>{200, 500, 250, 500, 200, 500, 500, 500, 500}));
}

TEST_F(DispatchTest, CustomTextsAndFolderStructure) {
  Prepare({{"CustomClient", {"UseCustomForm=True"}}});
  AddRecipient({901, 12}, {902, 22});
  request_.sendMode = SendMode::kCustom;
  request_.customTexts = {"first", "", "two\nlines"};
  request_.useFolderStructure = true;
  request_.selectedFolderStructure = "910_5";
  ASSERT_TRUE(Run());
  EXPECT_EQ(File("Export_anna_20240131_154502_New/Kestrix_Data.xml"),
            DataFile({.sendMode = 4,
                      .recipient = RecipientElements({901, 12}, {902, 22}),
                      .object = ExchangeObjects().at(0),
                      .folderStructure =
                          "<FolderStrucObjIDs>910_5</FolderStrucObjIDs><UseFoldStruc>-1</UseFoldStruc>",
                      .custom = "<CustomText_1>first</CustomText_1><CustomText_2/>"
                                "<CustomText_3>two\nlines</CustomText_3>"}));
  EXPECT_TRUE(world_->Traced("Set the custom Textvalue in the XML data file: first"));
}

TEST_F(DispatchTest, MappedAttributesFailOnOneLevelAlone) {
  Prepare({}, {{"Mapping_XML_StructureFile", {"City||NONE"}}},
          {{"Mapping_XML_StructureFile", {"Part:number||VRK_ID", "# no line", "Material||MATERIAL"}}});
  const XmlNode gearbox = structure_.contentList.FirstChild();
  AddNode("Gone", gearbox, "1202_999");
  AddNode("Never reached", gearbox, "1202_2");
  AddNode("Shaft", structure_.contentList, "1202_2");
  AddRecipient({901, 11}, {902, 21});
  AddRecipient({901, 11}, {});  // the company's line names no attribute: nothing is added
  ASSERT_TRUE(Run());
  const std::string expected =
      "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><DataEx_Structure><Content_List>"
      "<_STOBJECT_ Identifier=\"1201_1\" Instance=\"0\" Part_number=\"A-1\" "
      "Material=\"mixed\"><![CDATA[Gearbox]]>"
      "<_STOBJECT_ Identifier=\"1202_2\" Instance=\"0\" Part_number=\"P-2\" Material=\"C45 "
      "&quot;hard&quot;\">"
      "<![CDATA[Shaft]]></_STOBJECT_>"
      "<_STOBJECT_ Identifier=\"1202_999\" Instance=\"0\"><![CDATA[Gone]]></_STOBJECT_>"
      "<_STOBJECT_ Identifier=\"1202_2\" Instance=\"1\"><![CDATA[Never reached]]></_STOBJECT_></_STOBJECT_>"
      "<_STOBJECT_ Identifier=\"1202_2\" Instance=\"2\" Part_number=\"P-2\" Material=\"C45 "
      "&quot;hard&quot;\">"
      "<![CDATA[Shaft]]></_STOBJECT_>"
      "</Content_List></DataEx_Structure>";
  EXPECT_EQ(File("Export_anna_20240131_154502_New/Kestrix_Structure.xml"), expected);
  EXPECT_EQ(File("Export_anna_20240131_15450a_New/Kestrix_Structure.xml"), expected);
  EXPECT_TRUE(
      world_->Traced("Error while creating the XML structure file (AdditionalXMLAttributes/Tessel_4)"));
}

TEST_F(DispatchTest, MappingLinesThatCannotBeUsed) {
  for (const char* line : {"Material", "1st||MATERIAL", "Material||NONE", "||MATERIAL"}) {
    Prepare({}, {{"Mapping_XML_StructureFile", {line}}});
    AddRecipient({901, 11}, {});
    EXPECT_TRUE(Run()) << line;
    EXPECT_EQ(File("Export_anna_20240131_154502_New/Kestrix_Structure.xml").find("Material="),
              std::string::npos);
    EXPECT_TRUE(
        world_->Traced("Error while creating the XML structure file (AdditionalXMLAttributes/Tessel_4)"))
        << line;
  }
}

TEST_F(DispatchTest, AMonitorThatCannotBeStartedLeavesTheExportComplete) {
  Prepare({{"Settings", {"UseServerMonitor=1"}}});
  AddRecipient({901, 12}, {});
  world_->launcher.processId = 0;
  EXPECT_TRUE(Run());
  EXPECT_EQ(world_->user.seen, Lines{"exclamation||Error while launching the 'Kestrix Server Monitor'"});
  EXPECT_EQ(outcome_.monitor, MonitorStart::kFailed);
  EXPECT_TRUE(world_->folder.Exists("ex/Export_anna_20240131_154502_New/Kestrix_Data.xml"));
}

TEST_F(DispatchTest, AMoveThatFailsHalfWayKeepsWhatIsFinal) {
  Prepare({{"Settings", {"UseServerMonitor=1"}}});
  AddThreeRecipients();
  meanwhile_ = [&] { world_->folder.MakeFolder("ex/Export_anna_20240131_15450a_New"); };
  EXPECT_FALSE(Run());
  EXPECT_TRUE(world_->folder.Exists("ex/Export_anna_20240131_154502_New/Kestrix_Data.xml"));
  EXPECT_FALSE(world_->folder.Exists(std::string("ex/") + kName + "_temp"));
  EXPECT_FALSE(world_->folder.Exists("ex/@@_anna_20240131_15450a")) << "half-filled";
  EXPECT_EQ(HandedOverTo().size(), 1U);
  EXPECT_EQ(ExchangeObjects().size(), 1U) << "no record of what has no directory";
  EXPECT_TRUE(world_->launcher.starts.empty());
  const test::TraceEntry& traced = world_->trace.writer->entries.back();
  EXPECT_EQ(traced.text, kDispatchError);
  EXPECT_EQ(traced.number, error_number::kFileAlreadyExists);
}

// Two exports of one user within ten seconds name the directories of their later recipients alike.
TEST_F(DispatchTest, NeverMixesTheFilesOfTwoExports) {
  const std::string temp = std::string(kName) + "_temp";
  const std::string others[] = {"@@_anna_20240131_15450a", "@@_anna_20240131_15450b", temp};
  for (const std::string& other : others) {
    Prepare({});
    AddThreeRecipients();
    meanwhile_ = [&] { world_->folder.Write("ex/" + other + "/theirs.stp", "theirs"); };
    EXPECT_FALSE(Run()) << other;
    EXPECT_EQ(world_->trace.writer->entries.back().number, error_number::kFileAlreadyExists);
    for (const std::string& path : Tree()) {
      const bool isTheirs = path == other + "/" || path == other + "/theirs.stp";
      EXPECT_EQ(path.starts_with(other + "/") || path.ends_with("/theirs.stp"), isTheirs) << path;
    }
    EXPECT_TRUE(world_->folder.Exists("ex/" + other + "/theirs.stp")) << "taken away";
  }
}

TEST_F(DispatchTest, ATakenDirectoryEndsBeforeAnythingIsMade) {
  for (const std::string name :
       {"Export_anna_20240131_154502_New", "Export_anna_20240131_154502_Break",
        "Export_anna_20240131_15450a_Sent", "@@_anna_20240131_15450a", "@@_anna_20240131_154502_temp"}) {
    Prepare({});
    AddThreeRecipients();
    world_->folder.Write("ex/" + name + "/theirs.stp", "theirs");
    const Lines before = Tree();
    EXPECT_FALSE(Run()) << name;
    EXPECT_EQ(world_->trace.writer->entries.back().number, error_number::kFileAlreadyExists);
    EXPECT_EQ(Tree(), before);
    EXPECT_TRUE(ExchangeObjects().empty());
  }
}

// Whatever call of the file system fails, once or from then on (in steps: neighbours end alike): each final
// directory is whole and has its record, each record its directory, and nothing temporary stays.
TEST_F(DispatchTest, AFailureAtAnyFileCallLeavesNothingHalf) {
  for (const test::Failing how : {test::Failing::kOnce, test::Failing::kFromThenOn}) {
    bool reached = true;
    for (int call = 1; reached; call += how == test::Failing::kOnce ? 1 : 3) {
      SCOPED_TRACE((how == test::Failing::kOnce ? "call " : "from call ") + std::to_string(call));
      Prepare({});
      AddRecipient({901, 11}, {902, 21});
      AddRecipient({901, 12}, {});
      test::FailingFiles files(world_->platform.files, call, how);
      Platform platform{files,
                        world_->platform.encodings,
                        world_->platform.clock,
                        world_->platform.pauser,
                        world_->platform.processes,
                        world_->platform.profiles,
                        world_->platform.system,
                        world_->platform.program,
                        world_->platform.ansiCodePage};
      Services services{world_->services.trace,
                        world_->services.errors,
                        world_->services.toolkit,
                        world_->services.declarations,
                        platform,
                        world_->services.runtime};
      const bool finished = Run(services);
      reached = files.Reached();
      EXPECT_TRUE(reached || finished);
      exchange_.journal.reset();  // as the end of the process does
      static_cast<void>(RecoverExports(world_->trace.trace, world_->platform.files, *world_->session,
                                       world_->folder.Path("ex"), {.removeStrays = true}));
      std::map<std::string, int> entries;  // by final directory
      for (const std::string& path : Tree())
        ++entries[path.substr(0, path.find('/'))];
      for (const auto& [name, count] : entries) {
        EXPECT_TRUE(name.starts_with("Export_")) << name;
        EXPECT_EQ(count, 4) << name;
      }
      EXPECT_EQ(ExchangeObjects().size(), entries.size());
      EXPECT_GE(entries.size(), outcome_.directories.size());
      if (finished) {
        EXPECT_EQ(entries.size(), 2U);
      }
    }
  }
}

TEST_F(DispatchTest, EndsBeforeAnythingIsMade) {
  struct Case {
    SettingLines settings;
    int error;
  };
  const Case cases[] = {
      {{{"ini_xml", {"DataFileName=../data.xml"}}}, error_number::kPathFileAccess},
      {{{"Path", {"ExportPrefix=../elsewhere/x"}}}, error_number::kPathFileAccess},
      {{{"ini_xml", {"StructurFileName=/tmp/structure.xml"}}}, error_number::kPathFileAccess}};
  for (const Case& test : cases) {
    Prepare(test.settings);
    AddRecipient({}, {});
    EXPECT_FALSE(Run());
    EXPECT_EQ(world_->trace.writer->entries.back().text, kDispatchError);
    EXPECT_EQ(world_->trace.writer->entries.back().number, test.error);
    EXPECT_TRUE(ExchangeObjects().empty());
    EXPECT_EQ(Tree(), (Lines{std::string(kName) + "/", std::string(kName) + "/gearbox.stp"}));
  }
}

// The receiving system may know no letter case. Neutral formats are in the way only where they are written.
TEST_F(DispatchTest, DocumentsThatBearTheNameOfAnOwnFile) {
  const SettingLines formats{{"Neutral_Formats", {"PartDocument=JT"}}};
  const struct {
    const char* document;
    SettingLines company;
    bool refused;
  } cases[] = {{"KESTRIX_DATA.XML", {}, true},
               {"kestrix_structure.xml", {}, true},
               {"neutralformats.XML", {}, false},
               {"neutralformats.XML", formats, true}};
  for (const auto& each : cases) {
    Prepare({}, each.company);
    AddRecipient({901, 11}, {});
    world_->folder.Write(std::string("ex/") + kName + "/" + each.document, "document");
    EXPECT_EQ(Run(), !each.refused) << each.document;
    EXPECT_EQ(ExchangeObjects().empty(), each.refused);
  }
}

TEST_F(DispatchTest, WithoutDataExchangeObjectTheExportGoesOn) {
  Prepare({{"Path", {"ExportPrefix=Out@@"}}});
  AddRecipient({901, 11}, {902, 21});
  world_->host.FailNext({.call = embedded::HostCall::kInsert, .classId = 900, .code = 19});
  EXPECT_TRUE(Run());
  EXPECT_NE(File("Out@@_anna_20240131_154502_New/Kestrix_Data.xml").find("<DataExchangeObjID>0<"),
            std::string::npos);
  EXPECT_EQ(HandedOverTo(), Lines{world_->folder.Path("ex/Out@@_anna_20240131_154502_New?")});
}

}  // namespace
}  // namespace tessel
