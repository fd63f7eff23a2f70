// The commands behind the command line. Each returns the exit status; errors go to the caller.
#pragma once

#include "tessel/command.h"
#include "tessel/streams.h"

namespace tessel::cli {

int RunHostCreate(const HostCreate& command, Streams& streams);
int RunHostShow(const HostShow& command, Streams& streams);
int RunRecover(const Recover& command, Streams& streams);
int RunDrive(const Drive& command, Streams& streams);
int RunExport(const Export& command, Streams& streams);

// A hook on named objects, after the login.
class Workbench;
class MessageDriver;
struct HookDesk {
  Workbench& workbench;
  const MessageDriver& driver;
  const std::vector<std::string>& objects;
  Streams& streams;
  std::size_t done = 0;  // objects, so far
};
using HookRun = int (*)(HookDesk& desk);
int RunHook(const NamedHookCall& command, HookRun action, Streams& streams);
int RunLock(HookDesk& desk);
int RunUnlock(HookDesk& desk);
int RunContinue(HookDesk& desk);
int RunLatest(HookDesk& desk);

}  // namespace tessel::cli
