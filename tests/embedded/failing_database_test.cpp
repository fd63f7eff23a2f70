// Every statement of a story refused once: the story ends whole or leaves nothing.
#include <gtest/gtest.h>

#include <filesystem>

#include "embedded/small_world.h"

namespace tessel::test {
namespace {

using embedded::DatabaseError;

constexpr int kInputOutput = 10;

// Refuses the n-th statement from now on, and counts.
struct FailingStatements {
  int nth = 0;
  int count = 0;
  embedded::StatementWatch Watch() {
    return [this](std::string_view) {
      if (++count == nth) throw DatabaseError("disk I/O error", kInputOutput);
    };
  }
};

class StatementWorld : public Watched, public Machine {
 public:
  StatementWorld() {
    folder.MakeFolder("model");
    folder.Write("model/a.stp", "content");
    folder.Write("model/m.json", SmallModel(Document("Part", 1, "a.stp") + "," + Document("Part", 2)));
  }
  void Create(const embedded::StatementWatch& watch) {
    embedded::CreateDatabase(platform.files, place, folder.Path("model/m.json"), watch);
  }
  PcSessionPtr Open(embedded::StatementWatch watch) {
    embedded::HostOptions options = HostOptionsOf(*this, user);
    options.statementWatch = std::move(watch);
    return embedded::EmbeddedHost(place, options).OpenSession("ben");
  }

  std::string place = NewPlace(platform.files, folder);
};

TEST(FailingDatabaseTest, ADatabaseIsMadeWholeOrNotAtAllAtEveryStatement) {
  StatementWorld world;
  FailingStatements failing;
  world.Create(failing.Watch());
  const int statements = failing.count;
  ASSERT_GT(statements, 20);
  std::filesystem::remove(world.folder.Path("x.db"));
  std::filesystem::remove_all(world.folder.Path("x.db.vault"));
  world.place = NewPlace(world.platform.files, world.folder);
  for (failing.nth = 1; failing.nth <= statements; ++failing.nth) {
    failing.count = 0;
    EXPECT_NE(ErrorOf([&] { world.Create(failing.Watch()); }).find("disk I/O error"), std::string::npos)
        << failing.nth;
    for (const char* name : {"x.db", "x.db.vault", "x.db.new", "x.db.new.db", "x.db.new.db.vault",
                             "x.db.vault.new", "x.db.vault.new.vault"})
      EXPECT_FALSE(std::filesystem::exists(world.folder.Path(name))) << failing.nth << " " << name;
  }
  world.Create({});
  EXPECT_EQ(world.folder.Read("x.db.vault/a.stp"), "content");
}

TEST(FailingDatabaseTest, AUnitOfWorkStandsWholeOrNotAtAllAtEveryStatement) {
  StatementWorld world;
  world.Create({});
  FailingStatements failing;
  const PcSessionPtr session = world.Open(failing.Watch());
  const PcBehaviorPtr behavior = session->NewBehavior();
  const auto story = [&] {
    const PcUnitOfWorkPtr work = session->BeginUnitOfWork("mark " + std::to_string(failing.nth));
    const PcObjectPtr part = Required(session->ObjectStore()->Object({kPart, 1}), "part");
    const PcObjectPtr exchange = session->ObjectStore()->NewObject(kExchange);
    exchange->SetValue("VRK_ID", exchange->NextSequenceValue("VRK_ID"));
    if (exchange->Add(*behavior) != 0) throw HostError("refused");
    if (!exchange->AddLink(*part, kGeneralLink, *behavior)) throw HostError("refused");
    part->SetValue("VRK_DESCRIPTION", Value("sent"));
    if (part->Update(*behavior) != 0) throw HostError("refused");
    work->Commit();
  };
  const auto state = [&] {
    return QueryRows(*session, "select count(*) from DATA_EXCHANGE") + " " +
           QueryRows(*session, "select count(*) from GENERAL_LINK") + " " +
           QueryRows(*session, "select VRK_DESCRIPTION from PART where OBJECT_ID=1");
  };
  bool failed = true;
  for (failing.nth = 1; failed; ++failing.nth) {
    ASSERT_LT(failing.nth, 100);
    failing.count = 0;
    failed = ErrorNumberOf(story) != 0;
    failing.count = failing.nth;
    EXPECT_EQ(state(), failed ? "0 0 -" : "1 1 sent") << failing.nth;
    EXPECT_EQ(session->WasCommitted("mark " + std::to_string(failing.nth)), !failed) << failing.nth;
  }
  EXPECT_GT(failing.nth, 12) << "each statement of the story has failed once";
  EXPECT_EQ(QueryRows(*session, "select VRK_ID from DATA_EXCHANGE"), "DX-0007%") << "no number was used up";
}

TEST(FailingDatabaseTest, AnUnfinishedCreationIsRemovedByTheNextOneAlone) {
  StatementWorld world;
  // As a process leaves it that is killed between the names of the vault and of the database.
  world.folder.Write("x.db.new", "vault");
  world.folder.Write("x.db.new.db", "half");
  world.folder.MakeFolder("x.db.vault");
  EXPECT_TRUE(embedded::RemoveUnfinishedDatabase(world.platform.files, world.folder.Path("x.db")));
  for (const char* name : {"x.db.vault", "x.db.new", "x.db.new.db"})
    EXPECT_FALSE(std::filesystem::exists(world.folder.Path(name))) << name;
  EXPECT_FALSE(embedded::RemoveUnfinishedDatabase(world.platform.files, world.folder.Path("x.db")));

  world.folder.Write("x.db.vault/mine.stp", "of somebody else");
  EXPECT_NE(ErrorOf([&] { world.Create({}); }).find("exists already"), std::string::npos);
  EXPECT_EQ(world.folder.Read("x.db.vault/mine.stp"), "of somebody else");
  std::filesystem::remove_all(world.folder.Path("x.db.vault"));

  const auto other = world.platform.files.Hold(world.folder.Path("x.db.new"), true);
  EXPECT_NE(ErrorOf([&] { world.Create({}); }).find("is being made by somebody else"), std::string::npos);
}

}  // namespace
}  // namespace tessel::test
