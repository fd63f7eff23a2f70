#include <gtest/gtest.h>

#include <set>
#include <thread>

#include "embedded/small_world.h"

namespace tessel::test {
namespace {

using embedded::EmbeddedHost;
using embedded::HostCall;

TEST(ObjectTest, ANewObjectHasDefaultsThenAnIdAndItsRow) {
  SmallWorld world;
  const PcObjectPtr part = world.NewObject(kPart);
  EXPECT_EQ(part->GetObjectId(), 0);
  EXPECT_EQ(part->GetValue("STATE"), Value(std::int16_t{1}));
  EXPECT_EQ(part->GetValue("VRK_STATE"), Value(1));
  EXPECT_TRUE(part->GetValue("VRK_ID").IsNull());
  part->SetValue("VRK_ID", Value(12));
  part->SetValue("LOCKED", Value("true"));
  EXPECT_EQ(ErrorOf([&] { part->SetValue("STATE", Value(70000)); }), "6 Overflow");
  EXPECT_EQ(ErrorNumberOf([&] { part->SetValue("OBJECT_ID", Value(5)); }), 440);
  EXPECT_EQ(ErrorOf([&] { return part->GetValue("NOPE"); }), "440 Class \"Part\" has no attribute \"NOPE\"");
  ASSERT_EQ(part->Add(*world.behavior), 0);
  EXPECT_EQ(part->Key(), (ObjectKey{kPart, 102}));
  EXPECT_EQ(world.Rows("select OBJECT_ID, CLASS_ID, VRK_ID, LOCKED, LOCKED_BY from PART"),
            "102|1202|12|-1|-2147483647");
  EXPECT_EQ(part->Add(*world.behavior), embedded::kCodeAlreadyAdded);
}

TEST(ObjectTest, UpdateWritesOnlyWhatWasSet) {
  SmallWorld world(Document("Part", 1));
  const PcObjectPtr mine = world.Object(kPart, 1);
  const PcObjectPtr theirs = world.Object(kPart, 1);
  mine->SetValue("VRK_DESCRIPTION", Value("mine"));
  theirs->SetValue("WEIGHT", Value(3));
  EXPECT_EQ(mine->Update(*world.behavior), 0);
  EXPECT_EQ(theirs->Update(*world.behavior), 0);
  EXPECT_EQ(world.Rows("select VRK_DESCRIPTION, WEIGHT from PART"), "mine|3");
  mine->SetValue("VRK_DESCRIPTION", Value("lost"));
  mine->ReadData();
  EXPECT_EQ(mine->GetText("VRK_DESCRIPTION"), "mine");
}

TEST(ObjectTest, RefusedWritesReturnACodeAndChangeNothing) {
  SmallWorld world(Document("Part", 1) + "," + Document("Part", 2));
  const PcObjectPtr part = world.Object(kPart, 1);
  part->SetValue("VRK_ID", Value("longer than twenty characters"));
  EXPECT_EQ(part->Update(*world.behavior), 275);
  EXPECT_EQ(world.Rows("select VRK_ID from PART where OBJECT_ID=1"), "D-1");

  EXPECT_EQ(world.Object(kPart, 2)->Delete(*world.behavior), 0);
  const PcObjectPtr gone = world.Object(kPart, 2);
  EXPECT_EQ(gone, nullptr);
  const PcObjectPtr stale = world.Object(kPart, 1);
  EXPECT_EQ(world.Object(kPart, 1)->Delete(*world.behavior), 0);
  EXPECT_EQ(stale->Update(*world.behavior), embedded::kCodeObjectGone);
  EXPECT_EQ(stale->Delete(*world.behavior), embedded::kCodeObjectGone);
  EXPECT_EQ(ErrorOf([&] { stale->ReadData(); }), "9001 The database has no object 1202_1");
  EXPECT_EQ(world.Object(4711, 1), nullptr);
}

TEST(ObjectTest, UniqueSetsLetOneRecordThrough) {
  SmallWorld world;
  const auto lock = [&](std::int16_t classId, int objectId) {
    const PcObjectPtr record = world.NewObject(kLocking);
    record->SetValue("OPER_CLASS_ID", Value(classId));
    record->SetValue("OPER_OBJECT_ID", Value(objectId));
    return record->Add(*world.behavior);
  };
  EXPECT_EQ(lock(1202, 5), 0);
  EXPECT_EQ(lock(1202, 5), 2067);
  EXPECT_EQ(lock(1201, 5), 0);
  EXPECT_EQ(world.Rows("select OPER_CLASS_ID, OPER_OBJECT_ID from OBJECT_LOCKING order by OBJECT_ID"),
            "1202|5; 1201|5");
}

TEST(ObjectTest, LinksAreRowsOfTheirClassAndGoWithTheirEnds) {
  SmallWorld world(Document("Assembly", 1) + "," + Document("Part", 2));
  const PcObjectPtr top = world.Object(kAssembly, 1);
  const PcObjectPtr part = world.Object(kPart, 2);
  const PcObjectPtr link = top->AddLink(*part, kStructure, *world.behavior);
  ASSERT_NE(link, nullptr);
  EXPECT_EQ(
      world.Rows("select * from STRUCTURE where OBJECT_ID1='1' AND CLASS_ID1='1201' AND OBJECT_ID2='2' AND "
                 "CLASS_ID2='1202'"),
      std::to_string(link->GetObjectId()) + "|2001|1|1201|2|1202|1|1");
  const PcObjectPtr user = world.session->CurrentUser()->UserObject();
  EXPECT_EQ(user->AddLink(*part, kStructure, *world.behavior), nullptr) << "the class does not tie users";
  EXPECT_NE(user->AddLink(*part, kGeneralLink, *world.behavior), nullptr);
  EXPECT_NE(ErrorOf([&] { return top->AddLink(*part, kPart, *world.behavior); }), "");

  EXPECT_EQ(world.Object(kPart, 2)->Delete(*world.behavior), 0);
  EXPECT_EQ(world.Rows("select * from STRUCTURE") + world.Rows("select * from GENERAL_LINK"), "");
  EXPECT_EQ(top->AddLink(*part, kStructure, *world.behavior), nullptr) << "the part is gone";
}

TEST(ObjectTest, SequencesAreFormattedAndGoOn) {
  SmallWorld world;
  const PcObjectPtr exchange = world.NewObject(kExchange);
  EXPECT_EQ(exchange->NextSequenceValue("VRK_ID"), Value("DX-0007%"));
  EXPECT_EQ(exchange->NextSequenceValue("VRK_ID"), Value("DX-0008%"));
  EXPECT_NE(ErrorOf([&] { return world.NewObject(kPart)->NextSequenceValue("VRK_ID"); }), "");
  const PcClassPtr definition = exchange->Class();
  EXPECT_EQ(world.session->RelatedObject(*definition->FindAttribute("VRK_ID"))->AttributeName(), "VRK_ID");
  EXPECT_EQ(world.session->RelatedObject(*definition->FindAttribute("CLASS_ID")), nullptr);
}

TEST(ObjectTest, TwoHostsOnOneFileDrawDifferentNumbersAndLockOnce) {
  SmallWorld world;
  world.platform.files.WriteBytes(world.folder.Path("m.json"), SmallModel());
  const std::string path = world.folder.Path("shared.db");
  embedded::CreateDatabase(world.platform.files, path, world.folder.Path("m.json"));
  constexpr int kRounds = 50;
  struct Outcome {
    std::set<std::string> numbers;
    std::set<ObjectId> ids;
    std::set<std::string> identifiers;
    int locks = 0;
  };
  Outcome outcomes[2];
  const auto work = [&](Outcome& outcome) {
    embedded::HostOptions options = HostOptionsOf(world, world.user);
    options.busyTimeout = std::chrono::minutes(1);  // each commit waits for a disk that others use, too
    EmbeddedHost host(path, options);
    const PcSessionPtr session = host.OpenSession("ben");
    const PcBehaviorPtr behavior = session->NewBehavior();
    outcome.identifiers.insert(session->Identifier());
    for (int round = 0; round < kRounds; ++round) {
      const PcObjectPtr exchange = session->ObjectStore()->NewObject(kExchange);
      exchange->SetValue("VRK_ID", exchange->NextSequenceValue("VRK_ID"));
      outcome.numbers.insert(exchange->GetText("VRK_ID"));
      if (exchange->Add(*behavior) == 0) outcome.ids.insert(exchange->GetObjectId());
      const PcObjectPtr lock = session->ObjectStore()->NewObject(kLocking);
      lock->SetValue("OPER_CLASS_ID", Value(1));
      lock->SetValue("OPER_OBJECT_ID", Value(round));
      if (lock->Add(*behavior) == 0) ++outcome.locks;
    }
  };
  std::thread other([&] { work(outcomes[1]); });
  work(outcomes[0]);
  other.join();
  outcomes[0].numbers.merge(outcomes[1].numbers);
  outcomes[0].ids.merge(outcomes[1].ids);
  outcomes[0].identifiers.merge(outcomes[1].identifiers);
  EXPECT_EQ(outcomes[0].numbers.size(), 2u * kRounds);
  EXPECT_EQ(outcomes[0].ids.size(), 2u * kRounds);
  EXPECT_EQ(outcomes[0].identifiers.size(), 2u);
  EXPECT_EQ(outcomes[0].locks + outcomes[1].locks, kRounds);
}

TEST(ObjectTest, FailsTheCallThatItIsToldToFail) {
  SmallWorld world(Document("Part", 1) + "," + Document("Part", 2));
  const PcObjectPtr part = world.Object(kPart, 1);
  const PcObjectPtr other = world.Object(kPart, 2);
  world.host.FailNext({HostCall::kUpdate, kPart, 2, 99});
  EXPECT_EQ(part->Update(*world.behavior), 0);
  EXPECT_EQ(part->Update(*world.behavior), 99);
  EXPECT_EQ(part->Update(*world.behavior), 0);
  world.host.FailNext({HostCall::kDelete, kExchange, 1, 98});
  world.host.FailNext({HostCall::kInsert, 0, 1, 97, true});
  world.host.FailNext({HostCall::kLink});
  world.host.FailNext({HostCall::kRead, kPart, 1, 96});
  world.host.FailNext({HostCall::kQuery, 0, 1, 95});
  world.host.FailNext({HostCall::kRetrieve, kPart, 1, 94});
  EXPECT_EQ(other->Delete(*world.behavior), 0) << "another class";
  EXPECT_EQ(ErrorNumberOf([&] { return world.NewObject(kLocking)->Add(*world.behavior); }), 97);
  EXPECT_EQ(part->AddLink(*part, kGeneralLink, *world.behavior), nullptr);
  EXPECT_EQ(ErrorNumberOf([&] { part->ReadData(); }), 96);
  EXPECT_EQ(ErrorNumberOf([&] { return world.Rows("select 1 as A from PART"); }), 95);
  const PcAttributeListPtr list = world.session->ObjectStore()->NewAttributeList();
  EXPECT_EQ(ErrorNumberOf([&] { return part->Children(*list, *world.behavior); }), 94);
  world.host.ClearFailures();
  EXPECT_NE(part->AddLink(*part, kGeneralLink, *world.behavior), nullptr);
}

}  // namespace
}  // namespace tessel::test
