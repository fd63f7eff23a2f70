#include "toolkit/tree_list.h"

#include <gtest/gtest.h>

#include "host/error.h"
#include "toolkit/window.h"

namespace tessel {
namespace {

class TreeListTest : public ::testing::Test {
 protected:
  TreeListTest() {
    for (const char* name : {"a", "b", "c"})
      list_.AddNode(std::string("Node ") + name, name);
    list_.OnKeyDown = [this](char32_t) { events_ += "key "; };
    list_.OnNodeCheck = [this](int node) { events_ += "check" + std::to_string(node) + " "; };
    list_.OnNodeClick = [this](int node) { events_ += "node" + std::to_string(node) + " "; };
    list_.OnClick = [this] { events_ += "click "; };
    list_.OnMouseUp = [this](MouseButton button) {
      events_ += button == MouseButton::kRight ? "right-up " : "up ";
    };
  }

  // Check marks that belong to the program, kept against every gesture of the user.
  void ProtectMarks() {
    list_.OnKeyDown = [this](char32_t key) {
      keyFlag_ = true;
      if (key == U' ') Invert(list_.Selected());
    };
    list_.OnNodeCheck = [this](int node) {
      clickedNode_ = keyFlag_ ? -1 : node;
      keyFlag_ = false;
    };
    list_.OnClick = [this] {
      if (clickedNode_ >= 0) Invert(clickedNode_);
      clickedNode_ = -1;
    };
  }
  void Invert(int node) { list_.SetChecked(node, !list_.NodeAt(node).checked); }
  std::string Marks() const {
    std::string marks;
    for (int node = 0; node < list_.NodeCount(); ++node)
      marks += list_.NodeAt(node).checked ? '+' : '-';
    return marks;
  }

  Window window_{"Tessel_2", "Kestrix", {6990, 5070}};
  TreeList& list_ = window_.Add<TreeList>("TreeView2", -1, nullptr, Rect{}, true);
  std::string events_;
  bool keyFlag_ = false;
  int clickedNode_ = -1;
};

TEST_F(TreeListTest, GesturesRaiseTheirEventsInOrder) {
  list_.UserClickNode(1);
  EXPECT_EQ(list_.Selected(), 1);
  list_.UserClickNode(2, MouseButton::kRight);
  list_.UserClickCheckBox(0);
  list_.UserPressKey(U' ');
  list_.UserPressKey(U'x');
  list_.UserReleaseButton(MouseButton::kRight);
  EXPECT_EQ(events_,
            "node1 click up "
            "node2 click right-up "
            "check0 click up "
            "key check2 "
            "key "
            "right-up ");
  EXPECT_EQ(Marks(), "+-+");
  EXPECT_EQ(list_.Selected(), 2);
}

TEST_F(TreeListTest, GesturesThatHitNothingRaiseNothing) {
  list_.UserClickNode(3);
  list_.UserClickCheckBox(-1);
  list_.SetEnabled(false);
  list_.UserClickNode(0);
  list_.UserClickCheckBox(0);
  list_.UserPressKey(U' ');
  list_.UserReleaseButton(MouseButton::kLeft);
  EXPECT_EQ(events_, "");

  auto& plain = window_.Add<TreeList>("TreeView1", -1, nullptr, Rect{}, false);
  plain.AddNode("Node", "tag");
  plain.Select(0);
  plain.UserClickCheckBox(0);
  plain.UserPressKey(U' ');
  EXPECT_EQ(plain.CheckedCount(), 0);
}

TEST_F(TreeListTest, MarksOfTheProgramSurviveEveryGesture) {
  ProtectMarks();
  list_.SetChecked(1, true);
  list_.Select(1);
  list_.UserClickCheckBox(1);
  list_.UserClickCheckBox(0);
  list_.UserPressKey(U' ');
  list_.UserClickNode(0);
  list_.UserPressKey(U' ');
  list_.UserClickCheckBox(2);
  EXPECT_EQ(Marks(), "-+-");
  EXPECT_EQ(list_.CheckedCount(), 1);
}

// An event may empty the list that raised it.
TEST_F(TreeListTest, AnEventMayClearTheList) {
  list_.OnNodeCheck = [this](int) { list_.Clear(); };
  list_.UserClickCheckBox(2);
  list_.AddNode("again", "a");
  list_.Select(0);
  list_.OnKeyDown = [this](char32_t) { list_.Clear(); };
  list_.UserPressKey(U' ');
  EXPECT_EQ(list_.NodeCount(), 0);
  EXPECT_EQ(list_.CheckedCount(), 0);
  EXPECT_EQ(list_.FindTag("a"), -1);
}

TEST_F(TreeListTest, RemovingKeepsSelectionCountAndTagsTrue) {
  struct Case {
    int selected;
    int removed;
    int selectedThen;
  };
  for (const auto& [selected, removed, selectedThen] :
       {Case{1, 1, 1}, {2, 2, 1}, {2, 0, 1}, {0, 2, 0}, {-1, 0, -1}}) {
    TreeList list(window_, "TreeView3", -1, nullptr, {}, true);
    for (const char* tag : {"a", "b", "b"})
      list.AddNode("Node", tag);
    list.SetChecked(removed, true);
    list.Select(selected);
    list.RemoveNode(removed);
    EXPECT_EQ(list.Selected(), selectedThen) << selected << " " << removed;
    EXPECT_EQ(list.CheckedCount(), 0);
    EXPECT_EQ(list.FindTag("a"), removed == 0 ? -1 : 0);
    EXPECT_EQ(list.FindTag("b"), removed == 0 ? 0 : 1);
  }
  try {
    list_.RemoveNode(3);
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), error_number::kSubscriptOutOfRange);
  }
}

TEST(ImageListTest, KeepsTheFirstImageOfAKey) {
  ImageList images;
  images.Add("Class1201", "part.png");
  images.Add("Class1201", "other.png");
  images.Add("Class1202", "drawing.png");
  ASSERT_NE(images.Find("Class1201"), nullptr);
  EXPECT_EQ(images.Find("Class1201")->file, "part.png");
  EXPECT_EQ(images.Images().size(), 2U);
  images.Clear();
  EXPECT_FALSE(images.Contains("Class1202"));
}

}  // namespace
}  // namespace tessel
