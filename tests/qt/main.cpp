#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  // The tests look at nothing but their own windows.
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  setenv("QT_SCALE_FACTOR", "1", 0);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setStyle("fusion");
  return RUN_ALL_TESTS();
}
