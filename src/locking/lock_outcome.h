// What became of a call of the lock, unlock or continuation hook: the value that those read who report on it.
#pragma once

#include <string>
#include <vector>

#include "host/object_key.h"
#include "messages/problems.h"

namespace tessel {

enum class LockResult {
  kDone,
  kAlreadyLocked,
  kNotLockable,    // wrong state, operation or revision stage
  kLockedByOther,  // by somebody else, and the user has no right to unlock
  kNotLocked,      // there was nothing to unlock
  kFailed,         // the problems say why
};

struct DocumentLock {
  ObjectKey document;  // 0 and 0 when the row does not name one
  LockResult result = LockResult::kFailed;
  std::string reason;  // for kNotLockable: which condition is not met
};

struct LockOutcome {
  bool started = false;                 // the start-up went through
  std::vector<DocumentLock> documents;  // one a row, in order
  bool changed = false;                 // at least one lock changed
  std::vector<Problem> problems;

  [[nodiscard]] bool Whole() const {
    bool whole = started;
    for (const DocumentLock& one : documents)
      whole = whole && one.result == LockResult::kDone;
    return whole;
  }
};

enum class ContinueResult {
  kContinued,
  kNotStopped,  // the exchange is in another phase
  kNoFolder,    // its root directory names no folder
  kNotRenamed,  // the folder keeps its name
  kNotUpdated,  // the status could not be written; the folder got its old name back
  kFailed,      // the problems say why
};

struct ContinueOutcome {
  ContinueResult result = ContinueResult::kFailed;
  std::string oldFolder;
  std::string newFolder;
  std::vector<Problem> problems;
};

}  // namespace tessel
