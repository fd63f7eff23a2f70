#include "toolkit/window.h"

#include <gtest/gtest.h>

namespace tessel {
namespace {

class CountingListener : public WindowListener {
 public:
  void ControlAdded(Control&) override { ++added; }
  void ControlChanged(Control&, Change change) override { changes.push_back(change); }
  void GeometryChanged() override { ++geometryChanges; }
  int added = 0;
  int geometryChanges = 0;
  std::vector<Change> changes;
};

TEST(WindowTest, ResizeIsRaisedForSizesAlone) {
  Window window("Tessel_1", "Kestrix", {6990, 5070});
  CountingListener listener;
  window.SetListener(&listener);
  int resizes = 0;
  window.OnResize = [&] { ++resizes; };
  EXPECT_EQ(window.Bounds(), (Rect{0, 0, 7110, 5475}));
  EXPECT_FALSE(window.Placed());

  window.MoveTo(100, 200);
  EXPECT_TRUE(window.Placed());
  EXPECT_EQ(resizes, 0);
  window.SetBounds({100, 200, 8000, 6000});
  window.SetBounds({100, 200, 8000, 6000});
  EXPECT_EQ(resizes, 1);
  EXPECT_EQ(listener.geometryChanges, 2);

  window.UserSetBounds({0, 0, 10, -10});
  EXPECT_EQ(window.Bounds(), (Rect{0, 0, Window::kBorderWidth, Window::kBorderHeight}));
  EXPECT_EQ(resizes, 2);
  EXPECT_EQ(listener.geometryChanges, 2) << "the toolkit knows what the user did";
}

TEST(WindowTest, FindsControlsByNameAndArrayElement) {
  Window window("Tessel_4", "Kestrix", {6990, 5070});
  auto& single = window.Add<Button>("Command1", -1, nullptr, Rect{});
  auto& second = window.Add<CheckBox>("Check1", 2, nullptr, Rect{});
  EXPECT_EQ(window.Find("Command1"), &single);
  EXPECT_EQ(window.Find("Check1", 2), &second);
  EXPECT_EQ(window.FindById("Check1(2)"), &second);
  EXPECT_EQ(window.Find("Check1"), nullptr);
  EXPECT_EQ(window.Find("Check1", 1), nullptr);
  EXPECT_EQ(window.FindById("Check1"), nullptr);
}

TEST(WindowTest, ListenerHearsEveryChangeOnce) {
  Window window("Tessel_1", "Kestrix", {6990, 5070});
  CountingListener listener;
  window.SetListener(&listener);
  auto& box = window.Add<CheckBox>("Check1", 1, nullptr, Rect{});
  box.SetTop(360);
  box.SetTop(360);
  box.SetCaption("Mail");
  box.SetChecked(true);
  box.SetEnabled(true);
  EXPECT_EQ(listener.added, 1);
  EXPECT_EQ(listener.changes, (std::vector{Change::kGeometry, Change::kCaption, Change::kValue}));
}

}  // namespace
}  // namespace tessel
