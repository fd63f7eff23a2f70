// The start-up of a hook's trace.
#pragma once

#include <string>

namespace tessel {

class Program;

// Reads the trace settings of the local settings file and starts the writer under the hook's name. Errors of
// any step are ignored.
void StartHookTrace(Program& program, const std::string& suffix) noexcept;

}  // namespace tessel
