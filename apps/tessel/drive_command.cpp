#include <ostream>

#include "headless/drive_protocol.h"
#include "platform/caught_signals.h"
#include "platform/native/native_platform.h"
#include "tessel/commands.h"
#include "tessel/readiness.h"
#include "tessel/workbench.h"

namespace tessel::cli {

int RunDrive(const Drive& command, Streams& streams) {
  DriveProtocol protocol(streams.in, streams.out, [] { return CaughtSignals::Caught() != 0; });
  Workbench workbench(command.login, protocol);
  TellReadiness(workbench, streams);
  const CaughtSignals signals;
  LetSignalsEndWaits();
  workbench.SetCopyWatch([](const embedded::CopyStep&) { return CaughtSignals::Caught() == 0; });
  const int errors = protocol.Run(workbench, workbench.Windows());
  if (const int signal = CaughtSignals::Caught(); signal != 0) {
    streams.err << "ended by " << CaughtSignals::Name(signal) << "\n";
    return StatusOfSignal(signal);
  }
  return errors == 0 ? kDone : kRefused;
}

}  // namespace tessel::cli
