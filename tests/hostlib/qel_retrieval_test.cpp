#include "hostlib/qel_world.h"

namespace tessel::test {
namespace {

constexpr int kMode = 2;

TEST_F(QelFunctionPoolTest, RetrievesTheStructureInBothDirections) {
  EXPECT_EQ(QelWorld::Keys(pool_.RetrieveChildren(*gearbox_, {.id = 1201}, kMode, records_)), "1201|2");
  EXPECT_EQ(QelWorld::Keys(pool_.RetrieveChildren(*gearbox_, {.name = "Part"}, kMode, records_)), "1202|3");
  EXPECT_EQ(QelWorld::Keys(pool_.RetrieveChildren(*gearbox_, {.id = 900}, kMode, records_)), "900|6");
  EXPECT_EQ(QelWorld::Keys(pool_.RetrieveParents(*gearbox_, {.id = 900}, kMode, records_)), "900|7");
  EXPECT_EQ(QelWorld::Keys(pool_.RetrieveParents(*shaft_, {.object = gearbox_->Class()}, kMode, records_)),
            "1201|2");
  EXPECT_EQ(records_->GetValue("VRK_ID", 0).AsText(), "A-2");
}

TEST_F(QelFunctionPoolTest, RetrievesRelationsOnEitherSide) {
  const std::string both = "900|6; 900|7";
  EXPECT_EQ(QelWorld::Keys(pool_.RetrieveRelations(*gearbox_, {.id = 900}, {.id = 2000}, kMode, records_)),
            both);
  EXPECT_TRUE(records_->HasColumn("OBJECT_ID1"));
  EXPECT_EQ(QelWorld::Keys(pool_.RetrieveRelations(*gearbox_, {.id = 900}, {}, kMode, records_)), both);
  EXPECT_FALSE(records_->HasColumn("OBJECT_ID1"));
  EXPECT_EQ(QelWorld::Keys(pool_.RetrieveRelations(*gearbox_, {.id = 900}, {.id = 2001}, kMode, records_)),
            "");
}

TEST_F(QelFunctionPoolTest, AppendsTheLinksToWhatIsRelated) {
  pool_.RetrieveChildrenAndLinks(*gearbox_, {.name = "Part"}, kMode, records_);
  ASSERT_EQ(QelWorld::Keys(records_), "1202|3");
  EXPECT_EQ(records_->GetValue("QUANTITY", 0).AsText(), "2");
  pool_.RetrieveParentsAndLinks(*shaft_, {.name = "Assembly"}, kMode, records_);
  ASSERT_EQ(QelWorld::Keys(records_), "1201|2");  // tied by two links, it comes once
  EXPECT_EQ(records_->GetValue("QUANTITY", 0).AsText(), "3");
  pool_.RetrieveRelationsAndLinks(*gearbox_, {.name = "Exchange"}, {}, kMode, records_);
  ASSERT_EQ(QelWorld::Keys(records_), "900|6; 900|7");
  EXPECT_EQ(records_->GetValue("OBJECT_ID1", 1).AsText(), "7");
}

TEST_F(QelFunctionPoolTest, TheClassObjectCountsBeforeTheIdAndTheIdBeforeTheName) {
  const PcClassPtr part = session_.MetaData()->ClassById(1202);
  const struct {
    ClassArgument argument;
    ClassId expected;
  } cases[] = {{{.object = part, .id = 1201, .name = "Drawing"}, 1202},
               {{.id = 1201, .name = "Drawing"}, 1201},
               {{.id = 0, .name = "Drawing"}, 1203},
               {{.id = -5, .name = "drawing"}, 0},
               {{}, 0}};
  for (const auto& each : cases)
    EXPECT_EQ(each.argument.Resolve(session_), each.expected);
}

TEST_F(QelFunctionPoolTest, WithoutAClassNothingIsRetrievedAndTheHostIsNotCalled) {
  world_.host.FailNext({.call = embedded::HostCall::kRetrieve});
  records_ = world_.host.CreateRecordList();
  EXPECT_FALSE(pool_.RetrieveChildren(*gearbox_, {}, kMode, records_));
  EXPECT_FALSE(records_);
  EXPECT_FALSE(pool_.RetrieveRelations(*gearbox_, {.name = "Nothing"}, {.id = 2000}, kMode, records_));
  PcObjectPtr object = gearbox_;
  EXPECT_FALSE(pool_.NewObject(session_, {}, 0, object));
  EXPECT_FALSE(object);
  // A failing host call goes to the caller.
  EXPECT_THROW(pool_.RetrieveParents(*gearbox_, {.id = 1201}, kMode, records_), HostError);
}

TEST_F(QelFunctionPoolTest, TheMainObjectStandsAtTheTopOfTheStructure) {
  EXPECT_EQ(pool_.RetrieveMainObject(shaft_, 0)->Key(), (ObjectKey{1201, 1}));
  EXPECT_EQ(pool_.RetrieveMainObject(shaft_, 1)->Key(), (ObjectKey{1201, 2}));
  EXPECT_EQ(pool_.RetrieveMainObject(world_.Object({1203, 5}), 0)->Key(), (ObjectKey{1203, 5}));
  // A cycle ends where it closes.
  ASSERT_TRUE(pool_.LinkObjectToParent(gearbox_, world_.Object({1201, 2}), 0, false, false));
  EXPECT_EQ(pool_.RetrieveMainObject(shaft_, 0)->Key(), (ObjectKey{1201, 1}));
}

TEST_F(QelFunctionPoolTest, RunsAQueryForObjects) {
  const PcQueryPtr query = session_.ObjectStore()->NewQuery();
  query->SetSql("select * from PART where VRK_ID like 'P-%' order by OBJECT_ID desc");
  EXPECT_EQ(QelWorld::Keys(pool_.SelectObjectsSQL(session_, *query, records_)), "1202|4; 1202|3");
  EXPECT_EQ(QelWorld::Keys(records_), "1202|4; 1202|3");
}

}  // namespace
}  // namespace tessel::test
