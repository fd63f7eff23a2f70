// The commands behind the command line. Each returns the exit status; errors go to the caller.
#pragma once

#include "tessel/cli.h"
#include "tessel/command.h"

namespace tessel::cli {

int RunHostCreate(const HostCreate& command, Streams& streams);
int RunHostShow(const HostShow& command, Streams& streams);
int RunDrive(const Drive& command, Streams& streams);
int RunExport(const Export& command, Streams& streams);
int RunHook(const NamedHookCall& command, Streams& streams);

}  // namespace tessel::cli
