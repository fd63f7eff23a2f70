// Pauses that keep the windows drawn.
#pragma once

#include "platform/operating_system.h"

namespace tessel::qt {

// Windows are drawn and moved during a pause, so that an export does not look stuck; clicks and keys wait
// until the program lets events run, since whoever pauses is in the middle of its work.
class QtPauser : public Pauser {
 public:
  void Sleep(std::chrono::milliseconds time) override;
};

}  // namespace tessel::qt
