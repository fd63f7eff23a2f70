// Objects and what hangs below them.
#pragma once

#include <string>
#include <vector>

#include "embedded/session/session.h"

namespace tessel::embedded {

struct StructureObject {
  ObjectKey key;
  std::string description;
  std::string vaultName;  // FILE_NAME; empty: the object has no file
  std::string fileName;   // name that a copy of the file bears
};

// The objects and all that hangs below them by the default hierarchical link class of each object's class:
// every object once, parents before children, siblings in the order of their links. Error: HostError for an
// object that is gone.
[[nodiscard]] std::vector<StructureObject> ReadStructure(EmbeddedSession& session,
                                                         const std::vector<ObjectKey>& roots);

}  // namespace tessel::embedded
