#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

#include "platform/posix/posix_error.h"
#include "sender/system.h"

namespace tessel::sender {
namespace {

using posix::FileDescriptor;

class PosixWatch final : public Watch {
 public:
  PosixWatch()
      : changes_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)),
        wakes_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    sigset_t ending;
    ::sigemptyset(&ending);
    ::sigaddset(&ending, SIGTERM);
    ::sigaddset(&ending, SIGINT);
    ::sigaddset(&ending, SIGHUP);
    ::pthread_sigmask(SIG_BLOCK, &ending, nullptr);
    ends_ = FileDescriptor(::signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK));
    if (!wakes_.IsOpen() || !ends_.IsOpen()) posix::ThrowErrno(errno, "wait for", "signals");
  }

  void Add(const std::string& folder) override {
    static_cast<void>(
        ::inotify_add_watch(changes_.Get(), folder.c_str(), IN_MOVED_TO | IN_CREATE | IN_ONLYDIR));
  }

  [[nodiscard]] bool SeesChanges() const override { return changes_.IsOpen(); }

  [[nodiscard]] Event Wait(std::chrono::milliseconds time) override {
    pollfd waits[] = {{ends_.Get(), POLLIN, 0}, {changes_.Get(), POLLIN, 0}, {wakes_.Get(), POLLIN, 0}};
    const int ready = ::poll(waits, 3, static_cast<int>(std::clamp<long long>(time.count(), 0, 86'400'000)));
    if (ready <= 0) return Event::kTimeOut;
    if (waits[0].revents != 0) return Event::kEnd;
    char events[16 * 1024];
    for (const FileDescriptor* file : {&changes_, &wakes_}) {
      while (::read(file->Get(), events, sizeof events) > 0) {
      }
    }
    return waits[1].revents != 0 ? Event::kChange : Event::kWoken;
  }
  void Wake() override {
    const std::uint64_t one = 1;
    static_cast<void>(::write(wakes_.Get(), &one, sizeof one) == sizeof one);
  }

 private:
  FileDescriptor changes_;
  FileDescriptor wakes_;
  FileDescriptor ends_;
};

}  // namespace

std::unique_ptr<Watch> NewWatch() {
  return std::make_unique<PosixWatch>();
}

}  // namespace tessel::sender
