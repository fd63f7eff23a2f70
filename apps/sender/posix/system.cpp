#include "sender/system.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "host/error.h"
#include "platform/posix/posix_error.h"

namespace tessel::sender {

using posix::FileDescriptor;

void SyncFile(const std::string& path) {
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.IsOpen() || ::fsync(file.Get()) != 0) posix::ThrowErrno(errno, "bring to the disk", path);
}

std::string MachineName() {
  char name[256] = "";
  static_cast<void>(::gethostname(name, sizeof name - 1));
  std::string number;
  std::ifstream("/etc/machine-id") >> number;
  return std::string(name) + "/" + number.substr(0, 12);
}

int ProcessNumber() {
  return ::getpid();
}

std::string WhyNotPrivate(const std::string& path) {
  struct stat facts {};
  if (::lstat(path.c_str(), &facts) != 0) return std::strerror(errno);
  if (!S_ISREG(facts.st_mode)) return "it is no regular file";
  if (facts.st_uid != ::geteuid()) return "it belongs to another account";
  if ((facts.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
    return "others than its owner may use it; make its mode 600";
  }
  return {};
}

long long RegularFileSize(const std::string& path) {
  struct stat facts {};
  return ::lstat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) ? facts.st_size : -1;
}

std::vector<Entry> EntriesOf(const std::string& folder) {
  std::vector<Entry> entries;
  try {
    for (const auto& found : std::filesystem::directory_iterator(folder)) {
      const std::filesystem::file_status facts = found.symlink_status();
      const EntryKind kind = std::filesystem::is_directory(facts)      ? EntryKind::kFolder
                             : std::filesystem::is_regular_file(facts) ? EntryKind::kFile
                                                                       : EntryKind::kOther;
      entries.push_back({found.path().filename().string(), kind});
    }
  } catch (const std::filesystem::filesystem_error& error) {
    throw RuntimeError(error_number::kPathFileAccess,
                       "Cannot list the folder " + folder + ": " + error.code().message());
  }
  std::sort(entries.begin(), entries.end(),
            [](const Entry& left, const Entry& right) { return left.name < right.name; });
  return entries;
}

bool IsRealFolder(const std::string& path) {
  struct stat facts {};
  return ::lstat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

std::string WhyNotWritable(const std::string& folder) {
  const bool may = ::faccessat(AT_FDCWD, folder.c_str(), R_OK | W_OK | X_OK, AT_EACCESS) == 0;
  return may ? std::string() : std::strerror(errno);
}

bool IsProgram(const std::string& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

}  // namespace tessel::sender
