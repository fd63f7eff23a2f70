#include "sender/worker.h"

#include "sender/exchange_work.h"
#include "sender/put_back.h"

namespace tessel::sender {

WorkAnswer Worker::Process(const ExchangeDirectory& directory) {
  try {
    const std::vector<std::string> problems = databases_.Open();
    const bool stopped = directory.place == Place::kStopped;
    if (stopped && !IsContinued(parts_, databases_, directory)) return {WorkResult::kRests, 0, {}};
    LockAnswer answer = LockAnswer::kTaken;
    const auto lock =
        DirectoryLock::Take(parts_.files, directory.parent, directory.base, parts_.leases, answer);
    if (!lock) return {answer == LockAnswer::kBusy ? WorkResult::kBusy : WorkResult::kForeign, 0, {}};
    if (!parts_.files.FolderExists(directory.Path())) return {};
    if (stopped) {
      if (!IsContinued(parts_, databases_, directory)) return {WorkResult::kRests, 0, {}};
      PutBack(parts_, directory);
    }
    const ExchangeDirectory queued = stopped ? directory.At(Place::kQueued) : directory;
    WorkAnswer done = ExchangeWork(parts_, databases_, queued, *lock).Run();
    // A database that cannot be opened may be the one that the directory belongs to.
    if (done.result == WorkResult::kLeft && !problems.empty())
      return {WorkResult::kFailed, 0, problems.front()};
    return done;
  } catch (const std::exception& error) {
    return {WorkResult::kFailed, 0, error.what()};
  }
}

}  // namespace tessel::sender
