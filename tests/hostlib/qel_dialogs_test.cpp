#include "hostlib/qel_world.h"

namespace tessel::test {
namespace {

TEST_F(QelFunctionPoolTest, ShowsAnObjectInTheDialogOfItsMode) {
  const struct {
    int mode;
    int modal;
    const char* shown;
    bool returnsObject;
  } cases[] = {{1, 1, "object dialog mode 1 \"t\" 1201:1 [1]\n", true},
               {2, 1, "object dialog mode 2 \"t\" 1201:1 [1]\n", true},
               {7, 1, "object dialog mode 1 \"t\" 1201:1 [1]\n", true},
               {11, 1, "object dialog mode 1 \"t\" 1201:1 [1]\n", true},
               {9, 1, "object dialog mode 9 \"t\" [1]\n", false},  // brings no object
               {3, 0, "object dialog modeless mode 3 \"t\" 1201:1 [1]\n", false}};
  for (const auto& each : cases) {
    const PcObjectPtr shown = pool_.DisplayObject(gearbox_, 0, each.mode, "t", 1, each.modal);
    EXPECT_EQ(world_.driver.TakeTranscript(), each.shown);
    EXPECT_EQ(shown != nullptr, each.returnsObject) << each.mode;
  }
  world_.driver.AnswerObject(2);
  EXPECT_FALSE(pool_.DisplayObject(gearbox_, 0, 1, "t", 1, 1));
}

TEST_F(QelFunctionPoolTest, ShowsTheObjectsOfAListThatExist) {
  pool_.RetrieveChildren(*gearbox_, {.id = 1202}, 0, records_);
  records_->SetValue("CLASS_ID", 1, std::int16_t{1202});
  records_->SetValue("OBJECT_ID", 1, 99);
  records_->SetValue("CLASS_ID", 2, std::int16_t{1203});
  records_->SetValue("OBJECT_ID", 2, 5);
  const PcObjectPtr chosen = pool_.DisplayObjs(session_, *records_, 4, "Some", {});
  EXPECT_EQ(world_.driver.Transcript(), "object dialog mode 4 \"Some\" 1202:3 1203:5 [1]\n");
  EXPECT_EQ(chosen->Key(), (ObjectKey{1202, 3}));
}

TEST_F(QelFunctionPoolTest, LetsTheUserSelectObjects) {
  world_.driver.Pick({1}).Pick({1, 0}).Pick({2}).Pick({});
  EXPECT_EQ(pool_.SelectObject(session_, {.name = "Part"}, "Part?")->Key(), (ObjectKey{1202, 4}));
  EXPECT_EQ(QelWorld::Keys(pool_.SelectObjects(session_, {.id = 1202}, "Parts?")), "1202|4; 1202|3");
  EXPECT_TRUE(pool_.SelectCompositeObject(session_, {.id = 1201}, "Below?"));
  EXPECT_FALSE(pool_.SelectCompositeObjects(session_, {.id = 1201}, "None?"));
  EXPECT_FALSE(pool_.SelectObject(session_, {}, "no class, no dialog"));
  PcObjectPtr object;
  world_.driver.Pick({0});
  EXPECT_TRUE(pool_.SelectSingleObjectFromQuery(session_, object));
  EXPECT_TRUE(object);
}

TEST_F(QelFunctionPoolTest, RunsLifeCycleOperations) {
  const auto state = [&] { return world_.Rows("select STATE, VRK_COMMENT from PART where OBJECT_ID = 3"); };
  EXPECT_TRUE(pool_.LifeCycleOperation(session_, cover_, "RELEASE", "done", false, 0));
  EXPECT_EQ(state(), "3|done");
  for (const char* refused : {"COPYFILE", "CHECKOUT", "APPROVE", "release", ""}) {
    EXPECT_FALSE(pool_.LifeCycleOperation(session_, cover_, refused, "", false, 0)) << refused;
  }
  EXPECT_EQ(state(), "3|done");
  EXPECT_EQ(world_.driver.TakeTranscript(), "");

  EXPECT_TRUE(pool_.LifeCycleOperation(session_, cover_, "CHECKOUT", "out", true, 0));
  EXPECT_EQ(state(), "2|out");
  EXPECT_TRUE(pool_.LifeCycleOperation(session_, cover_, "", "in", true, 0));  // check-in is the default
  EXPECT_EQ(state(), "1|in");
  world_.driver.AnswerLifeCycle(2);
  EXPECT_FALSE(pool_.LifeCycleOperation(session_, cover_, "RELEASE", "", true, 0));
  EXPECT_EQ(state(), "1|in");
}

TEST_F(QelFunctionPoolTest, RunsALifeCycleOperationOnAList) {
  const PcQueryPtr query = session_.ObjectStore()->NewQuery();
  query->SetSql("select * from PART order by OBJECT_ID");
  pool_.SelectObjectsSQL(session_, *query, records_);
  EXPECT_TRUE(pool_.LifeCycleOperation1(session_, *records_, "RELEASE", "all", false, 0));
  EXPECT_EQ(world_.Rows("select OBJECT_ID, STATE from PART order by OBJECT_ID"), "3|3; 4|3");
  EXPECT_FALSE(pool_.LifeCycleOperation1(session_, *world_.host.CreateRecordList(), "RELEASE", "", false, 0));
}

TEST_F(QelFunctionPoolTest, ShowsASystemMessage) {
  pool_.DisplaySystemMessage(session_, 1, 2, "a", "b", "c", "d");
  EXPECT_EQ(world_.driver.Transcript(), "system message \"a\" \"b\" \"c\" \"d\"\n");
}

}  // namespace
}  // namespace tessel::test
