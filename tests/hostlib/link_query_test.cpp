#include <gtest/gtest.h>

#include "hostlib/my_common_functions.h"
#include "support/export_world.h"

namespace tessel {
namespace {

using namespace myCommonFunctions;

class LinkQueries : public testing::Test {
 protected:
  void Link(const PcObjectPtr& first, const PcObjectPtr& second) {
    ASSERT_TRUE(first->AddLink(*second, 2000, *world_.session->NewBehavior()));
  }
  static std::string FirstRow(const PcRecordListPtr& rows) {
    if (rows->RowCount() == 0) return "none";
    return rows->GetValue("OBJECT_ID1", 0).AsText() + " > " + rows->GetValue("OBJECT_ID2", 0).AsText();
  }

  test::ExportWorld world_;
};

TEST_F(LinkQueries, FindTheOneLinkBetweenTwoObjects) {
  const auto gearbox = world_.Object(test::Company::kGearbox);
  const auto acme = world_.Object({901, 11});
  PcObjectPtr link;
  EXPECT_FALSE(isObjLinked2Obj(*gearbox, *acme, 2000, link));
  Link(gearbox, acme);
  EXPECT_TRUE(isObjLinked2Obj(*gearbox, *acme, 2000, link));
  ASSERT_TRUE(link);
  EXPECT_EQ(link->GetClassId(), 2000);
  EXPECT_FALSE(isObjLinked2Obj(*acme, *gearbox, 2000, link));
  Link(gearbox, acme);
  PcObjectPtr none;
  EXPECT_TRUE(isObjLinked2Obj(*gearbox, *acme, 2000, none));
  EXPECT_FALSE(none) << "two links are no single one";
}

TEST_F(LinkQueries, RelationsPreferTheRowsAbove) {
  const auto gearbox = world_.Object(test::Company::kGearbox);
  const auto shaft = world_.Object(test::Company::kShaft);
  EXPECT_EQ(FirstRow(RetrieveParents2(*shaft)), "1 > 2");
  EXPECT_EQ(FirstRow(RetrieveRelations2(*gearbox, 2001)), "1 > 2");  // a first end only
  const auto acme = world_.Object({901, 11});
  Link(acme, gearbox);
  Link(gearbox, shaft);
  EXPECT_EQ(FirstRow(RetrieveRelations2(*gearbox, 2000)), "11 > 1");
  EXPECT_THROW(static_cast<void>(RetrieveRelations2(*gearbox, 77)), RuntimeError);
}

TEST_F(LinkQueries, FindIDAttPassesOverRevision) {
  PcAttributePtr attribute;
  PcSequencePtr sequence;
  EXPECT_TRUE(FindIDAtt(*world_.session->ObjectStore()->NewObject(900), attribute, sequence));
  EXPECT_EQ(attribute->Name(), "VRK_ID");
  // A class that nothing identifies leaves the last attribute walked.
  EXPECT_FALSE(FindIDAtt(*world_.Object({1203, 4}), attribute, sequence));
  EXPECT_EQ(attribute->Name(), "CN_DESCRIPTION");
  EXPECT_FALSE(sequence);
}

}  // namespace
}  // namespace tessel
