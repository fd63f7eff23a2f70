#include "hostlib/qel_world.h"

namespace tessel::test {
namespace {

TEST_F(QelFunctionPoolTest, ANewObjectHasItsDefaultsAndNumbersButIsNotSaved) {
  PcObjectPtr part;
  EXPECT_EQ(pool_.NewObject(session_, {.name = "Part"}, 1, part), part);
  ASSERT_TRUE(part);
  EXPECT_EQ(part->GetObjectId(), 0);
  EXPECT_EQ(part->GetText("VRK_ID"), "N-005");
  EXPECT_EQ(part->GetText("REVISION"), "A");  // its sequence is left alone
  EXPECT_EQ(part->GetText("STATE"), "1");
  EXPECT_EQ(world_.Rows("select count(*) from PART"), "2");
}

TEST_F(QelFunctionPoolTest, LinksAnObjectToADesktop) {
  EXPECT_TRUE(pool_.LinkObjectToDesktop(gearbox_, anna_, 3, true, false));
  const std::string id = world_.Rows("select OBJECT_ID from GENERAL_LINK where CLASS_ID2 = 10");
  EXPECT_EQ(world_.Rows("select OBJECT_ID1, CLASS_ID1, OBJECT_ID2 from GENERAL_LINK where CLASS_ID2 = 10"),
            "1|1201|31");
  EXPECT_EQ(world_.driver.TakeTranscript(), "refresh 2000:" + id + " mode 1\nrefresh 1201:1 mode 1\n");
  EXPECT_FALSE(pool_.LinkObjectToDesktop(cover_, anna_, 3, true, true));  // not its class
  EXPECT_EQ(world_.driver.TakeTranscript(), "");
}

TEST_F(QelFunctionPoolTest, LinksAnObjectBelowAParentAndToAnObject) {
  EXPECT_FALSE(pool_.LinkObjectToParent(gearbox_, shaft_, 0, true, true));  // a part has nothing below it
  EXPECT_TRUE(pool_.LinkObjectToParent(shaft_, gearbox_, 0, false, false));
  EXPECT_EQ(world_.Rows("select OBJECT_ID2 from STRUCTURE where OBJECT_ID1 = 1 order by OBJECT_ID"),
            "2; 3; 4");
  EXPECT_EQ(pool_.LinkObjectToObject(*shaft_, *gearbox_, {.name = "General Link"})->GetText("OBJECT_ID2"),
            "1");
  EXPECT_FALSE(pool_.LinkObjectToObject(*shaft_, *gearbox_, {}));
  world_.host.FailNext({.call = embedded::HostCall::kLink});
  EXPECT_FALSE(pool_.LinkObjectToParent(shaft_, gearbox_, 0, true, true));
  EXPECT_EQ(world_.driver.Transcript(), "");
}

TEST_F(QelFunctionPoolTest, RefreshesTheWindowOfOneSessionOrOfAll) {
  const PcSessionPtr other = world_.host.OpenSession("bert", "b");
  pool_.RefreshActivePelicoreWindow(*gearbox_, 2);
  EXPECT_EQ(world_.driver.TakeTranscript(), "refresh 1201:1 mode 2\n");
  pool_.RefreshAllPelicoreWindows(*gearbox_, 1);
  EXPECT_EQ(world_.driver.TakeTranscript(), "refresh 1201:1 mode 1\nrefresh 1201:1 mode 1\n");
}

}  // namespace
}  // namespace tessel::test
