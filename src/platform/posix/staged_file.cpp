#include "platform/posix/staged_file.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tessel::posix {
namespace {

// For file systems that cannot rename without replacing.
int RenameChecked(int folder, const char* from, const char* to) {
  struct stat existing {};
  if (::fstatat(folder, to, &existing, AT_SYMLINK_NOFOLLOW) == 0) {
    errno = EEXIST;
    return -1;
  }
  return ::renameat(folder, from, folder, to);
}

int RenameWithoutReplacing(int folder, const char* from, const char* to) {
  const int result = ::renameat2(folder, from, folder, to, RENAME_NOREPLACE);
  if (result != 0 && (errno == EINVAL || errno == ENOSYS)) return RenameChecked(folder, from, to);
  return result;
}

}  // namespace

StagedFile::StagedFile(int folder, std::string name, std::string path, mode_t mode, Staging staging)
    : folder_(folder), name_(std::move(name)), path_(std::move(path)) {
  constexpr int kCreate = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
  if (staging == Staging::kInPlace) {
    temporaryName_ = name_;
    file_ = FileDescriptor(::openat(folder_, name_.c_str(), kCreate, mode));
    if (!file_.IsOpen() && errno != EEXIST) ThrowErrno(errno, "create", path_);
  }
  // Only a crashed process of the same id leaves a name behind.
  for (int attempt = 0; !file_.IsOpen(); ++attempt) {
    temporaryName_ = ".tessel-" + std::to_string(::getpid()) + "-" + std::to_string(attempt) + ".tmp";
    file_ = FileDescriptor(::openat(folder_, temporaryName_.c_str(), kCreate, mode));
    if (!file_.IsOpen() && errno != EEXIST) ThrowErrno(errno, "create", path_);
  }
}

StagedFile::~StagedFile() {
  if (!committed_) ::unlinkat(folder_, temporaryName_.c_str(), 0);
}

void StagedFile::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file_.Get(), bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      ThrowErrno(errno, "write", path_);
    }
  }
}

void StagedFile::Flush() {
  if (::fsync(file_.Get()) != 0 && errno != EINVAL) ThrowErrno(errno, "write", path_);
}

void StagedFile::Commit(bool replace) {
  if (const int error = file_.Close(); error != 0) ThrowErrno(error, "write", path_);
  if (temporaryName_ == name_) {
    committed_ = true;
    return;
  }
  const int result = replace ? ::renameat(folder_, temporaryName_.c_str(), folder_, name_.c_str())
                             : RenameWithoutReplacing(folder_, temporaryName_.c_str(), name_.c_str());
  if (result != 0) ThrowErrno(errno, "create", path_);
  committed_ = true;
}

}  // namespace tessel::posix
