#include <gtest/gtest.h>

#include "support/world.h"

namespace tessel::test {
namespace {

TEST(EntryObject, SharesTheProgramWithOthers) {
  World world;
  StartApplication second(world.program);
  world.Select({World::kGearbox});
  world.driver.Click("Command2");
  PcRecordListPtr none;
  EXPECT_EQ(second.StartExport(world.session, "", nullptr, nullptr, none), 1);
  EXPECT_TRUE(world.Wizard().ExportCancelled);
}

}  // namespace
}  // namespace tessel::test
