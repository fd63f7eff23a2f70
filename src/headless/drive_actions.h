// The commands of the drive protocol that act on the window on top.
#pragma once

#include <string>

#include "headless/drive_lines.h"
#include "headless/headless_toolkit.h"

namespace tessel {

[[nodiscard]] bool IsUserAction(const std::string& verb);

// Performs the action of a command. Error: CommandError when it is written wrongly or was refused.
void PerformUserAction(const Json& command, HeadlessToolkit& toolkit);

}  // namespace tessel
