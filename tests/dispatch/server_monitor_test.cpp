#include "dispatch/server_monitor.h"

#include <gtest/gtest.h>

#include "support/export_world.h"

namespace tessel {
namespace {

TEST(ServerMonitor, IsStartedWithOneArgumentAndChecked) {
  test::ExportWorld world;
  const std::string session = world.session->Identifier();
  EXPECT_TRUE(StartServerMon(world.services, "C:\\prog", *world.session, 77, 900, "DX 1\" & x"));
  EXPECT_EQ(world.launcher.starts,
            std::vector<std::string>{"C:\\prog\\KestrixServMon.exe [" + session + "@900@77@DX 1\" & x]"});
  EXPECT_TRUE(world.pauser.pauses.empty());
  world.launcher.processId = 0;
  EXPECT_FALSE(StartServerMon(world.services, "C:\\prog", *world.session, 77, 900, "DX-1"));
  EXPECT_EQ(world.pauser.pauses, std::vector<int>(50, 100));
  EXPECT_TRUE(world.Traced(" ==> Server Monitor NOT started!!"));
}

}  // namespace
}  // namespace tessel
