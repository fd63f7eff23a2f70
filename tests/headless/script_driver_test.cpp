#include "support/script_driver.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "headless/sample_pages.h"

namespace tessel {
namespace {

// Runs the sample pages with a script that is wrong; they must come to their end all the same.
void RunPages(const std::function<void(test::ScriptDriver&)>& write) {
  test::ScriptDriver script;
  HeadlessToolkit toolkit(script);
  test::SamplePages pages(toolkit);
  write(script);
  pages.Run();
}

TEST(ScriptDriverTest, AWrongScriptFailsAndEnds) {
  EXPECT_NONFATAL_FAILURE(RunPages([](auto& script) { script.Click("Command1"); }),
                          "the script has no step for Tessel_1");
  EXPECT_NONFATAL_FAILURE(RunPages([](auto& script) { script.Click("Command1").Click("Command4"); }),
                          "refused: Command4 is disabled");
  EXPECT_NONFATAL_FAILURE(RunPages([](auto& script) { script.Click("Command1").CloseWindow(); }),
                          "no answer for box \"Cancel\" none");
  EXPECT_NONFATAL_FAILURE(
      RunPages([](auto& script) { script.Click("Command1").CloseWindow().AnswerBox(MessageAnswer::kOk); }),
      "offers no ok");
  EXPECT_NONFATAL_FAILURE(RunPages([](auto& script) { script.Click("Command2").Click("Command1"); }),
                          "1 steps of the script were not reached");
}

}  // namespace
}  // namespace tessel
