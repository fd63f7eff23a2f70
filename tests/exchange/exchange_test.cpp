#include "exchange/exchange.h"

#include <gtest/gtest.h>

#include "embedded/sql/refusal.h"
#include "embedded/store/new_database.h"
#include "support/export_world.h"
#include "support/failing_files.h"

namespace tessel {
namespace {

using namespace CommonXFunctions;

class FakePage : public SendDataView {
 public:
  [[nodiscard]] bool CopyAll() const override { return copyAll; }
  void HideForHostWindow() override { hidden = true; }
  bool copyAll = true;
  bool hidden = false;
};

class Exchange : public testing::Test {
 protected:
  Exchange() {
    world_.declarations.startup.session = world_.session;
    world_.host.SetLfcStage2([this](const PcSessionPtr& session, const std::string&,
                                    const PcRecordListPtr& first, const PcRecordListPtr& second,
                                    const PcRecordListPtr&) {
      flagDuringCopy_ = session->GlobalData().Get("isKestrix").AsText();
      AllCopiedFiles(world_.services, state_, first, second);
    });
  }
  void MakeDirectory() {
    ASSERT_TRUE(CreateExDirName(world_.services, state_.directoryName));
    ASSERT_TRUE(CreateNewExDir(world_.services, world_.folder.Path("new/base"), state_.directoryName,
                               state_.directoryPath));
    world_.session->GlobalData().Set("ExDir", Value(state_.directoryPath));
  }
  CopyResult Copy(const std::string& tag) { return copyFile2ExDir(world_.services, state_, page_, tag); }
  bool FlagIsSet() { return world_.session->GlobalData().Position("isKestrix") > 0; }

  test::ExportWorld world_;
  ExchangeState state_;
  FakePage page_;
  std::string flagDuringCopy_;
};

TEST_F(Exchange, DirectoriesAreMadeOnceBelowTheirBase) {
  MakeDirectory();
  EXPECT_EQ(state_.directoryName, "@@_anna_20240131_154502");
  EXPECT_EQ(state_.directoryPath, world_.folder.Path("new/base/@@_anna_20240131_154502"));
  EXPECT_TRUE(world_.platform.files.FolderExists(state_.directoryPath));

  struct Case {
    std::string base;
    const char* name;
    int error;
  };
  const Case cases[] = {{world_.folder.Path("new/base/"), "@@_anna_20240131_154502", 58},
                        {world_.folder.Path("new"), "@@_DOMAIN\\anna", 75},
                        {world_.folder.Path("new"), "..", 75},
                        {"relative", "sub", 75},
                        {world_.folder.Write("file", ""), "sub", 58}};
  for (const Case& test : cases) {
    std::string path;
    EXPECT_FALSE(CreateNewExDir(world_.services, test.base, test.name, path)) << test.name;
    const test::TraceEntry& traced = world_.trace.writer->entries.back();
    EXPECT_EQ(traced.text,
              "Fehler beim Erzeugen des temp. Austauschverzeichnisses (CreateNewExDir/CommonXFunctions");
    EXPECT_EQ(traced.number, test.error) << test.name;
  }
  EXPECT_EQ(world_.folder.Tree("new"), (std::vector<std::string>{"base/", "base/@@_anna_20240131_154502/"}));
}

TEST_F(Exchange, SilentCopyKeepsTheListsOfTheHook) {
  MakeDirectory();
  EXPECT_EQ(Copy("1201_1"), CopyResult::kCopied);
  EXPECT_EQ(world_.folder.Tree("new/base/" + state_.directoryName),
            (std::vector<std::string>{"gearbox.stp", "shaft.stp"}));
  EXPECT_EQ(flagDuringCopy_, "True");
  EXPECT_FALSE(FlagIsSet());
  EXPECT_FALSE(page_.hidden);
  EXPECT_EQ(state_.copied.CopiedCount({1201, 1}), 1);
  EXPECT_EQ(state_.copied.CopiedCount({1202, 2}), 1);
  EXPECT_EQ(state_.copied.LinksFrom({1201, 1}).size(), 1U);
  EXPECT_EQ(state_.copied.Files()->GetValue("ROOT_OBJ", 0).AsInt16(), 0);
}

TEST_F(Exchange, TheLifeCycleViewSaysHowTheCopyEnded) {
  MakeDirectory();
  page_.copyAll = false;
  for (const auto& [answer, result] :
       {std::pair{1, CopyResult::kCopied}, std::pair{2, CopyResult::kCancelled},
        std::pair{7, CopyResult::kCancelled}, std::pair{3, CopyResult::kFailed}}) {
    page_.hidden = false;
    world_.user.lifeCycleAnswer = answer;
    EXPECT_EQ(Copy("1201_1"), result) << answer;
    EXPECT_TRUE(page_.hidden);
    EXPECT_FALSE(FlagIsSet());
  }
  EXPECT_TRUE(world_.user.seen.empty());
  // Even a cancelled copy needs its directory.
  world_.platform.files.DeleteFolder(state_.directoryPath);
  world_.user.lifeCycleAnswer = 2;
  EXPECT_EQ(Copy("1201_1"), CopyResult::kFailed);
  EXPECT_EQ(world_.user.seen, std::vector<std::string>{"critical|Kestrix|no Message found"});
}

TEST_F(Exchange, ACopiedFileNeverBearsTheNameOfAnOwnFile) {
  world_.declarations.configuration.StructureFileName = "Kestrix_Structure.xml";
  world_.declarations.configuration.DataFileName = "Kestrix_Data.xml";
  for (const char* name : {"KESTRIX_Structure.xml", "Kestrix_Data.xml"}) {
    MakeDirectory();
    world_.Set({1202, 2}, {{"CAD_REF_FILE_NAME", Value(name)}});
    EXPECT_EQ(Copy("1201_1"), CopyResult::kFailed) << name;
    EXPECT_EQ(world_.trace.writer->entries.back().number, error_number::kFileAlreadyExists);
    world_.platform.files.DeleteFolder(state_.directoryPath);
  }
}

TEST_F(Exchange, FailedCopiesGiveNoResult) {
  MakeDirectory();
  EXPECT_EQ(Copy("1202_999"), CopyResult::kFailed);
  EXPECT_TRUE(world_.Traced("Could not retrieve selected object"));
  EXPECT_TRUE(FlagIsSet());  // this one failure leaves it
  EXPECT_EQ(Copy("nothing"), CopyResult::kFailed);
  EXPECT_FALSE(FlagIsSet());
  world_.host.FailNext({.call = embedded::HostCall::kOperation, .code = 1234});
  EXPECT_EQ(Copy("1201_1"), CopyResult::kFailed);
  EXPECT_FALSE(FlagIsSet());
  EXPECT_TRUE(world_.user.seen.empty());
  world_.platform.files.DeleteFolder(state_.directoryPath);
  state_.directoryPath += "\n";
  page_.copyAll = false;
  EXPECT_EQ(Copy("1201_1"), CopyResult::kFailed);
}

// A host, and a program on it, whose file calls and statements fail as planned.
struct FailingProgram {
  explicit FailingProgram(test::ExportWorld& world)
      : files(world.platform.files, 1 << 30, test::Failing::kOnce),
        host((world.folder.Write("model/company.json", test::CompanyModel(world.folder, {})),
              embedded::CreateDatabase(world.platform.files, world.folder.Path("x.db"),
                                       world.folder.Path("model/company.json")),
              world.folder.Path("x.db")),
             Options(world)),
        platform{files,
                 world.platform.encodings,
                 world.platform.clock,
                 world.platform.pauser,
                 world.platform.processes,
                 world.platform.profiles,
                 world.platform.system,
                 world.platform.program,
                 world.platform.ansiCodePage},
        services{world.services.trace,
                 world.services.errors,
                 world.services.toolkit,
                 world.services.declarations,
                 platform,
                 host} {
    world.declarations.startup.session = host.OpenSession("anna");
    world.declarations.configuration.ExchangeDirectory = world.folder.Path("ex");
  }
  embedded::HostOptions Options(test::ExportWorld& world) {
    embedded::HostOptions options = test::HostOptionsOf(world, world.user);
    options.files = &files;
    options.vaultPath.clear();
    options.statementWatch = [this](std::string_view) {
      if (++statements == failingStatement) throw embedded::DatabaseError("disk I/O error", 10);
    };
    options.lfcStage2 = [this](const PcSessionPtr&, const std::string&, const PcRecordListPtr& first,
                               const PcRecordListPtr& second,
                               const PcRecordListPtr&) { AllCopiedFiles(services, state, first, second); };
    return options;
  }
  // From now on; 0: none.
  void Fail(int fileCall, test::Failing how, int statement) {
    files.FailAt(fileCall > 0 ? fileCall : 1 << 30, how);
    statements = 0;
    failingStatement = statement;
  }

  test::FailingFiles files;
  int statements = 0;
  int failingStatement = 0;
  ExchangeState state;
  embedded::EmbeddedHost host;
  Platform platform;
  Services services;
};

// Whatever call of the file system or of the database fails: a copy that says it is done is whole, and one
// that is not says why.
TEST_F(Exchange, ACopyThatIsDoneIsWholeAtEveryFailure) {
  FailingProgram program(world_);
  Problems& problems = world_.trace.trace.problems;
  const auto fails = [&](int fileCall, test::Failing how, int statement) {
    SCOPED_TRACE("call " + std::to_string(fileCall) + ", statement " + std::to_string(statement));
    problems.Clear();
    program.Fail(fileCall, how, statement);
    const bool done = MakeExchangeDirectory(program.services, program.state) &&
                      copyFile2ExDir(program.services, program.state, page_, "1201_1") == CopyResult::kCopied;
    const bool reached = program.files.Reached() || (statement > 0 && program.statements >= statement);
    program.Fail(0, how, 0);
    EXPECT_TRUE(done || problems.Count() > 0 || !world_.user.Take().empty()) << "ended without a word";
    if (done) {
      EXPECT_EQ(world_.folder.Read("ex/" + program.state.directoryName + "/gearbox.stp"), "gearbox");
      EXPECT_EQ(world_.folder.Read("ex/" + program.state.directoryName + "/shaft.stp"), "shaft");
      EXPECT_EQ(program.state.copied.CopiedCount({1202, 2}), 1);
      EXPECT_EQ(program.state.copied.LinksFrom({1201, 1}).size(), 1U);
    }
    program.state = {};
    if (world_.folder.Exists("ex")) world_.platform.files.DeleteFolder(world_.folder.Path("ex"));
    return reached;
  };
  for (const test::Failing how : {test::Failing::kOnce, test::Failing::kFromThenOn}) {
    int call = 1;
    while (fails(call, how, 0))
      ++call;
    EXPECT_GT(call, 8);
  }
  int statement = 1;
  while (fails(0, test::Failing::kOnce, statement))
    ++statement;
  EXPECT_GT(statement, 5);
}

TEST_F(Exchange, AHookWithoutListsLeavesTheEarlierOnes) {
  auto files = world_.ObjectList({{1201, 1}});
  EXPECT_EQ(AllCopiedFiles(world_.services, state_, files, nullptr), 0);
  state_.copied.Files()->SetValue("ROOT_OBJ", 0, Value(1));
  EXPECT_FALSE(files->HasColumn("ROOT_OBJ"));
  EXPECT_EQ(AllCopiedFiles(world_.services, state_, nullptr, world_.ObjectList({})), 0);
  EXPECT_TRUE(world_.Traced("FirstRec of Hook 'LFCStage2' is empty"));
  EXPECT_EQ(state_.copied.FindFileRow({1201, 1}), 0);
  EXPECT_EQ(state_.copied.Files()->GetValue("ROOT_OBJ", 0).AsInt16(), 0);
  EXPECT_TRUE(state_.copied.Links());
  ExchangeState fresh;
  EXPECT_NE(AllCopiedFiles(world_.services, fresh, nullptr, nullptr), 0);
}

TEST_F(Exchange, AppendedRowsGoBelowAndAddOnlyMissingColumns) {
  PcRecordListPtr all;
  CopyRecList(world_.host, *world_.ObjectList({{1201, 1}, {1202, 2}, {1202, 3}}), all, false);
  all->AddColumn("EXTRA", 2, 2);
  CopyRecList(world_.host, *world_.ObjectList({{1203, 4}}, {Value()}), all, true);
  EXPECT_EQ(all->ColumnCount(), 4);
  EXPECT_EQ(all->RowCount(), 4);
  EXPECT_EQ(all->KeyOfRow(3), (ObjectKey{1203, 4}));
  EXPECT_TRUE(all->GetValue("STATE", 3).IsNull());
  PcRecordListPtr none;
  EXPECT_THROW(CopyRecList(world_.host, *all, none, true), RuntimeError);
}

}  // namespace
}  // namespace tessel
