#include "automation/server/module.h"

#include "platform/win32/wide_text.h"
#include "platform/win32/win32_platform.h"

namespace tessel::automation {

std::wstring ModulePath() {
  const ProgramLocation location = RunningProgram();
  return windows::ToWide(location.directory + "\\" + location.name + ".dll");
}

}  // namespace tessel::automation
