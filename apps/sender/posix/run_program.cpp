#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>

#include "platform/posix/posix_error.h"
#include "sender/system.h"

namespace tessel::sender {
namespace {

using posix::FileDescriptor;
using Clock = std::chrono::steady_clock;

constexpr int kFirstOtherDescriptor = 3;

// The program's input is empty, its output a pipe, and it leads a process group of its own.
class Spawned {
 public:
  Spawned(const std::string& program, const std::vector<std::string>& arguments, const std::string& folder) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
      error_ = errno;
      return;
    }
    output_ = FileDescriptor(ends[0]);
    const FileDescriptor writing(ends[1]);
    posix_spawn_file_actions_t files{};
    posix_spawnattr_t attributes{};
    Prepare(files, attributes, writing.Get(), folder);
    std::vector<std::string> texts{program};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> vector;
    for (std::string& text : texts)
      vector.push_back(text.data());
    vector.push_back(nullptr);
    error_ = ::posix_spawn(&process_, program.c_str(), &files, &attributes, vector.data(), environ);
    ::posix_spawn_file_actions_destroy(&files);
    ::posix_spawnattr_destroy(&attributes);
  }

  [[nodiscard]] int Error() const { return error_; }
  [[nodiscard]] int Output() const { return output_.Get(); }
  void Kill() const { ::kill(-process_, SIGKILL); }
  // True, and the status, when the program has ended by then.
  [[nodiscard]] bool Collect(Clock::time_point end, int& status) const {
    constexpr timespec kPause{0, 10'000'000};
    for (;;) {
      const pid_t ended = ::waitpid(process_, &status, WNOHANG);
      if (ended == process_) return true;
      if (Clock::now() >= end) return false;
      ::nanosleep(&kPause, nullptr);
    }
  }

 private:
  static void Prepare(posix_spawn_file_actions_t& files, posix_spawnattr_t& attributes, int output,
                      const std::string& folder) {
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&files, output, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&files, output, STDERR_FILENO);
    ::posix_spawn_file_actions_addclosefrom_np(&files, kFirstOtherDescriptor);
    ::posix_spawn_file_actions_addchdir_np(&files, folder.c_str());
    sigset_t none;
    sigset_t all;
    ::sigemptyset(&none);
    ::sigfillset(&all);
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setsigdefault(&attributes, &all);
    ::posix_spawnattr_setpgroup(&attributes, 0);
    ::posix_spawnattr_setflags(&attributes,
                               POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }

  pid_t process_ = 0;
  int error_ = 0;
  FileDescriptor output_;
};

// False when the time is over before the program closed its output.
bool ReadOutput(int fd, Clock::time_point end, std::size_t most, std::string& output) {
  char piece[4096];
  for (;;) {
    const auto rest = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    if (rest <= 0) return false;
    pollfd wait{fd, POLLIN, 0};
    const int ready = ::poll(&wait, 1, static_cast<int>(std::min<long long>(rest, 60'000)));
    if (ready == 0 || (ready < 0 && errno == EINTR)) continue;
    const ssize_t count = ::read(fd, piece, sizeof piece);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return true;
    output.append(piece, std::min(static_cast<std::size_t>(count), most - output.size()));
  }
}

}  // namespace

ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& folder, std::chrono::milliseconds limit, std::size_t mostOutput) {
  const Spawned process(program, arguments, folder);
  ProgramResult result;
  if (process.Error() != 0) {
    result.status = process.Error();
    return result;
  }
  const Clock::time_point end = Clock::now() + limit;
  int status = 0;
  const bool inTime =
      ReadOutput(process.Output(), end, mostOutput, result.output) && process.Collect(end, status);
  if (!inTime) {
    process.Kill();
    static_cast<void>(process.Collect(Clock::time_point::max(), status));
  }
  if (!inTime) {
    result.end = ProgramResult::End::kTimedOut;
  } else if (WIFEXITED(status)) {
    result.end = ProgramResult::End::kExited;
    result.status = WEXITSTATUS(status);
  } else {
    result.end = ProgramResult::End::kKilled;
    result.status = WTERMSIG(status);
  }
  return result;
}

}  // namespace tessel::sender
