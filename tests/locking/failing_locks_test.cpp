// Every statement, and every call of the file system, refused once: what belongs together changes together or
// not at all, and what is told is what stands.
#include <gtest/gtest.h>

#include <filesystem>

#include "embedded/sql/refusal.h"
#include "embedded/store/new_database.h"
#include "locking/batch_continuation.h"
#include "locking/locking_world.h"
#include "locking/object_locking.h"
#include "support/failing_files.h"

namespace tessel::test {
namespace {

// A database whose n-th statement from now on is refused, and anna's program on it.
class FailingWorld {
 public:
  // Statements so far; those of a call that went through are the most that there are.
  bool Reached() const { return count_ >= failing_; }
  void FailAt(int nth) {
    failing_ = nth;
    count_ = 0;
  }

 private:
  embedded::HostOptions Options() {
    embedded::CreateDatabase(
        machine.platform.files, place,
        machine.folder.Write("model/company.json", CompanyModel(machine.folder, LockingCompany())));
    embedded::HostOptions options = HostOptionsOf(machine, user);
    options.statementWatch = [this](std::string_view) {
      if (++count_ == failing_) throw embedded::DatabaseError("disk I/O error", 10);
    };
    return options;
  }
  int failing_ = 0;
  int count_ = 0;

 public:
  Machine machine;
  std::string place = NewPlace(machine.platform.files, machine.folder, "company");
  Onlooker user;
  embedded::EmbeddedHost host{place, Options()};
  LoadedProgram program{machine, host, user, "anna"};
  Problems& problems = program.trace.trace.problems;
};

TEST(FailingLocks, RecordAndDocumentChangeTogetherAtEveryStatement) {
  FailingWorld world;
  LoadedProgram& program = world.program;
  const PcRecordListPtr rows = DocumentRows(world.host, {{1201, 1}}, std::int16_t{1});
  // Lock records, and documents that say they are locked.
  const auto state = [&] {
    return QueryRows(
        *program.session,
        "select (select count(*) from OBJECT_LOCKING) as RECORDS, (select count(*) from ASSEMBLY "
        "where VRKX_DX_LOCK_STATE = -1) as LOCKED from USERS where OBJECT_ID = 31");
  };
  const auto change = [&](bool lock, int nth) {
    world.FailAt(nth);
    const auto call = lock ? CommonXFunctions::LockObject : CommonXFunctions::UnlockObject;
    const LockOutcome outcome = call(program.services, program.session, rows, nullptr, nullptr);
    return !outcome.documents.empty() && outcome.documents[0].result == LockResult::kDone;
  };
  for (const bool lock : {true, false}) {
    SCOPED_TRACE(lock ? "lock" : "unlock");
    int nth = 1;
    for (bool reached = true; reached; ++nth) {
      SCOPED_TRACE("statement " + std::to_string(nth));
      world.problems.Clear();
      const bool changed = change(lock, nth);
      reached = world.Reached();
      world.FailAt(0);
      EXPECT_EQ(state(), changed == lock ? "1|1" : "0|0");
      EXPECT_TRUE(changed || world.problems.Count() > 0) << "refused without a word";
      if (changed && reached) {
        EXPECT_TRUE(change(!lock, 0));
      }
    }
    EXPECT_GT(nth, 12) << "each statement has failed once";
  }
  EXPECT_EQ(state(), "0|0");
}

// Folder and phase agree after each failure, and the next call continues.
TEST(FailingContinuation, FolderAndStatusChangeTogetherAtEveryStatementAndFileCall) {
  FailingWorld world;
  LoadedProgram& program = world.program;
  const TemporaryFolder& folder = world.machine.folder;
  const ObjectKey key{900, 17};
  const auto set = [&] {
    const PcObjectPtr exchange = program.session->ObjectStore()->Object(key);
    exchange->SetValue("VRKX_DX_PROCESS_PHASE", Value(3));
    exchange->SetValue("VRKX_DX_EXCHANGE_ROOT_DIR", Value(folder.Path("x/Break_1/Sub")));
    ASSERT_EQ(exchange->Update(*program.session->NewBehavior()), 0);
    std::filesystem::remove_all(folder.Path("x"));
    folder.Write("x/Break_1/data.xml", "data");
  };
  const PcRecordListPtr rows = DocumentRows(world.host, {key}, std::int16_t{1});
  rows->AddColumn("VRKX_DX_PROCESS_PHASE", 4, static_cast<int>(ColumnType::kLong));
  rows->AddColumn("VRKX_DX_EXCHANGE_ROOT_DIR", 255, static_cast<int>(ColumnType::kText));
  rows->SetValue("VRKX_DX_PROCESS_PHASE", 0, Value(3));
  rows->SetValue("VRKX_DX_EXCHANGE_ROOT_DIR", 0, Value(folder.Path("x/Break_1/Sub")));
  const auto state = [&] {
    const std::string phase =
        QueryRows(*program.session, "select VRKX_DX_PROCESS_PHASE from DATA_EXCHANGE where OBJECT_ID = 17");
    return (folder.Exists("x/Break_1/data.xml") ? "stopped " : "") +
           std::string(folder.Exists("x/New_1/data.xml") ? "continued " : "") + phase;
  };
  FailingFiles files(world.machine.platform.files, 0, Failing::kOnce);
  const Platform& real = world.machine.platform;
  Platform platform{files,         real.encodings, real.clock,   real.pauser,      real.processes,
                    real.profiles, real.system,    real.program, real.ansiCodePage};
  Services services{program.services.trace,
                    program.services.errors,
                    program.services.toolkit,
                    program.services.declarations,
                    platform,
                    program.services.runtime};
  for (const bool inFiles : {false, true}) {
    int nth = 1;
    for (bool reached = true; reached; ++nth) {
      SCOPED_TRACE((inFiles ? "file call " : "statement ") + std::to_string(nth));
      set();
      world.problems.Clear();
      world.FailAt(inFiles ? 0 : nth);
      files.FailAt(inFiles ? nth : 0, Failing::kOnce);
      const ContinueOutcome outcome = CommonXFunctions::ContinueBatchMode(services, program.session, rows);
      reached = inFiles ? files.Reached() : world.Reached();
      world.FailAt(0);
      files.FailAt(0, Failing::kOnce);
      const bool continued = outcome.result == ContinueResult::kContinued;
      EXPECT_EQ(state(), continued ? "continued 2" : "stopped 3");
      EXPECT_TRUE(continued || !outcome.problems.empty()) << "refused without a word";
      static_cast<void>(CommonXFunctions::ContinueBatchMode(services, program.session, rows));
      EXPECT_EQ(state(), "continued 2") << "the next call goes on";
    }
    EXPECT_GT(nth, inFiles ? 4 : 6) << "each call has failed once";
  }
}

}  // namespace
}  // namespace tessel::test
