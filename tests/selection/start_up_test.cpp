#include "selection/start_up.h"

#include <gtest/gtest.h>

#include "support/export_world.h"

namespace tessel {
namespace {

TEST(StartUp, ReadsTheConfigurationOfTheUser) {
  test::ExportWorld world({.settings = test::SettingLines{{"Path", {"ExportPrefix=Sent"}}}});
  EXPECT_TRUE(CommonXFunctions::Init(world.services, world.session));
  EXPECT_EQ(world.declarations.configuration.ExportPrefix, "Sent");
  EXPECT_EQ(world.declarations.startup.databaseAlias, "WORLD");
  EXPECT_EQ(world.declarations.startup.TransmittalClassID, 900);
  EXPECT_TRUE(world.user.seen.empty());
}

TEST(StartUp, WithoutSettingsOrSessionItFailsWithItsMessage) {
  test::ExportWorld world;
  EXPECT_FALSE(CommonXFunctions::Init(world.services, world.session));
  EXPECT_FALSE(CommonXFunctions::Init(world.services, nullptr));
  const std::vector<std::string> boxes(2, "critical|Kestrix Error|no Message found");
  EXPECT_EQ(world.user.seen, boxes);
}

class FailingRun : public RunObjects {
 public:
  void UnloadPages() override { throw HostError("no page"); }
  void ClearExchangeDirectoryName() override { cleared = true; }
  bool cleared = false;
};

TEST(StartUp, TheNextExportGetsItsOwnDirectoryWhateverHappensToThePages) {
  test::ExportWorld world;
  FailingRun run;
  CommonXFunctions::TerminateObjs(world.services, run);
  EXPECT_TRUE(run.cleared);
}

}  // namespace
}  // namespace tessel
