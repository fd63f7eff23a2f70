#include "tessel/outcome_report.h"

#include <algorithm>
#include <ostream>

#include "common/outcome_words.h"
#include "tessel/command.h"

namespace tessel::cli {
namespace {

// More lines than a person reads; the trace has them all.
constexpr std::size_t kMostLines = 20;

std::string ReasonOf(const DocumentLock& document, const char* done) {
  switch (document.result) {
    case LockResult::kDone:
      return done;
    case LockResult::kAlreadyLocked:
      return "it was locked already";
    case LockResult::kNotLockable:
      return document.reason;
    case LockResult::kLockedByOther:
      return document.reason.empty() ? "it is locked by another user" : document.reason;
    case LockResult::kNotLocked:
      return "it is not locked";
    case LockResult::kFailed:
      break;
  }
  return "it could not be " + std::string(done);
}

std::string ReasonOf(const ContinueOutcome& outcome, const FileSystem& files) {
  switch (outcome.result) {
    case ContinueResult::kContinued:
      return "continued";
    case ContinueResult::kNotStopped:
      return "it is not stopped";
    case ContinueResult::kNoFolder:
      return "its root directory names no folder";
    case ContinueResult::kNotRenamed:
      return "the folder " + files.NativePath(outcome.oldFolder) + " could not be renamed to " +
             files.NativePath(outcome.newFolder);
    case ContinueResult::kNotUpdated:
      return "its status could not be written";
    case ContinueResult::kFailed:
      break;
  }
  return "it could not be read";
}

// An unlocked document that was not locked is as wished.
bool AsWished(const DocumentLock& document) {
  return document.result == LockResult::kDone || document.result == LockResult::kNotLocked;
}

constexpr const char* kLockResults[] = {"done",       "already-locked", "not-lockable", "locked-by-other",
                                        "not-locked", "failed"};
constexpr const char* kContinueResults[] = {"continued",   "not-stopped", "no-folder",
                                            "not-renamed", "not-updated", "failed"};
constexpr const char* kDispatchEnds[] = {"not-run", "failed", "finished"};
constexpr const char* kMonitorStarts[] = {"not-wanted", "started", "failed"};

template <class Enum, std::size_t kCount>
const char* NameIn(const char* const (&names)[kCount], Enum value) {
  return names[static_cast<std::size_t>(value)];
}

}  // namespace

void ReportProblems(const std::vector<Problem>& problems, Streams& streams, std::size_t count) {
  std::size_t lines = 0;
  std::size_t silent = 0;
  for (const Problem& problem : problems) {
    const bool aside = problem.kind == ProblemKind::kAside;
    if (aside && streams.quiet) {
      ++silent;
    } else if (lines < kMostLines) {
      streams.err << (aside ? "note: " : "problem: ") << WordsOf(problem, Speech::kEnglish) << "\n";
      ++lines;
    }
  }
  const std::size_t untold = std::max(count, problems.size()) - lines - silent;
  if (untold > 0) streams.err << "and " << untold << " more problems\n";
}

int ReportExport(const ExportOutcome& outcome, const FileSystem& files, Streams& streams) {
  const bool finished = outcome.dispatch == DispatchEnd::kFinished;
  // Directories that an export left behind before it failed are final all the same.
  for (const HandedOver& one : outcome.directories) {
    if (finished && streams.json) continue;
    (finished ? streams.out : streams.err << "already final: ") << files.NativePath(one.directory) << "\n";
  }
  const bool told = static_cast<bool>(streams.out.flush());
  for (const HandedOver& one : outcome.directories) {
    if (finished && !told) streams.err << "handed over: " << files.NativePath(one.directory) << "\n";
  }
  for (const HandedOver& one : outcome.directories) {
    if (!one.recordWhole)
      streams.err << "not recorded completely in the database: " << files.NativePath(one.directory) << "\n";
  }
  if (outcome.monitor == MonitorStart::kFailed) streams.err << "the server monitor was not started\n";
  ReportProblems(outcome.problems, streams, outcome.problemCount);
  if (outcome.Whole()) return kDone;
  streams.err << (finished ? "the export was handed over, but not everything is as it should be\n"
                           : "the export was not completed\n");
  return outcome.directories.empty() ? kRefused : kIncomplete;
}

int ReportLocks(const LockOutcome& outcome, const char* done, Streams& streams) {
  bool all = outcome.started;
  const bool unlocking = std::string(done) == "unlocked";
  for (const DocumentLock& document : outcome.documents) {
    if (document.result == LockResult::kDone || (unlocking && AsWished(document))) {
      if (!streams.json && !streams.quiet)
        streams.out << (document.result == LockResult::kDone ? done : "not locked") << ": "
                    << ObjectKeyText(document.document, ':') << "\n";
      continue;
    }
    all = false;
    streams.err << "object " << ObjectKeyText(document.document, ':') << " was not " << done << ": "
                << ReasonOf(document, done) << "\n";
  }
  ReportProblems(outcome.problems, streams);
  return all ? kDone : kRefused;
}

int ReportContinue(const ContinueOutcome& outcome, const ObjectKey& exchange, const FileSystem& files,
                   Streams& streams) {
  const bool continued = outcome.result == ContinueResult::kContinued;
  if (continued) {
    if (!streams.json && !streams.quiet) streams.out << "continued: " << ObjectKeyText(exchange, ':') << "\n";
  } else {
    streams.err << "object " << ObjectKeyText(exchange, ':')
                << " was not continued: " << ReasonOf(outcome, files) << "\n";
  }
  ReportProblems(outcome.problems, streams);
  return continued ? kDone : kRefused;
}

Json JsonOf(const ExportOutcome& outcome, const FileSystem& files) {
  Json directories = Json::array();
  for (const HandedOver& one : outcome.directories) {
    directories.push_back({{"path", files.NativePath(one.directory)}, {"recorded", one.recordWhole}});
  }
  return {{"dispatch", NameIn(kDispatchEnds, outcome.dispatch)},
          {"directories", directories},
          {"monitor", NameIn(kMonitorStarts, outcome.monitor)},
          {"problems", JsonOf(outcome.problems)},
          {"problemCount", outcome.problemCount}};
}

Json JsonOf(const LockOutcome& outcome) {
  Json documents = Json::array();
  for (const DocumentLock& one : outcome.documents) {
    documents.push_back({{"object", JsonOf(one.document)},
                         {"result", NameIn(kLockResults, one.result)},
                         {"reason", one.reason}});
  }
  return {{"documents", documents}, {"problems", JsonOf(outcome.problems)}};
}

Json JsonOf(const ContinueOutcome& outcome, const ObjectKey& exchange) {
  return {{"object", JsonOf(exchange)},
          {"result", NameIn(kContinueResults, outcome.result)},
          {"oldFolder", outcome.oldFolder},
          {"newFolder", outcome.newFolder},
          {"problems", JsonOf(outcome.problems)}};
}

Json JsonOf(const std::vector<embedded::ObjectDialogRequest>& objects) {
  Json all = Json::array();
  for (const embedded::ObjectDialogRequest& one : objects) {
    Json attributes = Json::object();
    for (const auto& [name, value] : one.attributes)
      attributes[name] = value;
    all.push_back({{"title", one.title}, {"attributes", attributes}});
  }
  return all;
}

}  // namespace tessel::cli
