#include <gtest/gtest.h>

#include "host/error.h"
#include "locking/batch_continuation.h"
#include "locking/latest_exchange_object.h"
#include "locking/locking_world.h"

namespace tessel::test {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* kNotRenamed = "exclamation|Kestrix|Not renamed\n";
constexpr const char* kNotUpdated = "exclamation|Kestrix|Not updated\n";
constexpr const char* kRefreshed = "refresh 900:17 mode 1\n";

class BatchContinuation : public testing::Test {
 protected:
  // Row 0 of the hook, after the exchange 900:17 was written with these values.
  PcRecordListPtr Exchange(int phase, const std::string& rootDirectory) {
    world_.Set({900, 17}, {{"VRKX_DX_PROCESS_PHASE", phase}, {"VRKX_DX_EXCHANGE_ROOT_DIR", rootDirectory}});
    const PcRecordListPtr rows = world_.Rows({{900, 17}});
    rows->AddColumn("VRKX_DX_PROCESS_PHASE", 4, static_cast<int>(ColumnType::kLong));
    rows->AddColumn("VRKX_DX_EXCHANGE_ROOT_DIR", 255, static_cast<int>(ColumnType::kText));
    rows->SetValue("VRKX_DX_PROCESS_PHASE", 0, phase);
    rows->SetValue("VRKX_DX_EXCHANGE_ROOT_DIR", 0, rootDirectory);
    return rows;
  }
  std::string Continue(const PcRecordListPtr& rows) {
    LoadedProgram& anna = world_.Program("anna");
    outcome_ = CommonXFunctions::ContinueBatchMode(anna.services, anna.session, rows);
    return world_.Seen();
  }
  std::string Phase() { return world_.Stored({900, 17}, "VRKX_DX_PROCESS_PHASE"); }

  ContinueOutcome outcome_;
  LockingWorld world_;
  TemporaryFolder& folder_ = world_.folder;
};

TEST_F(BatchContinuation, RenamesTheFolderAndSetsTheStatus) {
  const struct {
    const char* folder;  // below the temporary folder
    std::string rootDirectory;
    const char* renamed;
  } cases[] = {
      {"x/Break_1", folder_.Path("x/Break_1/Sub"), "x/New_1"},
      {"drives/D/Exchange/Break_2", "D:\\Exchange\\Break_2\\Sub", "drives/D/Exchange/New_2"},
      {"drives/D/Exchange/Break_3", "D:\\Exchange\\Break_3\\", "drives/D/Exchange/New_3"},
      {"y/aBreakBreak break", folder_.Path("y/aBreakBreak break/Sub"), "y/aNewNew break"},
      {"z/Break\\4", folder_.Path("z/Break\\4/Sub"), "z/New\\4"},  // a native name with a "\" in it
  };
  for (const auto& each : cases) {
    folder_.Write(std::string(each.folder) + "/data.xml", each.folder);
    EXPECT_EQ(Continue(Exchange(3, each.rootDirectory)), kRefreshed) << each.folder;
    EXPECT_FALSE(folder_.Exists(each.folder));
    EXPECT_EQ(folder_.Read(std::string(each.renamed) + "/data.xml"), each.folder);
    EXPECT_EQ(Phase(), "2");
  }
  const std::string base = folder_.Path("x/");
  EXPECT_TRUE(
      world_.Program("anna").Traced("Folder renamed: (old) " + base + "Break_1 (new) " + base + "New_1"));
}

TEST_F(BatchContinuation, LeavesWhatIsNotStoppedOrHasNoFolder) {
  folder_.MakeFolder("Break_1");
  for (const int phase : {0, 1, 2, 4}) {
    EXPECT_EQ(Continue(Exchange(phase, folder_.Path("Break_1/Sub"))), "");
    EXPECT_EQ(Phase(), std::to_string(phase));
  }
  EXPECT_EQ(Continue(Exchange(3, "Break_1")), "");
  EXPECT_EQ(Phase(), "3");
  EXPECT_TRUE(folder_.Exists("Break_1"));
}

TEST_F(BatchContinuation, TellsThatTheFolderCouldNotBeRenamed) {
  folder_.MakeFolder("taken/Break_1");
  folder_.MakeFolder("taken/New_1");
  folder_.MakeFolder("Break/Break_2");
  folder_.MakeFolder("break_3");
  for (const char* root : {"taken/Break_1/Sub", "missing/Break_1/Sub", "Break/Break_2/Sub", "break_3/Sub"}) {
    const auto before = folder_.Tree();
    EXPECT_EQ(Continue(Exchange(3, folder_.Path(root))), kNotRenamed) << root;
    EXPECT_EQ(Phase(), "3");
    EXPECT_EQ(folder_.Tree(), before);
  }
}

TEST_F(BatchContinuation, GivesTheFolderItsOldNameWhenTheStatusCannotBeWritten) {
  folder_.Write("Break_1/data.xml", "data");
  const PcRecordListPtr rows = Exchange(3, folder_.Path("Break_1/Sub"));
  const auto before = world_.Database();
  for (const bool raise : {false, true}) {
    world_.host.FailNext({.call = embedded::HostCall::kUpdate, .raise = raise});
    EXPECT_EQ(Continue(rows), kNotUpdated);
    EXPECT_EQ(folder_.Read("Break_1/data.xml"), "data");
    EXPECT_FALSE(folder_.Exists("New_1"));
    EXPECT_EQ(world_.Changes(before), "");
  }
  EXPECT_EQ(Continue(rows), kRefreshed);  // the next attempt finds all as it was
}

TEST_F(BatchContinuation, GoesOnBehindACallThatWasCutOff) {
  folder_.Write("New_1/data.xml", "data");
  EXPECT_EQ(Continue(Exchange(3, folder_.Path("Break_1/Sub"))), kRefreshed);
  EXPECT_EQ(outcome_.result, ContinueResult::kContinued);
  EXPECT_EQ(Phase(), "2");
  EXPECT_EQ(folder_.Read("New_1/data.xml"), "data");
  EXPECT_EQ(Continue(Exchange(3, folder_.Path("Break_2/Sub"))), kNotRenamed);
  EXPECT_EQ(outcome_.result, ContinueResult::kNotRenamed);
  ASSERT_EQ(outcome_.problems.size(), 1U);
  EXPECT_EQ(outcome_.problems[0].number, error_number::kFileNotFound);
}

class LatestExchange : public testing::Test {
 protected:
  std::string Show(LockingWorld& world, const ObjectKey& document) {
    LoadedProgram& anna = world.Program("anna");
    EXPECT_EQ(CommonXFunctions::GetLatestDataExObj(anna.services, anna.session, world.Rows({document})), 0);
    return world.Seen();
  }
  LockingWorld world_;
};

TEST_F(LatestExchange, ShowsTheOneWithTheHighestId) {
  EXPECT_EQ(Show(world_, {1201, 1}),
            "object dialog mode 1 \"DataExchange Object to selected document\" page 1 modal 900:42\n");
}

TEST_F(LatestExchange, TellsThatThereIsNone) {
  EXPECT_EQ(Show(world_, {1201, 6}), "exclamation||no linked data exchange object to selected document!\n");
}

TEST_F(LatestExchange, ErrorsAreTraced) {
  EXPECT_EQ(Show(world_, {1201, 99}), "");
  EXPECT_TRUE(world_.Program("anna").Traced("Fehlerabbruch im Modul (GetLatestDataExObj/CommonXFunctions)"));
  LockingWorld broken(LockingCompany({{"Settings", {"UseServerMonitor=perhaps"}}}));
  const std::string seen = Show(broken, {1201, 1});
  EXPECT_EQ(seen.find("object dialog"), std::string::npos);
  EXPECT_NE(seen.find("No start"), std::string::npos);
}

}  // namespace
}  // namespace tessel::test
