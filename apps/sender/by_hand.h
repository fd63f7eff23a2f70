// What a person decides about one exchange that is not in the queue.
#pragma once

#include <string>

#include "sender/work.h"

namespace tessel::sender {

enum class Decision {
  kSendAgain,  // a sent or stopped one goes back into the queue
  kMarkSent,   // a stopped one counts as sent, since it has arrived
};

// `name` is the directory's name or path, or the exchange's id or CLASS:OBJECT. The text says what was done.
// Error 5 when there is no such exchange, when several are meant, when a worker has it, when its record
// belongs to another directory or is gone, or when its state does not fit the decision.
[[nodiscard]] std::string Decide(const WorkParts& parts, const std::string& name, Decision decision);

}  // namespace tessel::sender
