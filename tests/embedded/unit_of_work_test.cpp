#include "host/unit_of_work.h"

#include <gtest/gtest.h>

#include "embedded/small_world.h"
#include "host/ascii.h"

namespace tessel::test {
namespace {

using embedded::EmbeddedHost;

// Two hosts on one database file, as two clients of a site would be.
class TwoClients : public Watched, public Machine {
 public:
  TwoClients() {
    folder.MakeFolder("model");
    folder.Write("model/m.json", SmallModel(Document("Part", 1) + "," + Document("Part", 2)));
    const std::string place = NewPlace(platform.files, folder);
    embedded::CreateDatabase(platform.files, place, folder.Path("model/m.json"));
    embedded::HostOptions options = HostOptionsOf(*this, user);
    options.busyTimeout = std::chrono::milliseconds(1);
    mine = EmbeddedHost(place, options).OpenSession("ben");
    theirs = EmbeddedHost(place, options).OpenSession("ben");
  }
  static int Describe(const PcSessionPtr& session, const std::string& text) {
    const PcObjectPtr part = session->ObjectStore()->Object({kPart, 1});
    part->SetValue("VRK_DESCRIPTION", Value(text));
    return part->Update(*session->NewBehavior());
  }
  static std::string Description(const PcSessionPtr& session) {
    return session->ObjectStore()->Object({kPart, 1})->GetText("VRK_DESCRIPTION");
  }

  PcSessionPtr mine;
  PcSessionPtr theirs;
};

TEST(UnitOfWorkTest, WhatIsNotCommittedLeavesNeitherRowsNorMemory) {
  for (const bool commit : {false, true}) {
    SmallWorld world(Document("Part", 1) + "," + Document("Part", 2));
    const PcObjectPtr part = world.Object(kPart, 1);
    part->SetValue("WEIGHT", Value(3));
    const PcObjectPtr exchange = world.NewObject(kExchange);
    const auto story = [&] {
      const PcUnitOfWorkPtr work = world.session->BeginUnitOfWork("");
      exchange->SetValue("VRK_ID", exchange->NextSequenceValue("VRK_ID"));
      EXPECT_EQ(exchange->Add(*world.behavior), 0);
      EXPECT_NE(exchange->AddLink(*part, kGeneralLink, *world.behavior), nullptr);
      part->SetValue("VRK_ID", Value("longer than twenty characters"));
      EXPECT_EQ(part->Update(*world.behavior), 275) << "fails alone";
      part->SetValue("VRK_ID", Value("new"));
      EXPECT_EQ(part->Update(*world.behavior), 0);
      EXPECT_EQ(world.Object(kPart, 2)->Delete(*world.behavior), 0);
      EXPECT_EQ(ErrorNumberOf([&] { return world.session->BeginUnitOfWork(""); }), 440);
      if (commit) work->Commit();
    };
    story();
    EXPECT_EQ(world.Rows("select VRK_ID from DATA_EXCHANGE"), commit ? "DX-0007%" : "");
    EXPECT_EQ(world.Rows("select count(*) from GENERAL_LINK"), commit ? "1" : "0");
    EXPECT_EQ(world.Rows("select OBJECT_ID, VRK_ID, WEIGHT from PART"),
              commit ? "1|new|3" : "1|D-1|-; 2|D-2|-");
    EXPECT_EQ(part->GetText("VRK_ID"), commit ? "new" : "D-1");
    EXPECT_EQ(exchange->GetObjectId() != 0, commit);
    if (commit) continue;
    story();  // the same objects, once more
    EXPECT_EQ(part->Update(*world.behavior), 0);
    EXPECT_EQ(world.Rows("select WEIGHT from PART where OBJECT_ID=1"), "3") << "set before the unit";
  }
}

TEST(UnitOfWorkTest, AMarkTellsOthersWhetherAUnitStands) {
  TwoClients clients;
  {
    const PcUnitOfWorkPtr work = clients.mine->BeginUnitOfWork("export 1");
    EXPECT_EQ(TwoClients::Describe(clients.mine, "draft"), 0);
    EXPECT_FALSE(clients.theirs->WasCommitted("export 1"));
    EXPECT_EQ(TwoClients::Description(clients.theirs), "");
    EXPECT_EQ(TwoClients::Describe(clients.theirs, "theirs"), 5) << "waits, and says that it is busy";
    EXPECT_EQ(ErrorNumberOf([&] { return clients.theirs->BeginUnitOfWork(""); }), 5);
  }
  EXPECT_FALSE(clients.mine->WasCommitted("export 1"));
  const PcUnitOfWorkPtr work = clients.mine->BeginUnitOfWork("export 1");
  EXPECT_EQ(TwoClients::Describe(clients.mine, "final"), 0);
  work->Commit();
  EXPECT_TRUE(clients.theirs->WasCommitted("export 1"));
  EXPECT_EQ(TwoClients::Description(clients.theirs), "final");
  clients.theirs->ForgetMark("export 1");
  EXPECT_FALSE(clients.mine->WasCommitted("export 1"));
}

TEST(UnitOfWorkTest, AReadingSeesOneMomentUntilItsSessionWrites) {
  TwoClients clients;
  const PcReadingPtr reading = clients.mine->BeginReading();
  const PcReadingPtr inner = clients.mine->BeginReading();
  EXPECT_EQ(TwoClients::Description(clients.mine), "");
  EXPECT_EQ(TwoClients::Describe(clients.theirs, "theirs"), 0);
  EXPECT_EQ(TwoClients::Description(clients.mine), "");
  const PcUnitOfWorkPtr work = clients.mine->BeginUnitOfWork("");
  EXPECT_EQ(TwoClients::Description(clients.mine), "theirs");
  EXPECT_EQ(TwoClients::Describe(clients.mine, "mine"), 0);
  work->Commit();
  EXPECT_EQ(TwoClients::Description(clients.mine), "mine");
}

TEST(UnitOfWorkTest, ARefusalKeepsTheReasonOfTheDatabase) {
  SmallWorld world(Document("Part", 1));
  const PcObjectPtr part = world.Object(kPart, 1);
  part->SetValue("VRK_ID", Value("longer than twenty characters"));
  const int code = part->Update(*world.behavior);
  const std::string reason = world.session->ErrorText(code);
  EXPECT_NE(UpperCase(reason).find("CHECK CONSTRAINT"), std::string::npos) << reason;
  EXPECT_NE(UpperCase(reason).find("VRK_ID"), std::string::npos) << reason;
  EXPECT_EQ(world.session->ErrorText(13), "database or disk is full");
  EXPECT_EQ(world.session->ErrorText(4711), "");
}

}  // namespace
}  // namespace tessel::test
