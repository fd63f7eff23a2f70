// CommonXFunctions: the start-up that every hook with configuration runs, and the end of a run.
#pragma once

#include "config/services.h"

namespace tessel {

// What the end of a run releases in higher subsystems. The entry implements it.
class RunObjects {
 public:
  virtual ~RunObjects() = default;
  // Unloads the pages Tessel_1, Tessel_2, Tessel_3 and Tessel_4, in this order.
  virtual void UnloadPages() = 0;
  // The next export makes a new directory.
  virtual void ClearExchangeDirectoryName() = 0;
};

namespace CommonXFunctions {

// Stores the session, makes the default behaviour, finds the admin setting object and reads the
// configuration. False after "e9030" was shown.
bool Init(Services& services, const PcSessionPtr& session);

// Releases the trace writer, unloads the pages and clears the exchange directory's name.
void TerminateObjs(Services& services, RunObjects& objects);

}  // namespace CommonXFunctions
}  // namespace tessel
