// Starts the server monitor for an exchange that goes back into its queue.
#pragma once

#include "common/hosted_program.h"

namespace tessel {

enum class SenderStart {
  kNotWanted,  // the configuration has the sending done by a service
  kStarted,
  kFailed,
};

// As a dispatch starts it, when the configuration asks for that ("UseServerMonitor").
SenderStart StartSenderFor(HostedProgram& hosted, const ObjectKey& exchange);

}  // namespace tessel
