// CommonXFunctions: continuing an exchange that the sending stage stopped.
#pragma once

#include "config/services.h"
#include "host/record_list.h"
#include "selection/start_up.h"

namespace tessel::CommonXFunctions {

// Continues the data exchange object in row 0 when it is stopped: its folder goes from its "Break" to its
// "New" name and its status becomes 2. When the status cannot be written the folder gets its old name back.
// Failures are told in message boxes. Always 0.
int ContinueBatchMode(Services& services, StartUpState& state, const PcSessionPtr& session,
                      const PcRecordListPtr& first);

}  // namespace tessel::CommonXFunctions
