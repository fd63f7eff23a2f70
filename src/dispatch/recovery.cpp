#include "dispatch/recovery.h"

#include "dispatch/recipients.h"
#include "exchange/export_journal.h"
#include "host/error.h"
#include "host/object_store.h"
#include "messages/guard.h"
#include "platform/paths.h"

namespace tessel {
namespace {

// What one dead export left.
class LeftExport {
 public:
  LeftExport(FileSystem& files, PcSession& session, bool dryRun, std::vector<Recovered>& done)
      : files_(files), session_(session), dryRun_(dryRun), done_(done) {}

  void Settle(ExportJournal& journal) {
    for (const ExportJournal::Entry& entry : journal.Entries())
      Settle(entry);
    if (dryRun_) return;
    for (const ExportJournal::Entry& entry : journal.Entries()) {
      if (!entry.mark.empty()) session_.ForgetMark(entry.mark);
    }
    journal.Close();
  }

 private:
  void Settle(const ExportJournal::Entry& entry) {
    if (!files_.FolderExists(entry.directory)) return;  // final already, or never made
    if (entry.ready && (entry.mark.empty() || session_.WasCommitted(entry.mark))) {
      GoForward(entry);
      return;
    }
    if (entry.record.objectId != 0) DeleteRecord(entry.record);
    Note(RecoveryStep::kRemoved, entry.directory);
    if (!dryRun_) files_.DeleteFolder(entry.directory);
  }

  void GoForward(const ExportJournal::Entry& entry) {
    const std::string target = FinalDirectory(entry.directory, entry.prefix);
    Note(RecoveryStep::kForward, target);
    if (dryRun_) return;
    files_.Move(entry.directory, target);
    files_.SyncFolder(paths::Parent(target));
  }

  void DeleteRecord(const ObjectKey& key) {
    const PcObjectPtr record = Required(session_.ObjectStore(), "object store")->Object(key);
    if (!record) return;
    Note(RecoveryStep::kRecord, ObjectKeyText(key, ':'));
    if (dryRun_) return;
    if (const int code = record->Delete(*Required(session_.NewBehavior(), "behaviour")))
      throw HostError("Deleting the record " + ObjectKeyText(key, ':') + ": " + session_.ErrorText(code),
                      code);
  }

  void Note(RecoveryStep step, const std::string& subject) { done_.push_back({step, subject}); }

  FileSystem& files_;
  PcSession& session_;
  bool dryRun_;
  std::vector<Recovered>& done_;
};

// Temporary directories of which no journal tells.
void SettleStrays(FileSystem& files, const std::string& exchangePath, const RecoveryOptions& options,
                  std::vector<Recovered>& done) {
  std::vector<std::string> alive;
  for (const std::string& name : files.ListFiles(exchangePath)) {
    if (!ExportJournal::IsName(name)) continue;
    // The names of one export differ from its directory's in the last character alone, and in "_temp".
    alive.push_back(name.substr(0, name.rfind('.') - 1));
  }
  for (const std::string& name : files.ListFolders(exchangePath)) {
    if (!IsTemporaryExportName(name)) continue;
    bool owned = false;
    for (const std::string& start : alive)
      owned = owned || name.starts_with(start);
    if (owned) continue;
    const std::string directory = paths::Join(exchangePath, name);
    done.push_back({RecoveryStep::kRemoved, directory});
    if (!options.dryRun) files.DeleteFolder(directory);
  }
}

// Whether a directory is complete whose record this session could neither commit nor take back: after an
// error of the disk only the database opened anew tells whether the record stands.
bool IsDoubtful(const ExportJournal& journal, PcSession& session) {
  for (const ExportJournal::Entry& entry : journal.Entries()) {
    if (entry.ready && !entry.mark.empty() && !session.WasCommitted(entry.mark)) return true;
  }
  return false;
}

}  // namespace

void SettleExport(FileSystem& files, PcSession& session, ExportJournal& journal, bool dryRun,
                  std::vector<Recovered>& done) {
  LeftExport(files, session, dryRun, done).Settle(journal);
}

void DiscardExchangeDirectory(FileSystem& files, PcSession& session, ExchangeState& exchange) {
  const std::unique_ptr<ExportJournal> journal = std::move(exchange.journal);
  const std::string directory = exchange.directoryPath;
  std::vector<Recovered> done;
  if (journal && IsDoubtful(*journal, session)) return;
  if (journal) {
    SettleExport(files, session, *journal, false, done);
  } else if (!directory.empty() && files.FolderExists(directory)) {
    files.DeleteFolder(directory);
  }
  exchange.directoryPath.clear();
}

std::vector<Recovered> RecoverExports(Trace& trace, FileSystem& files, PcSession& session,
                                      const std::string& exchangePath, const RecoveryOptions& options) {
  std::vector<Recovered> done;
  constexpr const char* kStep = "Putting in order what an export left (RecoverExports/CommonXFunctions)";
  const auto guarded = [&](const std::string& subject, const auto& work) {
    const ProblemSubject scope(trace.problems, subject);
    GuardedRun(trace, kStep, work, ProblemKind::kAside);
  };
  guarded(exchangePath, [&] {
    if (!files.FolderExists(exchangePath)) return;
    for (const std::string& name : files.ListFiles(exchangePath)) {
      if (!ExportJournal::IsName(name)) continue;
      const std::string path = paths::Join(exchangePath, name);
      guarded(path, [&] {
        const auto journal = ExportJournal::TakeOver(files, path);
        if (journal) SettleExport(files, session, *journal, options.dryRun, done);
      });
    }
    if (options.removeStrays) SettleStrays(files, exchangePath, options, done);
  });
  for (const Recovered& one : done)
    trace.Write("Put in order after an export that was cut off: " + one.subject);
  return done;
}

}  // namespace tessel
