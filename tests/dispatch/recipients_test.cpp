#include "dispatch/recipients.h"

#include <gtest/gtest.h>

namespace tessel {
namespace {

TEST(Recipients, DirectoriesDifferInTheirLastCharacter) {
  struct Case {
    const char* path;
    int row;
    const char* directory;
  };
  const Case cases[] = {{"C:\\ex\\@@_a_154502", 0, "C:\\ex\\@@_a_154502"},
                        {"C:\\ex\\@@_a_154502", 1, "C:\\ex\\@@_a_15450a"},
                        {"C:\\ex\\@@_a_154502", 26, "C:\\ex\\@@_a_15450z"},
                        {"/ex/\xc3\xbc", 2, "/ex/b"}};
  for (const Case& test : cases)
    EXPECT_EQ(RecipientDirectory(test.path, test.row), test.directory);
}

}  // namespace
}  // namespace tessel
