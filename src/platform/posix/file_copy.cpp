#include "platform/posix/file_copy.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <string_view>

#include "host/error.h"
#include "platform/posix/folder_reader.h"
#include "platform/posix/posix_error.h"
#include "platform/posix/staged_file.h"

namespace tessel::posix {
namespace {

constexpr mode_t kPermissions = 0777;
constexpr mode_t kOwnerAll = 0700;
constexpr long long kLargestBuffer = 128 * 1024;

void CopyLink(int from, const std::string& name, int to, const std::string& targetPath) {
  std::array<char, PATH_MAX + 1> target{};
  const ssize_t length = ::readlinkat(from, name.c_str(), target.data(), target.size() - 1);
  if (length < 0) ThrowErrno(errno, "read link", targetPath);
  if (::symlinkat(target.data(), to, name.c_str()) == 0) return;
  const bool replaced = errno == EEXIST && ::unlinkat(to, name.c_str(), 0) == 0 &&
                        ::symlinkat(target.data(), to, name.c_str()) == 0;
  if (!replaced) ThrowErrno(errno, "create link", targetPath);
}

// The folder of a name, made when missing, with at least the owner's rights so that it can be filled.
FileDescriptor MakeTargetFolder(int from, int to, const std::string& name, const std::string& targetPath) {
  struct stat status {};
  const mode_t mode = ::fstat(from, &status) == 0 ? status.st_mode & kPermissions : kPermissions;
  if (::mkdirat(to, name.c_str(), mode | kOwnerAll) != 0 && errno != EEXIST) {
    ThrowErrno(errno, "create folder", targetPath, true);
  }
  return OpenFolder(to, name.c_str(), targetPath);
}

// Whoever writes into a file while it is copied makes the copy a mixture of two versions.
void CheckUnchanged(int file, const struct stat& before, const std::string& path) {
  struct stat after {};
  if (::fstat(file, &after) != 0) ThrowErrno(errno, "copy", path);
  if (after.st_size != before.st_size || after.st_mtim.tv_sec != before.st_mtim.tv_sec ||
      after.st_mtim.tv_nsec != before.st_mtim.tv_nsec) {
    throw RuntimeError(error_number::kPathFileAccess,
                       "Cannot copy \"" + path + "\": it changed while it was copied");
  }
}

}  // namespace

void FileCopier::CopyFile(int fromFolder, const char* fromName, const std::string& path, int toFolder,
                          const std::string& toName, const std::string& targetPath, bool replace,
                          Staging staging) {
  // Without waiting, so that a pipe in place of a file cannot hold the program up.
  const FileDescriptor source(::openat(fromFolder, fromName, O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!source.IsOpen()) ThrowErrno(errno, "open", path);
  struct stat status {};
  if (::fstat(source.Get(), &status) != 0) ThrowErrno(errno, "open", path);
  if (!S_ISREG(status.st_mode)) ThrowErrno(S_ISDIR(status.st_mode) ? EISDIR : EINVAL, "copy", path);

  StagedFile target(toFolder, toName, targetPath, status.st_mode & kPermissions, staging);
  CopyContent(source.Get(), target.Get(), status.st_size, targetPath);
  CheckUnchanged(source.Get(), status, path);
  const timespec times[2] = {{0, UTIME_OMIT}, status.st_mtim};
  if (::futimens(target.Get(), times) != 0) ThrowErrno(errno, "write", targetPath);
  target.Commit(replace);
}

void FileCopier::CopyContent(int from, int to, long long size, const std::string& targetPath) {
  if (size == 0) return;
  if (canReflink_) {
    if (::ioctl(to, FICLONE, from) == 0) return;
    canReflink_ = false;
  }
  if (canCopyInKernel_ && size > kLargestBuffer) {
    ssize_t copied = 0;
    do {
      copied = ::copy_file_range(from, nullptr, to, nullptr, static_cast<std::size_t>(size), 0);
    } while (copied > 0 || (copied < 0 && errno == EINTR));
    if (copied < 0) {
      if (errno == ENOSPC || errno == EDQUOT || errno == EIO) ThrowErrno(errno, "write", targetPath);
      canCopyInKernel_ = false;
    }
  }
  // What the kernel did not copy, from where it stopped.
  CopyThroughBuffer(from, to, static_cast<std::size_t>(std::min(size, kLargestBuffer)), targetPath);
}

void FileCopier::CopyThroughBuffer(int from, int to, std::size_t bufferSize, const std::string& targetPath) {
  if (bufferSize > bufferSize_) {
    buffer_ = std::make_unique_for_overwrite<char[]>(bufferSize);
    bufferSize_ = bufferSize;
  }
  for (;;) {
    const ssize_t count = ::read(from, buffer_.get(), bufferSize_);
    if (count == 0) return;
    if (count < 0) {
      if (errno == EINTR) continue;
      ThrowErrno(errno, "read the source of", targetPath);
    }
    for (ssize_t done = 0; done < count;) {
      const ssize_t written = ::write(to, buffer_.get() + done, static_cast<std::size_t>(count - done));
      if (written >= 0) {
        done += written;
      } else if (errno != EINTR) {
        ThrowErrno(errno, "write", targetPath);
      }
    }
  }
}

void FileCopier::CopyTree(int from, const std::string& path, int to, const std::string& targetPath) {
  for (const FolderEntry& entry : ReadFolder(from, path)) {
    const std::string entryPath = path + "/" + entry.name;
    const std::string entryTarget = targetPath + "/" + entry.name;
    switch (entry.kind) {
      case EntryKind::kFile:
        CopyFile(from, entry.name.c_str(), entryPath, to, entry.name, entryTarget, true, Staging::kInPlace);
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
