// Puts in order what exports left that were cut off: after it, every final directory has its record, every
// record its directory, and nothing temporary of a dead process stays.
#pragma once

#include <string>
#include <vector>

#include "exchange/exchange.h"
#include "exchange/export_journal.h"
#include "host/session.h"
#include "messages/trace.h"
#include "platform/file_system.h"

namespace tessel {

enum class RecoveryStep {
  kForward,    // a directory that was complete and recorded got its final name
  kRemoved,    // a directory that was not complete, or not recorded, was removed
  kRecord,     // the data exchange object of such a directory was deleted
  kContinued,  // an exchange whose folder was renamed already got its status
};

struct Recovered {
  RecoveryStep step = RecoveryStep::kRemoved;
  std::string subject;  // the directory or object
};

struct RecoveryOptions {
  bool dryRun = false;  // changes nothing, and says what it would do
  // Takes temporary directories without a journal away as well. Nobody can tell whose they are: an export of
  // a version that kept no journal may be at work on them.
  bool removeStrays = false;
};

// Puts in order what the export of a journal that is held left: a dead one, or this process' own at its end.
// Deletes the journal unless the run is dry. Errors go to the caller; the journal then stays for the next
// recovery.
void SettleExport(FileSystem& files, PcSession& session, ExportJournal& journal, bool dryRun,
                  std::vector<Recovered>& done);

// Clears away everything temporary that an export still has, with its record where that stands alone. Errors
// go to the caller; what is left behind, the next start-up finds in the journal.
void DiscardExchangeDirectory(FileSystem& files, PcSession& session, ExchangeState& exchange);

// Looks at one exchange path, which need not exist. Exports whose processes live are left alone. Errors end
// the journal in hand alone; they are traced, and the next recovery tries again.
[[nodiscard]] std::vector<Recovered> RecoverExports(Trace& trace, FileSystem& files, PcSession& session,
                                                    const std::string& exchangePath,
                                                    const RecoveryOptions& options);

}  // namespace tessel
