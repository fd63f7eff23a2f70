#include "sender/queue.h"

#include <algorithm>
#include <ctime>
#include <set>

namespace tessel::sender {
namespace {

using std::chrono::milliseconds;

milliseconds InMilliseconds(Seconds time) {
  return std::chrono::duration_cast<milliseconds>(time);
}

}  // namespace

Queue::Queue(const WorkParts& parts, Watch& watch)
    : parts_(parts), watch_(watch), databases_(parts.settings, parts.files) {
  for (int i = 0; i < parts.settings.workers; ++i)
    threads_.emplace_back([this] { RunWorker(); });
}

Queue::~Queue() {
  {
    const std::lock_guard guard(mutex_);
    ending_ = true;
  }
  wake_.notify_all();
  for (std::thread& thread : threads_)
    thread.join();
}

void Queue::RunWorker() {
  Worker worker(parts_);
  for (;;) {
    ExchangeDirectory directory;
    {
      std::unique_lock guard(mutex_);
      wake_.wait(guard, [this] { return ending_ || !waiting_.empty(); });
      if (ending_) return;
      directory = waiting_.front();
      waiting_.pop_front();
    }
    const WorkAnswer answer = worker.Process(directory);
    {
      const std::lock_guard guard(mutex_);
      Take(directory, answer);
    }
    watch_.Wake();
  }
}

void Queue::Take(const ExchangeDirectory& directory, const WorkAnswer& answer) {
  Known& known = known_[directory.Path()];
  known.working = false;
  switch (answer.result) {
    case WorkResult::kStopped:
      clean_ = false;
      [[fallthrough]];
    case WorkResult::kDone:
      known_.erase(directory.Path());
      return;
    case WorkResult::kLater:
      known.tries = 0;
      break;
    case WorkResult::kLeft:
      SayOnce(known, directory.Name(), "left", answer.text);
      break;
    case WorkResult::kFailed:
      clean_ = false;
      SayOnce(known, directory.Name(), "failed", answer.text);
      break;
    default:
      break;
  }
  Postpone(known, answer);
}

void Queue::Postpone(Known& known, const WorkAnswer& answer) {
  const milliseconds scan = InMilliseconds(parts_.settings.scanInterval);
  ++known.tries;
  const auto growing = [&](milliseconds first) {
    return std::min(scan, first * (1 << std::min(known.tries - 1, 10)));
  };
  milliseconds pause = scan;
  known.pending = false;
  known.rests = answer.result == WorkResult::kRests;
  if (answer.result == WorkResult::kLater) {
    known.pending = true;
    pause = std::max(milliseconds(100), milliseconds((answer.notBefore - std::time(nullptr)) * 1000));
  } else if (answer.result == WorkResult::kForeign) {
    known.pending = true;
    pause = std::max(milliseconds(50), parts_.leases.Lease() / 4);
  } else if (answer.result == WorkResult::kFailed) {
    known.pending = known.tries < parts_.settings.attempts;
    pause = std::min(scan, std::max(milliseconds(100), InMilliseconds(parts_.settings.firstPause)));
  } else if (answer.result == WorkResult::kLeft) {
    // Its exchange may be about to be continued: the directory gets its name before the record its phase.
    pause = growing(milliseconds(500));
  }
  known.due = std::chrono::steady_clock::now() + pause;
}

void Queue::SayOnce(Known& known, const std::string& directory, const std::string& step,
                    const std::string& text) {
  if (known.said == text) return;
  known.said = text;
  parts_.log.Write({directory, step, text, StepKind::kProblem});
}

void Queue::Scan() {
  std::string problems;
  for (const std::string& problem : databases_.Open())
    problems += (problems.empty() ? "" : "; ") + problem;
  const std::vector<std::string> paths = ExchangePaths(parts_.settings, parts_.files, databases_);
  const std::lock_guard guard(mutex_);
  if (!problems.empty()) clean_ = false;
  if (!problems.empty() && problem_ != problems)
    parts_.log.Write({{}, "database", problems, StepKind::kProblem});
  problem_ = problems;
  std::set<std::string> there;
  for (const std::string& path : paths) {
    watch_.Add(parts_.files.NativePath(path));
    for (const ExchangeDirectory& directory : Listed(path)) {
      if (directory.place == Place::kSent) continue;
      there.insert(directory.Path());
      Known& known = known_[directory.Path()];
      if (known.working || std::chrono::steady_clock::now() < known.due) continue;
      known.working = true;
      waiting_.push_back(directory);
    }
  }
  std::erase_if(known_,
                [&](const auto& entry) { return !entry.second.working && !there.contains(entry.first); });
  wake_.notify_all();
}

std::vector<ExchangeDirectory> Queue::Listed(const std::string& path) {
  std::string& said = unreadable_[path];
  try {
    auto directories = ListExchanges(parts_.files, path);
    said.clear();
    return directories;
  } catch (const std::exception& error) {
    clean_ = false;
    if (said != error.what()) parts_.log.Write({{}, "scan", error.what(), StepKind::kProblem});
    said = error.what();
    return {};
  }
}

std::chrono::milliseconds Queue::UntilDue() {
  const std::lock_guard guard(mutex_);
  milliseconds least(-1);
  for (const auto& [path, known] : known_) {
    if (!known.working && !known.pending) continue;
    const auto rest = known.working
                          ? InMilliseconds(parts_.settings.scanInterval)
                          : std::chrono::ceil<milliseconds>(known.due - std::chrono::steady_clock::now());
    least = least.count() < 0 ? std::max(rest, milliseconds(0))
                              : std::min(least, std::max(rest, milliseconds(0)));
  }
  return least;
}

// Something changed below an exchange path: what waits for others is looked at again.
void Queue::HurryUp() {
  const std::lock_guard guard(mutex_);
  for (auto& [path, known] : known_) {
    if (!known.pending && !known.rests) known.due = {};
  }
}

bool Queue::WorkOff() {
  for (;;) {
    Scan();
    const milliseconds pause = UntilDue();
    if (pause.count() < 0) break;
    if (watch_.Wait(pause) == Watch::Event::kEnd) return false;
  }
  const std::lock_guard guard(mutex_);
  return clean_;
}

void Queue::Serve() {
  if (!parts_.settings.odetteAcknowledgements.empty())
    watch_.Add(parts_.files.NativePath(parts_.settings.odetteAcknowledgements));
  for (;;) {
    Scan();
    milliseconds pause = InMilliseconds(parts_.settings.scanInterval);
    {
      const std::lock_guard guard(mutex_);
      for (const auto& [path, known] : known_) {
        if (!known.working)
          pause =
              std::min(pause, std::chrono::ceil<milliseconds>(known.due - std::chrono::steady_clock::now()));
      }
    }
    const Watch::Event event = watch_.Wait(std::max(pause, milliseconds(0)));
    if (event == Watch::Event::kEnd) return;
    if (event == Watch::Event::kChange) HurryUp();
  }
}

}  // namespace tessel::sender
