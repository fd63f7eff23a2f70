#include "platform/posix/posix_platform.h"

#include <fcntl.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "host/error.h"
#include "platform/no_pauser.h"
#include "platform/posix/iconv_encodings.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/posix_services.h"
#include "platform/posix/posix_system_information.h"
#include "platform/profile_strings_file.h"

namespace tessel {
namespace {

// The value of an environment variable; empty when it is not set.
std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : value;
}

std::string HomeDataFolder() {
  const std::string folder = Variable("XDG_DATA_HOME");
  return folder.starts_with('/') ? folder : Variable("HOME") + "/.local/share";
}

std::vector<std::string> DataFolders() {
  std::vector<std::string> folders{HomeDataFolder()};
  std::string others = Variable("XDG_DATA_DIRS");
  if (others.empty()) others = "/usr/local/share:/usr/share";
  for (std::size_t start = 0; start <= others.size();) {
    const auto end = std::min(others.find(':', start), others.size());
    if (end > start) folders.push_back(others.substr(start, end - start));
    start = end + 1;
  }
  return folders;
}

// The locale of messages, by the order of precedence of the system.
std::string MessageLocale() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    if (std::string locale = Variable(name); !locale.empty()) return locale;
  }
  return {};
}

}  // namespace

std::string DefaultDrivesDirectory() {
  const std::string drives = Variable("TESSEL_DRIVES");
  if (drives.empty()) return HomeDataFolder() + "/tessel/drives";
  return std::filesystem::absolute(drives).lexically_normal().string();
}

std::vector<std::string> ProgramArguments(int count, char** arguments) {
  return {arguments + 1, arguments + count};
}

bool StandardErrorIsTerminal() {
  return isatty(STDERR_FILENO) != 0;
}

// What stands in for a closed stream is opened the wrong way round, so that using it stays an error.
void KeepStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(stream, F_GETFD) != -1) continue;
    (void)!::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
  ::signal(SIGPIPE, SIG_IGN);
}

void LetSignalsEndWaits() {
  for (const int signal : {SIGINT, SIGTERM}) {
    struct sigaction action {};
    ::sigaction(signal, nullptr, &action);
    action.sa_flags &= ~SA_RESTART;
    ::sigaction(signal, &action, nullptr);
  }
}

std::optional<std::string> AskUnseen(const std::string& question) {
  termios seen{};
  if (::isatty(STDERR_FILENO) == 0 || ::tcgetattr(STDIN_FILENO, &seen) != 0) return std::nullopt;
  termios unseen = seen;
  unseen.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  std::cerr << question << std::flush;
  ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &unseen);
  std::string typed;
  const bool answered = static_cast<bool>(std::getline(std::cin, typed));
  ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &seen);
  std::cerr << "\n";
  return answered ? std::optional(typed) : std::nullopt;
}

ProgramLocation RunningProgram() {
  std::error_code error;
  const std::filesystem::path file = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) {
    throw RuntimeError(error_number::kPathNotFound, "Cannot find the program's own file: " + error.message());
  }
  return {file.parent_path().string(), file.stem().string()};
}

struct PosixPlatform::Parts {
  explicit Parts(const PosixPlatformOptions& options)
      : drives(options.drivesDirectory ? *options.drivesDirectory : DefaultDrivesDirectory()),
        files(drives),
        pauser(options.pauses ? std::unique_ptr<Pauser>(std::make_unique<posix::RealPauser>())
                              : std::make_unique<NoPauser>()),
        processes(posix::NativePaths(drives)),
        ansi(encodings.Open(options.ansiCodePage)),
        profiles(files, *ansi),
        system(MessageLocale(), DataFolders()),
        services{files,
                 encodings,
                 clock,
                 *pauser,
                 processes,
                 profiles,
                 system,
                 options.program ? *options.program : RunningProgram(),
                 options.ansiCodePage} {}

  std::string drives;
  posix::PosixFileSystem files;
  posix::IconvEncodings encodings;
  posix::SystemClock clock;
  std::unique_ptr<Pauser> pauser;
  posix::PosixProcessLauncher processes;
  std::shared_ptr<const TextEncoding> ansi;
  ProfileStringsFile profiles;
  posix::PosixSystemInformation system;
  Platform services;
};

PosixPlatform::PosixPlatform(const PosixPlatformOptions& options)
    : parts_(std::make_unique<Parts>(options)) {}
PosixPlatform::~PosixPlatform() = default;

Platform& PosixPlatform::Services() {
  return parts_->services;
}

}  // namespace tessel
