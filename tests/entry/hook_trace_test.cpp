#include "entry/hook_trace.h"

#include <gtest/gtest.h>

#include "support/world.h"

namespace tessel::test {
namespace {

TEST(HookTrace, StartsUnderTheHooksNameWithTheLocalSettingsOfTheMoment) {
  struct Case {
    const char* settings;  // empty: there is no file
    const char* directory;
    bool on;
  };
  const Case cases[] = {
      {"", "c:\\", true},
      {"[Trace]\r\nTracePath=D:\\logs\r\nTraceOn=False\r\n", "D:\\logs", false},
      {"[Trace]\r\nTraceOn=1\r\n", "c:\\", true},
      // A switch that is no Boolean leaves the value as it was.
      {"[Trace]\r\nTraceOn=perhaps\r\n", "c:\\", true},
  };
  World world;
  for (const Case& row : cases) {
    SCOPED_TRACE(row.settings);
    if (*row.settings != '\0') world.folder.Write("program/prjTessel.ini", row.settings);
    world.trace->entries.clear();
    StartHookTrace(world.program, "_Client_LockObjects");
    const TraceEntry& entry = world.trace->entries.front();
    EXPECT_EQ(entry.text, "Start tracing on prjTessel_Client_LockObjects at: 31.01.2024 15:45:02");
    EXPECT_EQ(entry.number, 0);
    EXPECT_EQ(entry.name, "prjTessel_Client_LockObjects");
    EXPECT_EQ(entry.directory, row.directory);
    EXPECT_EQ(entry.on, row.on);
  }
}

TEST(HookTrace, IsCompleteWhenAHookReturns) {
  World world;
  world.Select({World::kGearbox});
  EXPECT_EQ(world.trace->flushed, world.trace->entries.size());
  world.driver.Do([&](UserActions& user) {
    EXPECT_EQ(world.trace->entries[world.trace->flushed - 1].text,
              "Check whether there are objects selected for transmitting!");
    EXPECT_EQ(user.Click("Command2"), "");
  });
  EXPECT_EQ(world.Export(), 1);
  EXPECT_EQ(world.trace->flushed, world.trace->entries.size());
}

}  // namespace
}  // namespace tessel::test
