#include "platform/posix/staged_file.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/rename.h"

namespace tessel::posix {
namespace {

// What a kernel or file system without unnamed files says.
bool KnowsNoUnnamedFiles(int error) {
  return error == EOPNOTSUPP || error == EISDIR || error == EINVAL || error == ENOSYS;
}

// The folders that a name leads through, with the separator at the end.
std::string FoldersOf(const std::string& name) {
  return name.substr(0, name.rfind('/') + 1);
}

}  // namespace

StagedFile::StagedFile(int folder, std::string name, std::string path, mode_t mode, Staging staging)
    : folder_(folder), name_(std::move(name)), path_(std::move(path)) {
  if (name_.empty() || name_.back() == '/') ThrowErrno(EISDIR, "write", path_);
  Create(mode, staging);
}

StagedFile::~StagedFile() {
  if (!committed_ && !standsAt_.empty()) ::unlinkat(folder_, standsAt_.c_str(), 0);
}

void StagedFile::Create(mode_t mode, Staging staging) {
  if (staging == Staging::kInPlace && CreateAt(name_, mode)) return;
  if (staging == Staging::kAside && CreateUnnamed(mode)) return;
  // Only a killed process of the same id leaves a name behind.
  for (int number = 0; !CreateAt(TemporaryName(number), mode);)
    ++number;
}

// False when the name is taken.
bool StagedFile::CreateAt(const std::string& name, mode_t mode) {
  constexpr int kCreate = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
  file_ = FileDescriptor(Retried([&] { return ::openat(folder_, name.c_str(), kCreate, mode); }));
  if (!file_.IsOpen() && errno != EEXIST) ThrowErrno(errno, "create", path_, true);
  if (file_.IsOpen()) standsAt_ = name;
  return file_.IsOpen();
}

// False when the file system does not know such files.
bool StagedFile::CreateUnnamed(mode_t mode) {
  const std::string folders = FoldersOf(name_);
  const char* place = folders.empty() ? "." : folders.c_str();
  file_ = FileDescriptor(
      Retried([&] { return ::openat(folder_, place, O_TMPFILE | O_WRONLY | O_CLOEXEC, mode); }));
  if (!file_.IsOpen() && !KnowsNoUnnamedFiles(errno)) ThrowErrno(errno, "create", path_, true);
  return file_.IsOpen();
}

std::string StagedFile::TemporaryName(int number) const {
  return FoldersOf(name_) + ".tessel-" + std::to_string(::getpid()) + "-" + std::to_string(number) + ".tmp";
}

void StagedFile::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = Retried([&] { return ::write(file_.Get(), bytes.data(), bytes.size()); });
    if (written < 0) ThrowErrno(errno, "write", path_);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

void StagedFile::Flush() {
  if (Retried([this] { return ::fsync(file_.Get()); }) != 0 && errno != EINVAL) {
    ThrowErrno(errno, "write", path_);
  }
}

void StagedFile::Commit(bool replace) {
  if (standsAt_.empty()) NameUnnamed(replace);
  if (const int error = file_.Close(); error != 0) ThrowErrno(error, "write", path_);
  if (standsAt_ != name_) {
    const int result =
        replace ? Retried([this] { return ::renameat(folder_, standsAt_.c_str(), folder_, name_.c_str()); })
                : RenameWithoutReplacing(folder_, standsAt_.c_str(), folder_, name_.c_str());
    if (result != 0) ThrowErrno(errno, "create", path_);
  }
  committed_ = true;
}

int StagedFile::LinkAt(const std::string& name) const {
  const std::string self = "/proc/self/fd/" + std::to_string(file_.Get());
  const int result =
      Retried([&] { return ::linkat(AT_FDCWD, self.c_str(), folder_, name.c_str(), AT_SYMLINK_FOLLOW); });
  if (result == 0 || errno != ENOENT) return result;
  // Without a process file system, newer kernels and privileged users can do it like this.
  return Retried([&] { return ::linkat(file_.Get(), "", folder_, name.c_str(), AT_EMPTY_PATH); });
}

// Gives the file its final name, or a temporary one when the final one is taken and to be replaced.
void StagedFile::NameUnnamed(bool replace) {
  std::string name = name_;
  int number = 0;
  while (LinkAt(name) != 0) {
    if (errno != EEXIST || !replace) ThrowErrno(errno, "create", path_);
    name = TemporaryName(number++);
  }
  standsAt_ = std::move(name);
}

}  // namespace tessel::posix
