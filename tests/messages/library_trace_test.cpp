#include "messages/library_trace.h"

#include <gtest/gtest.h>

#include "host/error.h"
#include "support/machine.h"

namespace tessel {
namespace {

class Items : public TraceCollection {
 public:
  explicit Items(std::vector<Value> items) : items_(std::move(items)) {}
  [[nodiscard]] int Count() const override { return static_cast<int>(items_.size()); }
  // A text "!" stands for an item that cannot be read.
  [[nodiscard]] Value Item(int position) const override {
    const Value& item = items_.at(static_cast<std::size_t>(position) - 1);
    if (item.AsText() == "!") throw HostError("no such item");
    return item;
  }

 private:
  std::vector<Value> items_;
};

class LibraryTraceTest : public testing::Test, public test::Machine {
 protected:
  LibraryTraceTest() { trace_.SetTraceFile(folder.Path("lib.txt")); }

  LibraryTrace trace_{platform.files, *ansi};
};

TEST_F(LibraryTraceTest, TheFileIsTheSwitch) {
  trace_.PutTrace({"a", Value(1)});
  EXPECT_FALSE(folder.Exists("lib.txt"));
  folder.Write("lib.txt", "old\r\n");
  trace_.PutTrace({"a", Value(1)});
  EXPECT_EQ(folder.Read("lib.txt"), "old\r\na: >>1<<\r\n");
  trace_.SetTraceFile("");
  trace_.PutTrace({"a", Value(1)});
  trace_.PutTraceObject(nullptr, "title");
  trace_.PutTraceRecList(nullptr, "title");
}

TEST_F(LibraryTraceTest, WritesEveryKindOfValue) {
  folder.Write("lib.txt", "");
  trace_.PutTrace({"Ids", TraceArray{0, {"x", "y", "z"}}}, TracePair{"skipped", {}},
                  TracePair{"Sparse", TraceArray{99, {true, 2}}},
                  TracePair{"List", std::make_shared<Items>(std::vector<Value>{1.5, "!", Value()})},
                  TracePair{"Empty list", std::make_shared<Items>(std::vector<Value>{})},
                  TracePair{"Text", Value("ü")}, TracePair{"Empty", Value("")}, TracePair{"Null", Value()},
                  TracePair{"Lines", Value("a\r\nb")}, TracePair{"Last", Value(10)});
  EXPECT_EQ(folder.Read("lib.txt"),
            "Ids(00): >>x<<\r\nIds(01): >>y<<\r\nIds(02): >>z<<\r\n"
            "Sparse(99): >>True<<\r\nSparse(100): >>2<<\r\n"
            "List(01): >>1.5<<\r\nList(03): >><<\r\n"
            "Text: >>\xFC<<\r\nEmpty: >><<\r\nNull: >><<\r\nLines: >>a\r\nb<<\r\nLast: >>10<<\r\n");
}

}  // namespace
}  // namespace tessel
