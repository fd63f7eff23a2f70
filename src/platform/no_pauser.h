// For runs in which nobody watches a window: every pause is over at once.
#pragma once

#include "platform/operating_system.h"

namespace tessel {

class NoPauser : public Pauser {
 public:
  void Sleep(std::chrono::milliseconds) override {}
};

}  // namespace tessel
