// Whether a hook can work for a user: said before it begins, since the hook itself can say little without
// settings and texts.
#pragma once

#include "tessel/cli.h"
#include "tessel/command.h"

namespace tessel::cli {

class Workbench;

// Error: HostError when no settings object is linked to the user, or when there are no texts in the language
// that the command line asks for. Texts that are missing otherwise are only told.
void RequireReady(Workbench& workbench, const Login& login, Streams& streams);

// The same, all of it only told.
void TellReadiness(Workbench& workbench, Streams& streams);

// Names the file where more stands about what went wrong; nothing when none is written.
void TellTraceFile(Workbench& workbench, Streams& streams);

}  // namespace tessel::cli
