#include <gtest/gtest.h>

#include "embedded/small_world.h"
#include "embedded/store/memory_record_list.h"

namespace tessel::test {
namespace {

using embedded::MemoryRecordList;

class RecordListTest : public ::testing::Test, public Machine {
 protected:
  MemoryRecordList list{platform.files};
};

TEST_F(RecordListTest, CellsTakeTheTypeOfTheirColumn) {
  list.AddColumn("T", 255, 1);
  list.AddColumn("I", 2, 2);
  list.AddColumn("L", 4, 3);
  list.AddColumn("D", 8, 4);
  list.AddColumn("B", 2, 5);
  for (int column = 0; column < 5; ++column)
    list.SetValue(column, 0, Value("7"));
  EXPECT_EQ(list.GetValue("T", 0), Value("7"));
  EXPECT_EQ(list.GetValue("I", 0), Value(std::int16_t{7}));
  EXPECT_EQ(list.GetValue("L", 0), Value(7));
  EXPECT_EQ(list.GetValue("D", 0), Value(7.0));
  EXPECT_EQ(list.GetValue("B", 0), Value(true));

  EXPECT_EQ(ErrorOf([&] { list.SetValue("I", 0, Value(40000)); }), "6 Overflow");
  EXPECT_EQ(ErrorOf([&] { list.SetValue("L", 0, Value("x")); }), "13 Type mismatch: \"x\"");
  EXPECT_EQ(list.GetValue("L", 0), Value(7)) << "a refused value leaves the cell";
  list.SetValue("L", 0, Value());
  EXPECT_TRUE(list.GetValue("L", 0).IsNull());
}

TEST_F(RecordListTest, RowsComeIntoBeingUpToTheOneSet) {
  list.AddColumn("A", 255, 1);
  list.SetValue("A", 2, Value("third"));
  list.AddColumn("LATE", 2, 2);
  EXPECT_EQ(list.RowCount(), 3);
  EXPECT_EQ(RowsText(list, {"A", "LATE"}), "-|-; -|-; third|-");
  list.SetValue("LATE", 0, Value(1));
  EXPECT_EQ(RowsText(list, {"A", "LATE"}), "-|1; -|-; third|-");
}

TEST_F(RecordListTest, RefusesWhatIsOutside) {
  list.AddColumn("A", 255, 1);
  EXPECT_NE(ErrorOf([&] { list.AddColumn("A", 2, 2); }), "");
  EXPECT_EQ(list.FindColumn("a"), -1);
  for (const auto& [column, row] : {std::pair{0, -1}, {1, 0}, {-1, 0}}) {
    EXPECT_EQ(ErrorNumberOf([&, c = column, r = row] { list.SetValue(c, r, Value("x")); }), 9);
    EXPECT_EQ(ErrorNumberOf([&, c = column, r = row] { return list.GetValue(c, r); }), 9);
  }
  EXPECT_EQ(list.RowCount(), 0);
}

TEST_F(RecordListTest, WritesItselfAndMakesTheFolder) {
  list.AddColumn("A", 255, 1);
  list.AddColumn("B", 2, 2);
  list.AppendRow({Value("x"), Value(1)});
  list.AppendRow({Value(), Value(2)});
  list.WriteToFile("Test", folder.Path("deep/er/list.txt"));
  EXPECT_EQ(folder.Read("deep/er/list.txt"),
            "Test\r\n     ------------\r\nA:   x\r\nB:   1\r\n     ------------\r\nA:   \r\nB:   2\r\n");
}

}  // namespace
}  // namespace tessel::test
