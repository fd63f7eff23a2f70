#include "platform/posix/file_copy.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>

#include "host/error.h"
#include "platform/posix/folder_reader.h"
#include "platform/posix/posix_error.h"
#include "platform/posix/staged_file.h"

namespace tessel::posix {
namespace {

constexpr mode_t kPermissions = 0777;
constexpr mode_t kOwnerAll = 0700;
constexpr std::uint64_t kLargestBuffer = 128 * 1024;
// A large file is copied in pieces so small that a disk which suddenly grows slow does not hold one up long.
constexpr std::uint64_t kPiece = 4 << 20;

void CopyLink(int from, const std::string& name, int to, const std::string& targetPath) {
  std::array<char, PATH_MAX + 1> target{};
  const ssize_t length =
      Retried([&] { return ::readlinkat(from, name.c_str(), target.data(), target.size() - 1); });
  if (length < 0) ThrowErrno(errno, "read link", targetPath);
  const auto link = [&] { return Retried([&] { return ::symlinkat(target.data(), to, name.c_str()); }); };
  if (link() == 0) return;
  const bool replaced = errno == EEXIST && ::unlinkat(to, name.c_str(), 0) == 0 && link() == 0;
  if (!replaced) ThrowErrno(errno, "create link", targetPath);
}

// The folder of a name, made when missing, with at least the owner's rights so that it can be filled.
FileDescriptor MakeTargetFolder(int from, int to, const std::string& name, const std::string& targetPath) {
  struct stat status {};
  if (Retried([&] { return ::fstat(from, &status); }) != 0) ThrowErrno(errno, "copy folder", targetPath);
  const mode_t mode = (status.st_mode & kPermissions) | kOwnerAll;
  if (Retried([&] { return ::mkdirat(to, name.c_str(), mode); }) != 0 && errno != EEXIST) {
    ThrowErrno(errno, "create folder", targetPath, true);
  }
  return OpenFolder(to, name.c_str(), targetPath);
}

[[noreturn]] void ThrowChanged(const std::string& path) {
  throw RuntimeError(error_number::kPathFileAccess,
                     "Cannot copy \"" + path + "\": it changed while it was copied");
}

// Whoever writes into a file while it is copied makes the copy a mixture of two versions.
void CheckUnchanged(int file, const struct stat& before, const std::string& path) {
  struct stat after {};
  if (Retried([&] { return ::fstat(file, &after); }) != 0) ThrowErrno(errno, "copy", path);
  const bool same = after.st_size == before.st_size && after.st_mtim.tv_sec == before.st_mtim.tv_sec &&
                    after.st_mtim.tv_nsec == before.st_mtim.tv_nsec;
  if (!same) ThrowChanged(path);
}

}  // namespace

bool FileCopier::CopyFile(int fromFolder, const std::string& fromName, const std::string& path, int toFolder,
                          const std::string& toName, const std::string& targetPath, bool replace,
                          Staging staging) {
  // Without waiting, so that a pipe in place of a file cannot hold the program up.
  constexpr int kOpen = O_RDONLY | O_CLOEXEC | O_NONBLOCK;
  const FileDescriptor source(Retried([&] { return ::openat(fromFolder, fromName.c_str(), kOpen); }));
  if (!source.IsOpen()) ThrowFileErrno(errno, "copy", path, fromFolder, fromName);
  struct stat status {};
  if (Retried([&] { return ::fstat(source.Get(), &status); }) != 0) ThrowErrno(errno, "copy", path);
  if (!S_ISREG(status.st_mode)) ThrowErrno(S_ISDIR(status.st_mode) ? EISDIR : EINVAL, "copy", path);

  StagedFile target(toFolder, toName, targetPath, status.st_mode & kPermissions, staging);
  Job job{source.Get(), target.Get(), static_cast<std::uint64_t>(status.st_size), path, targetPath};
  if (!CopyContent(job)) return false;
  CheckUnchanged(source.Get(), status, path);
  const timespec times[2] = {{0, UTIME_OMIT}, status.st_mtim};
  if (Retried([&] { return ::futimens(target.Get(), times); }) != 0) ThrowErrno(errno, "write", targetPath);
  target.Commit(replace);
  return true;
}

bool FileCopier::CopyContent(Job& job) {
  if (job.size == 0) return !progress_ || progress_(0, 0);
  if (canReflink_ && job.size > kLargestBuffer) {
    if (Retried([&job] { return ::ioctl(job.to, FICLONE, job.from); }) == 0) {
      return !progress_ || progress_(job.size, job.size);
    }
    canReflink_ = false;
  }
  return CopyPieces(job);
}

bool FileCopier::CopyPieces(Job& job) {
  while (job.done < job.size) {
    const std::uint64_t rest = std::min(kPiece, job.size - job.done);
    std::uint64_t copied = job.size > kLargestBuffer ? CopyInKernel(job, rest) : 0;
    if (copied == 0) copied = CopyThroughBuffer(job, rest);
    if (copied == 0) ThrowChanged(job.path);
    job.done += copied;
    if (progress_ && !progress_(job.done, job.size)) return false;
  }
  return true;
}

// Bytes copied; 0 when the kernel cannot do it, or at the end of the file.
std::uint64_t FileCopier::CopyInKernel(Job& job, std::uint64_t size) {
  if (!canCopyInKernel_) return 0;
  const ssize_t copied =
      Retried([&] { return ::copy_file_range(job.from, nullptr, job.to, nullptr, size, 0); });
  if (copied >= 0) return static_cast<std::uint64_t>(copied);
  if (errno == ENOSPC || errno == EDQUOT || errno == EIO) ThrowErrno(errno, "write", job.targetPath);
  canCopyInKernel_ = false;
  return 0;
}

// Bytes copied, at most a buffer full; 0 at the end of the file.
std::uint64_t FileCopier::CopyThroughBuffer(Job& job, std::uint64_t size) {
  const auto wanted = static_cast<std::size_t>(std::min(size, kLargestBuffer));
  if (wanted > bufferSize_) {
    buffer_ = std::make_unique_for_overwrite<char[]>(wanted);
    bufferSize_ = wanted;
  }
  const ssize_t count = Retried([&] { return ::read(job.from, buffer_.get(), wanted); });
  if (count < 0) ThrowErrno(errno, "read", job.path);
  for (ssize_t done = 0; done < count;) {
    const ssize_t written = Retried(
        [&] { return ::write(job.to, buffer_.get() + done, static_cast<std::size_t>(count - done)); });
    if (written < 0) ThrowErrno(errno, "write", job.targetPath);
    done += written;
  }
  return static_cast<std::uint64_t>(count);
}

void FileCopier::CopyTree(int from, const std::string& path, int to, const std::string& targetPath) {
  for (const FolderEntry& entry : ReadFolder(from, path)) {
    const std::string entryPath = path + "/" + entry.name;
    const std::string entryTarget = targetPath + "/" + entry.name;
    switch (entry.kind) {
      case EntryKind::kFile:
        (void)CopyFile(from, entry.name, entryPath, to, entry.name, entryTarget, true, Staging::kInPlace);
        break;
      case EntryKind::kFolder: {
        const FileDescriptor source = OpenFolder(from, entry.name.c_str(), entryPath);
        const FileDescriptor target = MakeTargetFolder(source.Get(), to, entry.name, entryTarget);
        CopyTree(source.Get(), entryPath, target.Get(), entryTarget);
        break;
      }
      case EntryKind::kLink:
        CopyLink(from, entry.name, to, entryTarget);
        break;
      case EntryKind::kOther:
        ThrowErrno(EINVAL, "copy", entryPath);
    }
  }
}

}  // namespace tessel::posix
