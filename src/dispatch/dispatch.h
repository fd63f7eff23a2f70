// The dispatch: for each recipient a directory, the structure file, the data exchange object and the data
// file; then the start of the server monitor.
#pragma once

#include <string>
#include <vector>

#include "config/services.h"
#include "dispatch/additional_values.h"
#include "dispatch/dispatch_request.h"
#include "dispatch/export_outcome.h"
#include "exchange/exchange.h"
#include "host/record_list.h"
#include "structure/structure.h"

namespace tessel {

struct DispatchParts {
  Services& services;
  ExchangeState& exchange;
  StructureState& structure;
  AdditionalValuesFactory additionalValues;
};

// Runs the dispatch. Adds to the outcome what becomes final, in recipient order, and sets how the dispatch
// and the start of the monitor ended. An error ends the dispatch and is traced; what was final by then stays.
// The caller hides its page when the dispatch is finished: closing a page is no cancel from then on.
void RunDispatch(DispatchParts& parts, const DispatchRequest& request, ExportOutcome& outcome);

}  // namespace tessel
