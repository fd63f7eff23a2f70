// Calls the hooks of the data exchange as the client's menu does: each with the rows of the marked objects.
#pragma once

#include <vector>

#include "common/hosted_program.h"

namespace tessel::client {

using Keys = std::vector<ObjectKey>;

class HookCaller {
 public:
  explicit HookCaller(HostedProgram& hosted) : hosted_(hosted) {}

  void Collect(const Keys& documents);
  void Export(bool intoFolderStructure);
  void Lock(const Keys& documents);
  void Unlock(const Keys& documents);
  void Continue(const ObjectKey& exchange);
  void ShowLatest(const ObjectKey& document);
  // The client's own object dialog.
  void ShowObject(const ObjectKey& key);

 private:
  HostedProgram& hosted_;
};

}  // namespace tessel::client
