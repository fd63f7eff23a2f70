#include "platform/posix/posix_services.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>

#include "platform/posix/posix_error.h"

namespace tessel::posix {
namespace {

constexpr int kFirstOtherDescriptor = 3;

// What the new process is to look like. One object a start.
class SpawnSettings {
 public:
  SpawnSettings() {
    ::posix_spawn_file_actions_init(&files_);
    ::posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_addopen(&files_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&files_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addclosefrom_np(&files_, kFirstOtherDescriptor);
    sigset_t none;
    sigset_t all;
    ::sigemptyset(&none);
    ::sigfillset(&all);
    ::posix_spawnattr_init(&attributes_);
    ::posix_spawnattr_setsigmask(&attributes_, &none);
    ::posix_spawnattr_setsigdefault(&attributes_, &all);
    ::posix_spawnattr_setflags(&attributes_,
                               POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ~SpawnSettings() {
    ::posix_spawn_file_actions_destroy(&files_);
    ::posix_spawnattr_destroy(&attributes_);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;

  // Process id, or 0 when the program could not be run.
  [[nodiscard]] pid_t Spawn(const char* program, char* const* arguments) const {
    pid_t process = 0;
    return ::posix_spawnp(&process, program, &files_, &attributes_, arguments, environ) == 0 ? process : 0;
  }

 private:
  posix_spawn_file_actions_t files_{};
  posix_spawnattr_t attributes_{};
};

// Starts the program from a process in between that ends at once: the new process then belongs to the system,
// which collects it when it ends.
pid_t SpawnDetached(const char* program, char* const* arguments) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return 0;
  const FileDescriptor reading(ends[0]);
  FileDescriptor writing(ends[1]);
  const SpawnSettings settings;

  const pid_t between = ::fork();
  if (between < 0) return 0;
  if (between == 0) {
    const pid_t started = settings.Spawn(program, arguments);
    const bool told = ::write(ends[1], &started, sizeof started) == sizeof started;
    ::_exit(told ? 0 : 1);
  }
  (void)writing.Close();
  pid_t started = 0;
  ssize_t count = 0;
  do {
    count = ::read(reading.Get(), &started, sizeof started);
  } while (count < 0 && errno == EINTR);
  while (::waitpid(between, nullptr, 0) < 0 && errno == EINTR) {
  }
  return count == sizeof started ? started : 0;
}

}  // namespace

LocalTime SystemClock::Now() const {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

void RealPauser::Sleep(std::chrono::milliseconds time) {
  constexpr long kMillisecond = 1'000'000;
  if (time.count() <= 0) return;
  timespec rest{static_cast<std::time_t>(time.count() / 1000),
                static_cast<long>(time.count() % 1000) * kMillisecond};
  while (::nanosleep(&rest, &rest) != 0 && errno == EINTR) {
  }
}

std::int32_t PosixProcessLauncher::Start(const std::string& program,
                                         const std::vector<std::string>& arguments) {
  const auto hasNul = [](const std::string& text) { return text.find('\0') != std::string::npos; };
  std::string native = hasNul(program) ? std::string() : paths_.Native(program);
  if (native.empty()) return 0;
  std::vector<std::string> texts{native};
  texts.insert(texts.end(), arguments.begin(), arguments.end());
  std::vector<char*> vector;
  for (std::string& text : texts) {
    if (hasNul(text)) return 0;
    vector.push_back(text.data());
  }
  vector.push_back(nullptr);
  return SpawnDetached(native.c_str(), vector.data());
}

}  // namespace tessel::posix
