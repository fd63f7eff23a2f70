#include <gtest/gtest.h>

#include "host/error.h"
#include "locking/locking_world.h"

namespace tessel::test {
namespace {

using embedded::HostCall;

const std::string kGearbox =
    "ASSEMBLY OBJECT_ID=1 CLASS_ID=1201 VRK_ID=A-1 REVISION=A REVISION_STG=1 STATE=3 VRK_DESCRIPTION=Gearbox "
    "MATERIAL=mixed FILE_NAME=gearbox.stp CAD_REF_FILE_NAME=gearbox.stp";
const std::string kFresh = "- " + kGearbox + "\n";
const std::string kLockedByAnna = "+ " + kGearbox +
                                  " VRKX_DX_LOCK_STATE=-1 VRKX_DX_LOCK_DESCRIPTION=Objekt geblockt "
                                  "VRKX_DX_LOCKED_BY=31 VRKX_DX_FIRST_LOCK_USE=-1\n";
const std::string kUnlocked = "+ " + kGearbox +
                              " UNDER_OPERATION=-32767 VRKX_DX_LOCK_STATE=0 VRKX_DX_LOCKED_BY=-2147483647 "
                              "VRKX_DX_FIRST_LOCK_USE=-1\n";
// The first id that the world's model leaves free.
constexpr int kFirstId = 60;
constexpr const char* kUnlockFailed = "exclamation||Unlocking doesn't work for Object 'row 0\n";

std::string Record(int id, const std::string& description = "VRK_DESCRIPTION=Kestrix") {
  return "OBJECT_LOCKING OBJECT_ID=" + std::to_string(id) +
         " CLASS_ID=30 OPER_CLASS_ID=1201 OPER_OBJECT_ID=1 LOCK_TYPE=8 " + description + "\n";
}

// Both halves of a failure: a refused call, and one that raises an error.
constexpr bool kWays[] = {false, true};

class ObjectLocking : public testing::Test {
 protected:
  // Locked by anna, as the tests of unlocking find it.
  void LockByAnna() {
    ASSERT_TRUE(world_.Program("anna").Lock(document_));
    static_cast<void>(world_.Seen());
  }
  LockingWorld world_;
  PcRecordListPtr document_ = world_.Rows({{1201, 1}});
};

TEST_F(ObjectLocking, LocksOnlyWhatQualifies) {
  const struct {
    Value state;
    Value underOperation;
    Value revisionStage;
    Value lockState;
    const char* seen;
  } cases[] = {
      {1, -1, 1, false, "refresh 1201:1 mode 1\n"},
      {3, -32767, 1, {}, "refresh 1201:1 mode 1\n"},
      {3, {}, 1, false, "refresh 1201:1 mode 1\n"},  // no operation was ever noted
      {4, -1, 1, false, ""},
      {4, -1, 1, true, ""},
      {2, -1, 1, false, ""},
      {1, 0, 1, false, ""},
      {1, 6, 1, true, ""},
      {1, -1, 2, false, ""},
      {1, -1, {}, false, ""},
      {1, -1, 1, true, "information||Object 'row 0' already locked!\n"},
  };
  for (const auto& each : cases) {
    LockingWorld world;
    world.Set({1201, 1}, {{"UNDER_OPERATION", each.underOperation},
                          {"REVISION_STG", each.revisionStage},
                          {"VRKX_DX_LOCK_STATE", each.lockState}});
    const auto before = world.Database();
    const bool locked = world.Program("anna").Lock(world.Rows({{1201, 1}}, each.state));
    EXPECT_EQ(world.Seen(), each.seen);
    EXPECT_EQ(locked, std::string(each.seen).starts_with("refresh"));
    EXPECT_EQ(world.Changes(before).empty(), !locked);
  }
}

TEST_F(ObjectLocking, ALockIsARecordAndTheAttributesOfTheDocument) {
  const auto before = world_.Database();
  EXPECT_TRUE(world_.Program("anna").Lock(document_));
  EXPECT_EQ(world_.Changes(before), kFresh + kLockedByAnna + "+ " + Record(kFirstId));
  const auto locked = world_.Database();
  EXPECT_FALSE(world_.Program("bert").Lock(document_));
  EXPECT_EQ(world_.Changes(locked), "");
  EXPECT_EQ(world_.Seen(), "refresh 1201:1 mode 1\ninformation||Object 'row 0' already locked!\n");
}

TEST_F(ObjectLocking, RecordsOfAHostWithTheOtherDescriptionAttribute) {
  CompanyOptions options = LockingCompany();
  options.lockDescription = "CN_DESCRIPTION";
  LockingWorld world(options);
  const auto before = world.Database();
  world.Program("anna").Lock(document_);
  EXPECT_NE(world.Changes(before).find(Record(kFirstId, "CN_DESCRIPTION=Kestrix")), std::string::npos);
  EXPECT_TRUE(world.Program("anna").Unlock(document_));
  EXPECT_EQ(world.Changes(before), kFresh + kUnlocked);
}

TEST_F(ObjectLocking, EveryRowIsHandledAndTheFirstDocumentNamesTheIdentifyingAttribute) {
  world_.Program("bert").Lock(world_.Rows({{1201, 1}, {1205, 8}}));
  EXPECT_EQ(world_.Seen(), "refresh 1205:8 mode 1\n");
  // A document that is gone ends its own row alone; the part is named by the assembly's attribute.
  EXPECT_TRUE(world_.Program("anna").Lock(world_.Rows({{1201, 1}, {1201, 99}, {1205, 8}, {1201, 6}})));
  EXPECT_EQ(world_.Seen(),
            "information||Object 'row 0' already locked!\n"
            "information||Object 'row 2' already locked!\n"
            "refresh 1201:6 mode 1\n");
  const auto lines = world_.Program("anna").trace.writer->Lines();
  EXPECT_NE(
      std::find(
          lines.begin(), lines.end(),
          "Fehlerabbruch im Modul (LockObject/CommonXFunctions) [91 Object variable not set: document]"),
      lines.end());
}

TEST_F(ObjectLocking, ALockThatCannotBeWrittenLeavesNothing) {
  const auto before = world_.Database();
  LoadedProgram& anna = world_.Program("anna");
  for (const HostCall call : {HostCall::kInsert, HostCall::kUpdate}) {
    for (const bool raise : kWays) {
      world_.host.FailNext({.call = call, .raise = raise});
      EXPECT_FALSE(anna.Lock(document_));
      EXPECT_EQ(world_.Changes(before), "");
      EXPECT_EQ(world_.Seen(), "");
    }
  }
  // The second document is locked though the first could not be.
  world_.host.FailNext({.call = HostCall::kUpdate});
  EXPECT_TRUE(anna.Lock(world_.Rows({{1201, 1}, {1201, 6}})));
  EXPECT_EQ(world_.Seen(), "refresh 1201:6 mode 1\n");
  EXPECT_TRUE(anna.Lock(document_));
}

TEST_F(ObjectLocking, ADocumentThatSomethingElseLocksIsToldAsLocked) {
  const PcObjectPtr foreign = world_.Program("anna").session->ObjectStore()->NewObject(30);
  foreign->SetValue("OPER_CLASS_ID", 1201);
  foreign->SetValue("OPER_OBJECT_ID", 1);
  foreign->SetValue("VRK_DESCRIPTION", "Other");
  ASSERT_EQ(foreign->Add(*world_.Program("anna").session->NewBehavior()), 0);
  const auto before = world_.Database();
  EXPECT_FALSE(world_.Program("anna").Lock(document_));
  EXPECT_EQ(world_.Seen(), "information||Object 'row 0' already locked!\n");
  EXPECT_FALSE(world_.Program("admin").Unlock(document_));
  EXPECT_EQ(world_.Seen(), "");
  EXPECT_EQ(world_.Changes(before), "");
}

TEST_F(ObjectLocking, UnlocksForTheOwnerAndForUsersWithTheRight) {
  const char* kRefused = "information||The Object 'row 0' is locked by another user!\n";
  const char* kDone = "refresh 1201:1 mode 1\n";
  const struct {
    const char* user;
    std::vector<std::string> settings;  // of the section "Lock"
    const char* seen;
  } cases[] = {{"anna", {}, kDone},
               {"bert", {}, kRefused},
               {"rolf", {}, kDone},
               {"ruth", {}, kRefused},  // the role in another letter case
               {"admin", {}, kDone},
               {"ruth", {"UnLockRole=unlock"}, kDone},
               {"rolf", {"UnLockRole=unlock"}, kRefused},
               {"bert", {"UnLockRole="}, kDone}};
  for (const auto& each : cases) {
    LockingWorld world(LockingCompany({{"Lock", each.settings}}));
    const auto fresh = world.Database();
    world.Program("anna").Lock(world.Rows({{1201, 1}}));
    static_cast<void>(world.Seen());
    const auto locked = world.Database();
    const bool unlocked = world.Program(each.user).Unlock(world.Rows({{1201, 1}}, std::int16_t{4}));
    EXPECT_EQ(world.Seen(), each.seen) << each.user << each.settings.size();
    EXPECT_EQ(unlocked, each.seen == kDone);
    if (unlocked) {
      EXPECT_EQ(world.Changes(fresh), kFresh + kUnlocked);
    } else {
      EXPECT_EQ(world.Changes(locked), "");
    }
  }
}

TEST_F(ObjectLocking, WhatIsNotLockedIsNotUnlocked) {
  const auto before = world_.Database();
  EXPECT_FALSE(world_.Program("admin").Unlock(world_.Rows({{1201, 1}, {1201, 99}})));
  EXPECT_EQ(world_.Changes(before), "");
  EXPECT_EQ(world_.Seen(), "");
}

TEST_F(ObjectLocking, AFailingDeleteLeavesTheLock) {
  LockByAnna();
  const auto locked = world_.Database();
  for (const bool raise : kWays) {
    world_.host.FailNext({.call = HostCall::kDelete, .raise = raise});
    EXPECT_FALSE(world_.Program("anna").Unlock(document_));
    EXPECT_EQ(world_.Seen(), kUnlockFailed);
    EXPECT_EQ(world_.Changes(locked), "");
  }
}

TEST_F(ObjectLocking, AfterAFailingUpdateTheLockCanStillBeRemoved) {
  const auto fresh = world_.Database();
  LockByAnna();
  for (const bool raise : kWays) {
    const auto locked = world_.Database();
    world_.host.FailNext({.call = HostCall::kUpdate, .raise = raise});
    world_.Program("anna").Unlock(document_);
    EXPECT_EQ(world_.Seen(), std::string(kUnlockFailed) + "refresh 1201:1 mode 1\n");
    EXPECT_EQ(world_.Changes(locked), "");
  }
  EXPECT_TRUE(world_.Program("anna").Unlock(document_));
  EXPECT_EQ(world_.Changes(fresh), kFresh + kUnlocked);
}

// What a fault of an earlier version left: one half of a lock, the record's or the document's.
TEST_F(ObjectLocking, AHalfLockIsUnlockedByWhoeverMay) {
  const auto fresh = world_.Database();
  LockByAnna();
  const PcObjectPtr record = world_.Program("anna").session->ObjectStore()->Object({30, kFirstId});
  ASSERT_EQ(record->Delete(*world_.Program("anna").session->NewBehavior()), 0);
  world_.Program("bert").Unlock(document_);
  EXPECT_EQ(world_.Seen(), "information||The Object 'row 0' is locked by another user!\n");
  EXPECT_TRUE(world_.Program("anna").Unlock(document_));
  EXPECT_EQ(world_.Changes(fresh), kFresh + kUnlocked);
  EXPECT_EQ(world_.Seen(), "refresh 1201:1 mode 1\n");

  const auto unlocked = world_.Database();
  LockByAnna();
  world_.Set({1201, 1}, {{"VRKX_DX_LOCK_STATE", false}, {"VRKX_DX_LOCKED_BY", Value()}});
  EXPECT_TRUE(world_.Program("bert").Unlock(document_));
  EXPECT_EQ(world_.Seen(), "refresh 1201:1 mode 1\n");
  EXPECT_EQ(world_.Changes(unlocked).find("OBJECT_LOCKING"), std::string::npos);
}

TEST_F(ObjectLocking, NothingHappensWhenTheStartUpFails) {
  LockingWorld world(LockingCompany({{"Settings", {"UseServerMonitor=perhaps"}}}));
  const auto before = world.Database();
  EXPECT_FALSE(world.Program("anna").Lock(document_));
  EXPECT_NE(world.Seen().find("critical|Kestrix Error|No start\n"), std::string::npos);
  EXPECT_EQ(world.Changes(before), "");
}

}  // namespace
}  // namespace tessel::test
