// One interactive export, from the checks to the clean-up after the wizard.
#pragma once

#include <cstdint>
#include <string>

#include "host/session.h"

namespace tessel {

class Program;

// Result of the hook StartExport. Errors that no inner routine handled go to the caller.
std::int16_t RunExport(Program& program, const PcSessionPtr& session, const std::string& operation);

// Shows what the hook tells after such an error.
void ShowExportFailure(Program& program);

}  // namespace tessel
