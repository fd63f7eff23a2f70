#include "exchange/copied_rows.h"

#include <gtest/gtest.h>

#include "support/export_world.h"

namespace tessel {
namespace {

class CopiedRowsTest : public testing::Test {
 protected:
  PcRecordListPtr List(const std::vector<std::string>& columns, const std::vector<std::vector<Value>>& rows) {
    auto list = world_.host.CreateRecordList();
    for (const std::string& column : columns)
      list->AddColumn(column, 0, 0);
    for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
      const auto& cells = rows[static_cast<std::size_t>(row)];
      for (int column = 0; column < static_cast<int>(cells.size()); ++column) {
        list->SetValue(column, row, cells[static_cast<std::size_t>(column)]);
      }
    }
    return list;
  }
  PcRecordListPtr Files(const std::vector<std::vector<Value>>& rows) {
    return List({"CLASS_ID", "OBJECT_ID", "OPERATION_ID"}, rows);
  }

  test::ExportWorld world_;
  CopiedRows rows_;
};

TEST_F(CopiedRowsTest, FindsRowsAndCountsCopies) {
  rows_.SetFiles(Files({{1201, 1, Value()}, {1202, 2, 5}, {1202, 2, 6}, {1203, 1, 100000}, {1202, 2, 6}}));
  EXPECT_EQ(rows_.CopiedCount({1201, 1}), 0);
  EXPECT_EQ(rows_.FindFileRow({1202, 2}), 1);
  EXPECT_EQ(rows_.CopiedCount({1202, 2}), 2);
  EXPECT_EQ(rows_.FindFileRow({1202, 1}), -1);
  rows_.SetFiles(Files({{1202, 2, 5}}));
  EXPECT_EQ(rows_.FindFileRow({1202, 2}), 0);
  EXPECT_EQ(rows_.CopiedCount({1202, 2}), 0);
}

TEST_F(CopiedRowsTest, AnUnreadableRowHidesWhatStandsBelowIt) {
  rows_.SetFiles(Files({{1201, 1, 6}, {Value(), 2, 6}, {1202, 3, 6}}));
  EXPECT_EQ(rows_.FindFileRow({1201, 1}), 0);
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_THROW(static_cast<void>(rows_.FindFileRow({1202, 3})), RuntimeError);
    EXPECT_THROW(static_cast<void>(rows_.CopiedCount({1201, 1})), RuntimeError);
  }
}

TEST_F(CopiedRowsTest, WithoutListsThereIsNothingToFind) {
  try {
    static_cast<void>(rows_.FindFileRow({1201, 1}));
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), error_number::kObjectNotSet);
  }
  EXPECT_EQ(rows_.LinkCount(), 0);
  EXPECT_TRUE(rows_.LinksFrom({1201, 1}).empty());
}

TEST_F(CopiedRowsTest, LinksKeepTheirOrder) {
  const std::vector<std::string> columns = {"CLASS_ID",   "OBJECT_ID1", "CLASS_ID1",
                                            "OBJECT_ID2", "CLASS_ID2",  "VRK_DIRECTION"};
  rows_.SetLinks(List(
      columns, {{2001, 1, 1201, 2, 1202, 1}, {2001, 2, 1202, 3, 1202, 1}, {2000, 1, 1201, 3, 1202, -1}}));
  EXPECT_EQ(rows_.LinksFrom({1201, 1}), (std::vector<int>{0, 2}));
  const CopiedLink link = rows_.Link(2);
  EXPECT_EQ(link.linkClass, 2000);
  EXPECT_EQ(link.second, (ObjectKey{1202, 3}));
  EXPECT_EQ(link.direction, -1);
  rows_.SetLinks(List(
      columns,
      {{2001, 1, 1201, Value(), 1202, 1}, {2001, Value(), 1201, 3, 1202, 1}, {2001, 1, 1201, 3, 1202, 1}}));
  EXPECT_EQ(rows_.LinksFrom({1201, 1}), std::vector<int>{0});
  EXPECT_THROW(static_cast<void>(rows_.Link(0)), RuntimeError);
  for (int attempt = 0; attempt < 2; ++attempt)
    EXPECT_THROW(rows_.CheckLinks(), RuntimeError);
}

}  // namespace
}  // namespace tessel
