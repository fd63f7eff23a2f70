// Calls the hooks of the data exchange as the client's menu does: each with the rows of the marked objects.
#pragma once

#include <vector>

#include "common/hosted_program.h"
#include "selection/selection.h"

namespace tessel::client {

using Keys = std::vector<ObjectKey>;

struct RefusedDocument {
  ObjectKey key;
  CollectRefusal why = CollectRefusal::kNone;
};

class HookCaller {
 public:
  explicit HookCaller(HostedProgram& hosted) : hosted_(hosted) {}

  // Collects those that can be exported and returns the others, which nobody is told of.
  [[nodiscard]] std::vector<RefusedDocument> Collect(const Keys& documents);
  // Makes these the collected ones.
  void KeepCollected(const Keys& documents);
  // What became of it, until the next call; the hooks return the same whether it went well or not.
  const ExportOutcome& Export(bool intoFolderStructure);
  const LockOutcome& Lock(const Keys& documents);
  const LockOutcome& Unlock(const Keys& documents);
  const ContinueOutcome& Continue(const ObjectKey& exchange);
  void ShowLatest(const ObjectKey& document);
  // The client's own object dialog.
  void ShowObject(const ObjectKey& key);

 private:
  HostedProgram& hosted_;
};

}  // namespace tessel::client
