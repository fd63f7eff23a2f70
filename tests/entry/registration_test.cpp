#include <gtest/gtest.h>

#include <string>

#include "support/world.h"

namespace tessel::test {
namespace {

// Clients hold these ids; a change breaks every installation.
TEST(Registration, IdsNeverChange) {
  EXPECT_STREQ(registration::kClassId, "{8E2B61D4-5C0F-4B7A-9D3E-71A4C6F0B852}");
  EXPECT_STREQ(registration::kInterfaceId, "{3F9A17C6-20DE-4E85-B1C8-0A5D94E7236B}");
}

TEST(Registration, EntryObjectsShareTheProgram) {
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
