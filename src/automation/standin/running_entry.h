// The entry of an object in the table of running objects.
#pragma once

#include "automation/com/com_ptr.h"
#include "automation/server/module.h"

namespace tessel::automation {

// Lists an object under a class as long as it lives, without keeping the object alive. Whoever finds it there
// calls the object through the entry; afterwards his calls fail as those to a server that is gone.
class RunningEntry {
 public:
  // The object outlives the entry.
  RunningEntry(Module& module, REFCLSID classId, IDispatch& object);
  ~RunningEntry();
  RunningEntry(const RunningEntry&) = delete;
  RunningEntry& operator=(const RunningEntry&) = delete;

 private:
  class Listed;
  ComPtr<Listed> listed_;
  DWORD entry_ = 0;
};

}  // namespace tessel::automation
