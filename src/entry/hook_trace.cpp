#include "entry/hook_trace.h"

#include "entry/program.h"
#include "host/value.h"
#include "messages/guard.h"
#include "platform/paths.h"

namespace tessel {

void StartHookTrace(Program& program, const std::string& suffix) noexcept {
  const ProgramLocation& location = program.platform.program;
  StartupValues& startup = program.declarations.startup;
  IgnoringErrors(
      [&] { program.systemTool.SetIniFile(paths::Join(location.directory, location.name + ".ini")); });
  IgnoringErrors([&] { startup.TracePath = program.systemTool.ReadSetting("Trace", "TracePath", "c:\\"); });
  IgnoringErrors(
      [&] { startup.TraceOn = ParseBoolean(program.systemTool.ReadSetting("Trace", "TraceOn", "True")); });
  IgnoringErrors([&] {
    const std::string name = location.name + suffix;
    program.trace.Start("Start tracing on " + name + " at: " + TraceTimeText(program.platform.clock.Now()),
                        startup.TracePath, name, startup.TraceOn);
  });
}

}  // namespace tessel
