// Works on one exchange directory at a time, from the queue to its end. Every step that a crash could
// separate from the next is announced in the journal, so that the next worker goes on from there: nothing is
// lost, and nothing is sent twice without a person having said so.
#pragma once

#include "sender/work.h"

namespace tessel::sender {

class Worker {
 public:
  explicit Worker(const WorkParts& parts) : parts_(parts), databases_(parts.settings, parts.files) {}

  // Nothing is raised.
  WorkAnswer Process(const ExchangeDirectory& directory);

 private:
  WorkParts parts_;
  Databases databases_;
};

}  // namespace tessel::sender
