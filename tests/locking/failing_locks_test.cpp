// Every statement of a lock and of an unlock refused once: record and document change together or not at all,
// and what is told is what stands.
#include <gtest/gtest.h>

#include "embedded/sql/refusal.h"
#include "embedded/store/new_database.h"
#include "locking/locking_world.h"
#include "locking/object_locking.h"

namespace tessel::test {
namespace {

TEST(FailingLocks, RecordAndDocumentChangeTogetherAtEveryStatement) {
  Machine machine;
  Onlooker user;
  const std::string database = machine.folder.Path("company.db");
  embedded::CreateDatabase(
      machine.platform.files, database,
      machine.folder.Write("model/company.json", CompanyModel(machine.folder, LockingCompany())));
  int failing = 0;
  int count = 0;
  embedded::HostOptions options = HostOptionsOf(machine, user);
  options.statementWatch = [&](std::string_view) {
    if (++count == failing) throw embedded::DatabaseError("disk I/O error", 10);
  };
  embedded::EmbeddedHost host(database, options);
  LoadedProgram program(machine, host, user, "anna");
  const PcRecordListPtr rows = DocumentRows(host, {{1201, 1}}, std::int16_t{1});
  Problems& problems = program.trace.trace.problems;
  // Lock records, and documents that say they are locked.
  const auto state = [&] {
    return QueryRows(
        *program.session,
        "select (select count(*) from OBJECT_LOCKING) as RECORDS, (select count(*) from ASSEMBLY "
        "where VRKX_DX_LOCK_STATE = -1) as LOCKED from USERS where OBJECT_ID = 31");
  };
  const auto change = [&](bool lock, int nth) {
    failing = nth;
    count = 0;
    const auto call = lock ? CommonXFunctions::LockObject : CommonXFunctions::UnlockObject;
    const LockOutcome outcome = call(program.services, program.session, rows, nullptr, nullptr);
    failing = 0;
    return !outcome.documents.empty() && outcome.documents[0].result == LockResult::kDone;
  };
  for (const bool lock : {true, false}) {
    SCOPED_TRACE(lock ? "lock" : "unlock");
    int nth = 1;
    for (bool reached = true; reached; ++nth) {
      SCOPED_TRACE("statement " + std::to_string(nth));
      problems.Clear();
      const bool changed = change(lock, nth);
      reached = count >= nth;
      EXPECT_EQ(state(), changed == lock ? "1|1" : "0|0");
      EXPECT_TRUE(changed || problems.Count() > 0) << "refused without a word";
      if (changed && reached) {
        EXPECT_TRUE(change(!lock, 0));
      }
    }
    EXPECT_GT(nth, 12) << "each statement has failed once";
  }
  EXPECT_EQ(state(), "0|0");
}

}  // namespace
}  // namespace tessel::test
