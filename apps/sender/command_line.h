// The command line of the sender (docs/sender.md).
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "platform/operating_system.h"

namespace tessel::sender {

// The four parts of the argument that the dispatch gives: "SESSION@CLASS@OBJECT@ID". The id may hold further
// "@".
struct DispatchStart {
  std::string session;
  std::string exchange;  // "CLASS:OBJECT"
  std::string identifier;
};
// Error 5 for a text of another form.
[[nodiscard]] DispatchStart ParseDispatchStart(const std::string& argument);

// Runs a command line without its first word. 0 done, 1 something was stopped or failed, 2 bad usage or
// settings. Takes over the signals that end the process.
int Run(const std::vector<std::string>& arguments, const Platform& platform, std::ostream& out,
        std::ostream& err);

}  // namespace tessel::sender
