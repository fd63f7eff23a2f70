// Says on the command line what became of a hook, and with which exit status the command ends.
#pragma once

#include <cstddef>
#include <vector>

#include "dispatch/export_outcome.h"
#include "embedded/dialogs/host_dialogs.h"
#include "locking/lock_outcome.h"
#include "platform/file_system.h"
#include "tessel/json_result.h"

namespace tessel::cli {

// The directories that were handed over go to standard output, what is missing and why to standard error.
// kDone, kRefused when nothing was handed over, kIncomplete when something is missing in what was.
[[nodiscard]] int ReportExport(const ExportOutcome& outcome, const FileSystem& files, Streams& streams);

// Each document that is not as wished, with the reason. `done` is "locked" or "unlocked".
[[nodiscard]] int ReportLocks(const LockOutcome& outcome, const char* done, Streams& streams);
[[nodiscard]] int ReportContinue(const ContinueOutcome& outcome, const ObjectKey& exchange,
                                 const FileSystem& files, Streams& streams);

// One line a problem, the oldest first, those that touch nothing that was wanted as notes; at the end how
// many were not shown, of `count` problems when some were not kept.
void ReportProblems(const std::vector<Problem>& problems, Streams& streams, std::size_t count = 0);

// The same as members of a result.
[[nodiscard]] Json JsonOf(const ExportOutcome& outcome, const FileSystem& files);
[[nodiscard]] Json JsonOf(const LockOutcome& outcome);
[[nodiscard]] Json JsonOf(const ContinueOutcome& outcome, const ObjectKey& exchange);
[[nodiscard]] Json JsonOf(const std::vector<embedded::ObjectDialogRequest>& objects);

}  // namespace tessel::cli
