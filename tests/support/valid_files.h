// The files of exchanges against their schemas.
#pragma once

#include "support/temporary_folder.h"

namespace tessel::test {

// Fails the test for each structure, data and neutral-formats file below the folder that is not valid.
void ExpectValidExchangeFiles(const TemporaryFolder& folder);

}  // namespace tessel::test
