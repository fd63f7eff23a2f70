#include "hostlib/qel_world.h"

namespace tessel::test {
namespace {

TEST_F(QelFunctionPoolTest, ShowsAttributesAsPeopleReadThem) {
  const struct {
    const PcObjectPtr& object;
    const char* attribute;
    const char* expected;
  } cases[] = {{shaft_, "VRK_ID", "P-4"},
               {shaft_, "STATE", "1"},
               {shaft_, "DUE", "31.01.2024 14:25:01"},
               {cover_, "DUE", ""},  // 00:00:00
               {shaft_, "OWNER", "anna"},
               {cover_, "OWNER", ""},
               {shaft_, "VRK_STATE", "Released"},
               {shaft_, "MATERIAL", "Brass"},
               {shaft_, "DRAWING", "5"},  // a reference into a table of no special kind
               {shaft_, "DRAWING.VRK_ID", "D-5"},
               {shaft_, "DRAWING.AUTHOR", "bert"},
               {shaft_, "DRAWING.AUTHOR.LOGIN", "bert"},
               {cover_, "DRAWING.AUTHOR.LOGIN", ""},
               {shaft_, "VRK_ID.LOGIN", ""},  // no reference
               {shaft_, "OBJECT_ID", "4"},
               {shaft_, "DRAWING.PROJECTIONVALUE", "D-5"}};
  for (const auto& each : cases) {
    EXPECT_EQ(pool_.AttributeValue(*each.object, each.attribute), each.expected) << each.attribute;
  }
  EXPECT_THROW(static_cast<void>(pool_.AttributeValue(*shaft_, "COLOUR")), HostError);
}

TEST_F(QelFunctionPoolTest, FollowsAReference) {
  EXPECT_EQ(pool_.ReferencedObject(*shaft_, "OWNER", 0)->Key(), (ObjectKey{10, 31}));
  EXPECT_FALSE(pool_.ReferencedObject(*cover_, "OWNER", 0));
  EXPECT_FALSE(pool_.ReferencedObject(*shaft_, "VRK_ID", 0));
}

TEST_F(QelFunctionPoolTest, FindsLookupValues) {
  const ClassArgument material = {.name = "Material"};
  const struct {
    ClassArgument lookupClass;
    const char* description;
    const char* text;
    LookupSearch search;
    std::int16_t prefix;
    ObjectId expected;
  } cases[] = {{material, "Steel", "", LookupSearch::kDescription, 0, 9},  // the first in value order
               {material, "Brass", "", LookupSearch::kDescription, 0, 4},
               {material, "Bra", "", LookupSearch::kDescription, 0, 0},
               {material, "Bra", "", LookupSearch::kDescription, 1, 4},
               {material, "", "3", LookupSearch::kValueOrder, 0, 6},
               {material, "Steel", "4", LookupSearch::kObjectId, 0, 4},
               {{.name = "Nothing"}, "Steel", "", LookupSearch::kDescription, 0, 0}};
  for (const auto& each : cases) {
    EXPECT_EQ(
        pool_.LookupObject(session_, each.lookupClass, each.description, each.text, each.search, each.prefix),
        each.expected)
        << each.description << each.text;
  }
}

TEST_F(QelFunctionPoolTest, NamesTheMandatoryAttributesWithoutValue) {
  std::string missing = "left over";
  const auto check = [&](ClassId classId, ObjectId id) {
    const PcObjectPtr object = world_.Object({classId, id});
    return pool_.MandatoryAttributesHaveValues(*object, *object->Class(), missing);
  };
  EXPECT_FALSE(check(1201, 1));
  EXPECT_EQ(missing, "DUE, FILE_TYPE");  // a file type without a file name
  EXPECT_TRUE(check(1202, 4));
  EXPECT_EQ(missing, "");
}

}  // namespace
}  // namespace tessel::test
