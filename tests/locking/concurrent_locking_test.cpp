#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <barrier>
#include <chrono>
#include <thread>

#include "embedded/model_file.h"
#include "locking/locking_world.h"

namespace tessel::test {
namespace {

constexpr int kRounds = 1000;
constexpr std::chrono::seconds kTimeLimit(20);

// A client of its own on a database file.
struct Client {
  Client(const std::string& database, const std::string& login)
      : host(database, machine.HostOptions()), program(machine, host, login) {
    rows = host.CreateRecordList();
    rows->AddColumn("CLASS_ID", 2, static_cast<int>(ColumnType::kInteger));
    rows->AddColumn("OBJECT_ID", 4, static_cast<int>(ColumnType::kLong));
    rows->AddColumn("STATE", 2, static_cast<int>(ColumnType::kInteger));
    rows->AddColumn("VRK_ID", 40, static_cast<int>(ColumnType::kText));
    rows->SetValue("CLASS_ID", 0, std::int16_t{1201});
    rows->SetValue("OBJECT_ID", 0, 1);
    rows->SetValue("STATE", 0, std::int16_t{1});
    rows->SetValue("VRK_ID", 0, "A-1");
  }

  // Lock records of the document, and who its attributes name: "1 51".
  [[nodiscard]] std::string LockState() {
    const PcQueryPtr query = program.session->ObjectStore()->NewQuery();
    query->SetSql(
        "select (select count(*) from OBJECT_LOCKING) as RECORDS, VRKX_DX_LOCKED_BY from ASSEMBLY "
        "where OBJECT_ID = 1 and VRKX_DX_LOCK_STATE = -1");
    const PcRecordListPtr found = query->Run();
    if (found->RowCount() == 0) return "unlocked";
    return found->GetValue(0, 0).AsText() + " " + found->GetValue(1, 0).AsText();
  }

  Machine machine;
  embedded::EmbeddedHost host;
  LoadedProgram program;
  PcRecordListPtr rows;
};

TEST(ConcurrentLocking, TwoSessionsLeaveOneRecordAndOneOwner) {
  Machine machine;
  const std::string database = machine.folder.Path("locks.db");
  embedded::CreateDatabase(machine.Services().files, database,
                           machine.folder.Write("locks.json", LockingModel()));
  std::array<Client, 2> clients = {Client(database, "anna"), Client(database, "bert")};
  constexpr std::array<const char*, 2> kOwned = {"1 51", "1 52"};
  const std::string loserSees = "box \"\" information \"Object 'A-1' already locked!\"\n";
  const std::string winnerSees = "refresh 1201:1 mode 1\n";

  std::array<std::atomic<bool>, 2> locked{};
  std::atomic<bool> stop = false;
  std::barrier start(2);
  std::barrier end(2);
  std::array<int, 2> wins{};
  const auto begin = std::chrono::steady_clock::now();
  int rounds = 0;

  const auto lockOnce = [&](std::size_t self) {
    start.arrive_and_wait();
    if (stop) return false;
    locked[self] = clients[self].program.Lock(clients[self].rows);
    end.arrive_and_wait();
    return true;
  };
  std::thread other([&] {
    while (lockOnce(1)) {
      start.arrive_and_wait();  // the first client looks at the result
    }
  });
  for (; rounds < kRounds && !stop; ++rounds) {
    lockOnce(0);
    const std::size_t winner = locked[0] ? 0 : 1;
    ++wins[winner];
    EXPECT_NE(locked[0], locked[1]) << "round " << rounds;
    EXPECT_EQ(clients[0].LockState(), kOwned[winner]) << "round " << rounds;
    EXPECT_EQ(clients[winner].machine.user.Take(), winnerSees) << "round " << rounds;
    EXPECT_EQ(clients[1 - winner].machine.user.Take(), loserSees) << "round " << rounds;
    EXPECT_TRUE(clients[winner].program.Unlock(clients[winner].rows)) << "round " << rounds;
    EXPECT_EQ(clients[0].LockState(), "unlocked");
    static_cast<void>(clients[winner].machine.user.Take());
    clients[0].program.trace.writer->Clear();
    clients[1].program.trace.writer->Clear();
    if (HasFailure() || std::chrono::steady_clock::now() - begin > kTimeLimit) stop = true;
    start.arrive_and_wait();
  }
  if (!stop) {
    stop = true;
  }
  start.arrive_and_wait();
  other.join();
  EXPECT_EQ(rounds, kRounds) << "not done within the time limit";
  RecordProperty("wins of the first client", wins[0]);
}

}  // namespace
}  // namespace tessel::test
