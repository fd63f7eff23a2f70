#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>

#include "support/temporary_folder.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  // The tests look at nothing but their own windows.
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  setenv("QT_SCALE_FACTOR", "1", 0);
  // Neither the user's language nor the user's settings play a part.
  setenv("LC_ALL", "C.UTF-8", 1);
  unsetenv("LANGUAGE");
  const tessel::test::TemporaryFolder configuration;
  setenv("XDG_CONFIG_HOME", configuration.Path().c_str(), 1);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setOrganizationName("tessel");
  QApplication::setApplicationName("tessel-tests");
  QApplication::setStyle("fusion");
  return RUN_ALL_TESTS();
}
