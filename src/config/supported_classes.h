// The host classes that an exchange works with, fixed from the class mechanisms that they support.
#pragma once

#include "config/startup_values.h"
#include "host/metadata.h"
#include "messages/trace.h"

namespace tessel {

// Sets the class ids of the start-up values. False when no class supports the exchange of documents, when the
// transmittal mechanism is missing, or when the folder-structure mechanism, looked at in that mode alone, has
// no class. Error 9 for another mechanism without classes; a missing one leaves its id as it was.
[[nodiscard]] bool FixSupportedClasses(const PcMetaData& metaData, StartupValues& startup, Trace& trace);

}  // namespace tessel
