#include <ostream>

#include "embedded/embedded_host.h"
#include "embedded/model_file.h"
#include "platform/posix/posix_platform.h"
#include "tessel/commands.h"

namespace tessel::cli {

int RunHostCreate(const HostCreate& command, Streams& streams) {
  PosixPlatform system;
  embedded::CreateDatabase(system.Services().files, command.database, command.model);
  streams.out << "created: " << command.database << "\n";
  return kDone;
}

int RunHostShow(const HostShow& command, Streams& streams) {
  PosixPlatform system;
  embedded::DescribeDatabase(system.Services().files, command.database, streams.out);
  return kDone;
}

}  // namespace tessel::cli
