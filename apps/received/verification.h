// Whether a received exchange is what its structure and data file say: every file there, no other one, and
// the files in agreement with each other.
#pragma once

#include <vector>

#include "received/exchange.h"
#include "received/file_source.h"

namespace tessel::received {

// Adds what is wrong to `problems`, which hold what was found in reading. Costs linear time in the objects.
void Verify(const FileSource& source, const Exchange& exchange, std::vector<Problem>& problems);

// How many documents the structure file lists, each counted once.
[[nodiscard]] std::size_t DocumentCount(const Exchange& exchange);

}  // namespace tessel::received
