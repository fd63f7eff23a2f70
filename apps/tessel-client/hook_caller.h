// Calls the hooks of the data exchange as the client's menu does: each with the rows of the marked objects.
#pragma once

#include <QStringList>
#include <optional>
#include <vector>

#include "common/hosted_program.h"

namespace tessel::client {

using Keys = std::vector<ObjectKey>;

struct ExportFailure {
  QString reason;          // may be empty
  QStringList finished;    // directories that are final all the same
  QStringList unrecorded;  // those of them of which the database has no complete record
};

class HookCaller {
 public:
  explicit HookCaller(HostedProgram& hosted) : hosted_(hosted) {}

  void Collect(const Keys& documents);
  // Nothing unless the export broke off at its end or was not recorded: the hook says nothing then, and its
  // pages are gone.
  [[nodiscard]] std::optional<ExportFailure> Export(bool intoFolderStructure);
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
