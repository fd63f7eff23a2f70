// Records the SHA-256 sums of an exchange's files beside its data exchange object, when the setting asks for
// it.
#pragma once

#include "dispatch/additional_values.h"
#include "platform/file_system.h"

namespace tessel {

// Takes the place of the additional-values component, which the dispatch calls for each recipient when all
// files are in his directory and before it gets its final name: so the sums are part of the same unit of
// work as the record. An exchange whose sums cannot be recorded is not sent. The file system outlives what
// the factory makes.
[[nodiscard]] AdditionalValuesFactory RecordingChecksums(const FileSystem& files,
                                                         AdditionalValuesFactory component);

}  // namespace tessel
