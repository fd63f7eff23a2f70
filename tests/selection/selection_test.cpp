#include "selection/selection.h"

#include <gtest/gtest.h>

#include "support/export_world.h"

namespace tessel {
namespace {

using namespace CommonXFunctions;
using Boxes = std::vector<std::string>;

class Selection : public testing::Test {
 protected:
  int Select(const PcRecordListPtr& list) {
    return PutSelection2PcGlobalData(world_.services, world_.session, list, nullptr);
  }

  test::ExportWorld world_;
};

TEST_F(Selection, GrowsOverSeveralCallsAndRefusesWhatItHas) {
  EXPECT_EQ(Select(world_.ObjectList({{1202, 2}})), 0);
  EXPECT_EQ(Select(world_.ObjectList({{1201, 1}, {1202, 2}, {1201, 1}})), 0);
  EXPECT_EQ(world_.GlobalText("ExportObjCount"), "2");
  EXPECT_EQ(world_.GlobalText("ExportObject1"), "1202:2");
  EXPECT_EQ(world_.GlobalText("ExportObject2"), "1201:1");
  EXPECT_EQ(world_.GlobalText("ExportObject3"), "Null");
  const Boxes refused = {
      "information|Kestrix info|Object 'Shaft' has been selected previously. It will not be added to the "
      "selection!",
      "information|Kestrix info|Object 'Gearbox' has been selected previously. It will not be added to the "
      "selection!"};
  EXPECT_EQ(world_.user.seen, refused);
  EXPECT_TRUE(world_.Traced("current amount of selected files: 2"));
}

TEST_F(Selection, RefusesEachRowByItsFirstFailingCheck) {
  Select(world_.ObjectList({{1203, 4}, {1204, 5}, {1202, 5}, {1202, 2}, {1202, 2}, {1201, 1}},
                           {9, 9, 9, 2, Value(), 4}));
  const Boxes refused = {
      "information|Kestrix info|Object 'Minutes' is not an appropriate data exchange object",
      "information|Kestrix info|Object '' is not file based",
      "information|Kestrix info|No file is attached to Object 'Sketch'",
      "information|Kestrix info|The Object 'Shaft' has to be in 'Released', 'Checked In' or 'Obsolete' "
      "status",
      "information|Kestrix info|The Object 'Shaft' has to be in 'Released', 'Checked In' or 'Obsolete' "
      "status"};
  EXPECT_EQ(world_.user.seen, refused);
  EXPECT_EQ(world_.GlobalText("ExportObjCount"), "1");
  EXPECT_EQ(world_.GlobalText("ExportObject1"), "1201:1");
}

TEST_F(Selection, AnErrorKeepsTheEntriesButWritesNoCount) {
  for (const auto& bad : {world_.ObjectList({{1201, 1}, {1202, 999}}), PcRecordListPtr()}) {
    world_.user.seen.clear();
    EXPECT_EQ(Select(bad), 0);
    EXPECT_EQ(world_.user.seen, Boxes{"critical|Kestrix Error|Error while analyzing the selected data"});
  }
  EXPECT_EQ(world_.GlobalText("ExportObjCount"), "Null");
  EXPECT_EQ(world_.GlobalText("ExportObject1"), "1201:1");
}

TEST_F(Selection, ListsWithoutObjectsLeaveNoTrace) {
  Select(world_.host.CreateRecordList());
  EXPECT_EQ(world_.GlobalText("ExportObjCount"), "Null");
  EXPECT_TRUE(world_.user.seen.empty());
}

TEST_F(Selection, RemovingSkipsGaps) {
  Select(world_.ObjectList({{1201, 1}, {1202, 2}}));
  PcGlobalData& globalData = world_.session->GlobalData();
  globalData.Remove("ExportObject1");
  RemoveSelection(globalData);
  EXPECT_EQ(world_.GlobalText("ExportObject2"), "Null");
  EXPECT_EQ(world_.GlobalText("ExportObjCount"), "Null");
  RemoveSelection(globalData);
}

TEST_F(Selection, FindsTheObjectOfAnEntry) {
  world_.declarations.startup.session = world_.session;
  PcGlobalData& globalData = world_.session->GlobalData();
  struct Case {
    const char* entry;
    const char* displayed;
  };
  for (const Case& test : {Case{"1202:2", "Shaft ; P-2"}, {"1202:999", ""}, {"1202", ""}, {"a:b", ""}}) {
    globalData.Set("ExportObject1", Value(test.entry));
    const auto object = RetrieveObjFromGlobalData(world_.services, "ExportObject1");
    EXPECT_EQ(RetrieveDisplayVal("VRK_DESCRIPTION", "VRK_ID", object), test.displayed) << test.entry;
  }
  EXPECT_FALSE(RetrieveObjFromGlobalData(world_.services, "ExportObject2"));
  world_.declarations.startup.session = nullptr;
  EXPECT_FALSE(RetrieveObjFromGlobalData(world_.services, "ExportObject1"));
  EXPECT_EQ(world_.trace.writer->entries.back().number, error_number::kObjectNotSet);
}

TEST_F(Selection, DisplayTextNeedsNeitherAttribute) {
  const auto store = world_.session->ObjectStore();
  EXPECT_EQ(RetrieveDisplayVal("NONE", "VRK_ID", store->Object({1202, 2})), " ; P-2");
  EXPECT_EQ(RetrieveDisplayVal("VRK_ID", "CITY", store->Object({901, 12})), "Bolt");  // Null
}

TEST_F(Selection, IconsAreAddedOnceAClassAndNeverFromOutside) {
  world_.declarations.startup.IconDirectory = world_.folder.Path("model/icons");
  const auto store = world_.session->ObjectStore();
  ImageList images;
  GetIcon(world_.services, *store->Object({1201, 1}), images);
  GetIcon(world_.services, *store->Object({1201, 1}), images);
  ASSERT_EQ(images.Images().size(), 1U);
  EXPECT_EQ(images.Images()[0].key, "Class1201");
  EXPECT_EQ(images.Images()[0].file, world_.folder.Path("model/icons/assembly.png"));
  GetIcon(world_.services, *store->Object({1203, 4}), images);  // its icon is "../note.png"
  EXPECT_EQ(images.Images().size(), 1U);
  EXPECT_EQ(world_.trace.writer->entries.back().text,
            "Fehler beim Auslesen der Icons in function: (GetIcon/CommonXFunctions)");
}

TEST_F(Selection, DumpsBothListsUnderTheirTitles) {
  DumpRecordLists(world_.trace.trace, world_.ObjectList({{1201, 1}}), world_.ObjectList({}), "Objects", "");
  const std::string rule(46, '-');
  const std::vector<std::string> expected = {rule,
                                             "First Record List: Objects",
                                             "     ------------",
                                             "OBJECT_ID:   1",
                                             "CLASS_ID:   1201",
                                             rule,
                                             rule,
                                             "Second Record List: Objects",
                                             rule};
  EXPECT_EQ(world_.trace.writer->Lines(), expected);
}

}  // namespace
}  // namespace tessel
