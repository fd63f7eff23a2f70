// One interactive export, from the checks to the clean-up after the wizard.
#pragma once

#include <cstdint>
#include <string>

#include "host/session.h"

namespace tessel {

class Program;

// Result of the hook StartExport. Errors that no inner routine handled go to the caller.
std::int16_t RunExport(Program& program, const PcSessionPtr& session, const std::string& operation);

// Puts in order what exports below the configured path left that were cut off; every hook with a start-up
// does so behind it, an export before it makes its names. Errors are traced.
void RecoverCutOffExports(Program& program, const PcSessionPtr& session);

// Keeps what became of the run that is over.
void KeepExportOutcome(Program& program) noexcept;

// Shows what the hook tells after such an error.
void ShowExportFailure(Program& program);

}  // namespace tessel
