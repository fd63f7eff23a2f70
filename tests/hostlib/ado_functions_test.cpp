#include "hostlib/ado_functions.h"

#include <gtest/gtest.h>

#include <vector>

#include "host/error.h"

namespace tessel {
namespace {

class FakeRecordSet : public AdoRecordSet {
 public:
  [[nodiscard]] int FieldCount() const override { return static_cast<int>(names.size()); }
  [[nodiscard]] std::string FieldName(int index) const override {
    return names.at(static_cast<std::size_t>(index));
  }
  void Close() override {
    open = false;
    throw RuntimeError(error_number::kInvalidCall, "cannot close");
  }
  void AppendField(const std::string& name, int, int) override {
    if (appends) names.push_back(name);
  }
  std::vector<std::string> names{"ID", "Name"};
  bool open = true;
  bool appends = true;
};

TEST(AdoFunctions, AddFieldTellsWhetherTheFieldCameIntoBeing) {
  FakeRecordSet records;
  EXPECT_EQ(ADOFunctions::AddField(records, "Name", 200, 40), 0);
  EXPECT_TRUE(records.open);
  EXPECT_EQ(ADOFunctions::AddField(records, "NAME", 200, 40),
            1);  // case counts; the failing close is ignored
  EXPECT_FALSE(records.open);
  records.appends = false;
  EXPECT_EQ(ADOFunctions::AddField(records, "Size", 3, 4), -1);
}

}  // namespace
}  // namespace tessel
