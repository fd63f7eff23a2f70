// Life-cycle operations: the copy of files, and changes of state.
#pragma once

#include <string>
#include <vector>

#include "embedded/session/session.h"
#include "host/object.h"

namespace tessel::embedded {

struct LifeCycleRun {
  std::vector<PcObjectPtr> objects;
  std::string operation;  // name, in any letter case
  std::string directory;  // target of a copy
  bool overwrite = true;  // of files that the copy finds in its directory
  std::string comment;
  bool confirm = false;  // ask through HostDialogs first
};

// Runs an operation on objects; a copy that was not cancelled calls LFCStage2 before it returns. 1 done, 2 or
// 7 cancelled by the person's answer, 2 by the host's CopyWatch. A change of state writes STATE and, when
// there is a comment, VRK_COMMENT of every object or of none. Errors: HostError for an object whose class has
// no such operation, for a copy that is refused (see VaultCopy) and with the code of a refused write.
int RunLifeCycle(EmbeddedSession& session, const LifeCycleRun& run);

}  // namespace tessel::embedded
