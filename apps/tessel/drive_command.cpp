#include "headless/drive_protocol.h"
#include "tessel/commands.h"
#include "tessel/readiness.h"
#include "tessel/workbench.h"

namespace tessel::cli {

int RunDrive(const Drive& command, Streams& streams) {
  DriveProtocol protocol(streams.in, streams.out);
  Workbench workbench(command.login, protocol);
  TellReadiness(workbench, streams);
  return protocol.Run(workbench, workbench.Windows()) == 0 ? kDone : kRefused;
}

}  // namespace tessel::cli
