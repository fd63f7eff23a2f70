// CommonXFunctions: continuing an exchange that the sending stage stopped.
#pragma once

#include "config/services.h"
#include "host/record_list.h"
#include "locking/lock_outcome.h"
#include "selection/start_up.h"

namespace tessel::CommonXFunctions {

// Continues the data exchange object in row 0 when it is stopped: its folder goes from its "Break" to its
// "New" name and its status becomes 2. When the status cannot be written the folder gets its old name back. A
// folder that has its new name already, and not the old one, was renamed by a call that was cut off; this one
// goes on behind it. Failures are told in message boxes.
ContinueOutcome ContinueBatchMode(Services& services, const PcSessionPtr& session,
                                  const PcRecordListPtr& first);

}  // namespace tessel::CommonXFunctions
