#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <thread>

#include "embedded/store/new_database.h"
#include "locking/locking_world.h"

namespace tessel::test {
namespace {

using std::chrono::steady_clock;

constexpr int kRounds = 1000;
// On a machine that is busy with other work the test ends earlier, but not before it has said something.
constexpr std::chrono::seconds kTimeLimit(20);
constexpr int kFewestRounds = 50;

// Where two threads wait for each other, a second at most.
class MeetingPoint {
 public:
  void Wait() {
    const int both = (++arrived_ + 1) / 2 * 2;
    const auto deadline = steady_clock::now() + std::chrono::seconds(1);
    while (arrived_ < both && steady_clock::now() < deadline)
      std::this_thread::yield();
  }

 private:
  std::atomic<int> arrived_ = 0;
};

// Holds a session up right before it reads the document that it is about to lock.
class MeetingWriter : public RecordingTraceWriter {
 public:
  explicit MeetingWriter(MeetingPoint& meeting) : meeting_(meeting) {}
  void WriteEntry(const std::string& text, std::int16_t number, const std::string& description,
                  const std::string& directory, const std::string& name, bool on) override {
    RecordingTraceWriter::WriteEntry(text, number, description, directory, name, on);
    if (text.starts_with("Read document(LockObject/")) meeting_.Wait();
  }

 private:
  MeetingPoint& meeting_;
};

// A client of its own on a database file.
struct Client {
  Client(const std::string& database, const std::string& login, MeetingPoint& meeting)
      : host(database, HostOptionsOf(machine, user)),
        program(machine, host, user, login, std::make_shared<MeetingWriter>(meeting)),
        rows(DocumentRows(host, {{1201, 1}}, std::int16_t{1})) {}

  // Lock records of the document, and who its attributes name: "1|31"; nothing when it is not locked.
  [[nodiscard]] std::string LockState() {
    return QueryRows(*program.session,
                     "select (select count(*) from OBJECT_LOCKING) as RECORDS, VRKX_DX_LOCKED_BY from "
                     "ASSEMBLY where OBJECT_ID = 1 and VRKX_DX_LOCK_STATE = -1");
  }

  Machine machine;
  Onlooker user;
  embedded::EmbeddedHost host;
  LoadedProgram program;
  PcRecordListPtr rows;
};

TEST(ConcurrentLocking, TwoSessionsLeaveOneRecordAndOneOwner) {
  Machine machine;
  MeetingPoint meeting;
  const std::string database = NewPlace(machine.platform.files, machine.folder, "company");
  embedded::CreateDatabase(
      machine.platform.files, database,
      machine.folder.Write("model/company.json", CompanyModel(machine.folder, LockingCompany())));
  Client anna(database, "anna", meeting);
  Client bert(database, "bert", meeting);
  const auto end = steady_clock::now() + kTimeLimit;
  int round = 0;
  for (; round < kRounds && steady_clock::now() < end && !HasFailure(); ++round) {
    bool bertLocked = false;
    std::thread other([&] { bertLocked = bert.program.Lock(bert.rows); });
    const bool annaLocked = anna.program.Lock(anna.rows);
    other.join();

    EXPECT_NE(annaLocked, bertLocked) << "round " << round;
    Client& winner = annaLocked ? anna : bert;
    Client& loser = annaLocked ? bert : anna;
    EXPECT_EQ(anna.LockState(), annaLocked ? "1|31" : "1|32") << "round " << round;
    EXPECT_EQ(winner.user.Take(), "refresh 1201:1 mode 1\n") << "round " << round;
    EXPECT_EQ(loser.user.Take(), "information||Object 'row 0' already locked!\n") << "round " << round;

    EXPECT_TRUE(winner.program.Unlock(winner.rows)) << "round " << round;
    EXPECT_EQ(anna.LockState(), "") << "round " << round;
    static_cast<void>(winner.user.Take());
    anna.program.trace.writer->Clear();
    bert.program.trace.writer->Clear();
  }
  EXPECT_GE(round, kFewestRounds) << "the sessions hold each other up";
}

}  // namespace
}  // namespace tessel::test
