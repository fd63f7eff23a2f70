// A stopped exchange that somebody continued without coming to the directory's name.
#pragma once

#include "sender/work.h"

namespace tessel::sender {

// Whether the record of a stopped directory says that it is continued. False when it cannot be told.
[[nodiscard]] bool IsContinued(const WorkParts& parts, const Databases& databases,
                               const ExchangeDirectory& directory);

// Gives it the name by which it is in the queue. Errors as the file system raises them.
void PutBack(const WorkParts& parts, const ExchangeDirectory& directory);

}  // namespace tessel::sender
