#include "sender/directory_lock.h"

#include <algorithm>
#include <condition_variable>
#include <map>
#include <thread>

#include "host/object_key.h"
#include "platform/paths.h"
#include "sender/system.h"

namespace tessel::sender {
namespace {

constexpr const char* kYields = " yields";

std::string OwnName() {
  return MachineName() + " process " + std::to_string(ProcessNumber());
}

// The last sign of another machine's process that did not yield; empty without one.
std::string ForeignSign(const std::string& text) {
  std::map<std::string, std::string> last;  // by machine and process
  for (const std::string& line : SplitText(text, "\n")) {
    if (line.empty() || line.starts_with(MachineName() + " ")) continue;
    const bool yields = line.ends_with(kYields);
    last[line.substr(0, std::min(line.rfind(yields ? kYields : " sign "), line.size()))] =
        yields ? std::string() : line;
  }
  std::string sign;
  for (const auto& [process, line] : last) {
    if (!line.empty()) sign += line + "\n";
  }
  return sign;
}

// Gives a sign of life three times a lease until it ends; then the lock file goes.
class HeldLock final : public DirectoryLock {
 public:
  HeldLock(std::unique_ptr<HeldFile> file, std::chrono::milliseconds lease)
      : file_(std::move(file)), pause_(lease / 3) {
    before_ = file_->Read();
    Beat();
  }
  // Whether our first sign came before any other one since. On a full disk, which takes no sign, the system's
  // lock decides.
  bool Settle() {
    const std::string since = Since();
    if (since.empty() || since.starts_with(OwnName() + " ")) {
      thread_ = std::thread([this] { Run(); });
      return true;
    }
    yielded_ = true;
    try {
      file_->Append(OwnName() + kYields + "\n");
    } catch (const std::exception&) {
      // Our sign ages instead.
    }
    return false;
  }
  bool IsStillOurs() override {
    const std::lock_guard guard(mutex_);
    try {
      return ForeignSign(Since()).empty();
    } catch (const std::exception&) {
      return false;
    }
  }
  ~HeldLock() override {
    if (yielded_ || !thread_.joinable()) return;
    {
      const std::lock_guard guard(mutex_);
      ending_ = true;
    }
    wake_.notify_all();
    thread_.join();
    try {
      file_->Delete();
    } catch (const std::exception&) {
      // It stays, free, and says that this machine had it: the next one to come takes it.
    }
  }

 private:
  [[nodiscard]] std::string Since() const {
    const std::string all = file_->Read();
    return all.substr(std::min(before_.size(), all.size()));
  }
  void Beat() {
    try {
      file_->Append(OwnName() + " sign " + std::to_string(++beats_) + "\n");
    } catch (const std::exception&) {
      // A full disk takes no sign; the system's own lock still holds.
    }
  }
  void Run() {
    std::unique_lock guard(mutex_);
    while (!wake_.wait_for(guard, pause_, [this] { return ending_; }))
      Beat();
  }

  std::unique_ptr<HeldFile> file_;
  std::chrono::milliseconds pause_;
  std::string before_;  // what the file held when we came
  bool yielded_ = false;
  long beats_ = 0;
  std::mutex mutex_;
  std::condition_variable wake_;
  bool ending_ = false;
  std::thread thread_;
};

}  // namespace

bool LeaseBook::HasRunOut(const std::string& path, const std::string& content) {
  const std::lock_guard guard(mutex_);
  const auto now = std::chrono::steady_clock::now();
  const auto [seen, isNew] = seen_.try_emplace(path, Seen{content, now});
  if (!isNew && seen->second.content != content) seen->second = {content, now};
  if (now - seen->second.since < lease_) return false;
  seen_.erase(seen);
  return true;
}

std::string LockFolder(const std::string& exchangePath) {
  return paths::Join(exchangePath, ".KestrixServMon");
}

std::unique_ptr<DirectoryLock> DirectoryLock::Take(FileSystem& files, const std::string& exchangePath,
                                                   const std::string& name, LeaseBook& leases,
                                                   LockAnswer& answer) {
  const std::string folder = LockFolder(exchangePath);
  files.CreateFolders(folder);
  const std::string path = paths::Join(folder, name + ".lock");
  answer = LockAnswer::kBusy;
  std::unique_ptr<HeldFile> file = files.Hold(path, true);
  if (!file) return nullptr;
  // A dead worker of this machine leaves its signs behind, and its lock was freed by the system.
  const std::string sign = ForeignSign(file->Read());
  answer = LockAnswer::kForeign;
  if (!sign.empty() && !leases.HasRunOut(path, sign)) return nullptr;
  auto lock = std::make_unique<HeldLock>(std::move(file), leases.Lease());
  if (!lock->Settle()) return nullptr;
  answer = LockAnswer::kTaken;
  return lock;
}

}  // namespace tessel::sender
