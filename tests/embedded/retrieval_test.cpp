#include <gtest/gtest.h>

#include "embedded/small_world.h"

namespace tessel::test {
namespace {

struct Wish {
  ClassId classId;
  const char* attribute;
  const char* code;
};

// Assembly 1 has below it the pieces 4, 3 (in this order) and the assembly 2, which has piece 3 too; a
// general link ties piece 3 to assembly 1, and another to the user 100.
class RetrievalTest : public ::testing::Test {
 protected:
  RetrievalTest()
      : world(Document("Assembly", 1) + "," + Document("Assembly", 2) + "," + Document("Part", 3) + "," +
                  Document("Part", 4),
              Link("Structure", 1, 4) + "," + Link("Structure", 1, 3) + "," + Link("Structure", 1, 2) + "," +
                  Link("Structure", 2, 3) + "," + Link("General Link", 3, 1) + "," +
                  R"({"class": "General Link", "from": "3", "to": "anna"})") {}

  PcAttributeListPtr List(const std::vector<Wish>& wishes) {
    const PcAttributeListPtr list = world.session->ObjectStore()->NewAttributeList();
    for (const Wish& wish : wishes)
      list->Add(wish.classId, wish.attribute, wish.code);
    return list;
  }
  std::string Children(ClassId classId, ObjectId id, const std::vector<Wish>& wishes) {
    return Keys(world.Object(classId, id)->Children(*List(wishes), *world.behavior));
  }
  std::string Parents(ClassId classId, ObjectId id, const std::vector<Wish>& wishes) {
    return Keys(world.Object(classId, id)->Parents(*List(wishes), *world.behavior));
  }
  std::string Relations(ClassId classId, ObjectId id, const std::vector<Wish>& wishes) {
    return Keys(world.Object(classId, id)->Relations(*List(wishes), *world.behavior));
  }
  static std::string Keys(const PcRecordListPtr& list) { return RowsText(*list, {"CLASS_ID", "OBJECT_ID"}); }

  SmallWorld world;
};

TEST_F(RetrievalTest, FollowsLinksDownUpAndBothWays) {
  const Wish parts{kPart, "*", "S"};
  const Wish assemblies{kAssembly, "*", "S"};
  const Wish structure{kStructure, "*", "L"};
  const Wish general{kGeneralLink, "*", "L"};
  EXPECT_EQ(Children(kAssembly, 1, {parts}), "1202|4; 1202|3");
  EXPECT_EQ(Children(kAssembly, 1, {parts, assemblies}), "1202|4; 1202|3; 1201|2");
  EXPECT_EQ(Children(kAssembly, 1, {}), "1202|4; 1202|3; 1201|2");
  EXPECT_EQ(Children(kAssembly, 1, {parts, general}), "");
  EXPECT_EQ(Parents(kAssembly, 1, {parts}), "1202|3") << "through the general link";
  EXPECT_EQ(Parents(kPart, 3, {assemblies, structure}), "1201|1; 1201|2");
  EXPECT_EQ(Children(kPart, 3, {{kUsers, "*", "S"}}), "10|100");
  EXPECT_EQ(Relations(kAssembly, 1, {parts, structure}), "1202|4; 1202|3");
  EXPECT_EQ(Relations(kAssembly, 1, {parts}), "1202|3; 1202|4") << "each object once, general links first";
  EXPECT_EQ(Relations(kPart, 3, {assemblies, general}), "1201|1");
  EXPECT_EQ(Relations(kAssembly, 1, {{kUsers, "*", "S"}}), "");
}

TEST_F(RetrievalTest, RowsCarryTheAttributesOfObjectAndLink) {
  const PcRecordListPtr list =
      world.Object(kAssembly, 1)
          ->Relations(*List({{kPart, "VRK_ID", "S"}, {kStructure, "*", "L"}}), *world.behavior);
  EXPECT_EQ(RowsText(*list, {"OBJECT_ID", "CLASS_ID", "VRK_ID", "LINK_CLASS_ID", "OBJECT_ID2", "QUANTITY"}),
            "4|1202|D-4|2001|4|1; 3|1202|D-3|2001|3|1");
  const PcRecordListPtr all =
      world.Object(kPart, 3)->Parents(*List({{kAssembly, "*", "S"}}), *world.behavior);
  EXPECT_EQ(all->GetValue("STATE", 1), Value(std::int16_t{1}));
  EXPECT_EQ(all->ColumnCount(), 12);
}

TEST_F(RetrievalTest, RefusesUnknownEntries) {
  EXPECT_NE(ErrorOf([&] { List({{4711, "*", "S"}}); }), "");
  EXPECT_NE(ErrorOf([&] { List({{kPart, "NOPE", "S"}}); }), "");
  EXPECT_NE(ErrorOf([&] { List({{kPart, "*", "X"}}); }), "");
  EXPECT_NE(ErrorOf([&] { List({{kPart, "*", "L"}}); }), "");
}

}  // namespace
}  // namespace tessel::test
