#include "platform/posix/rename.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/posix_error.h"

namespace tessel::posix {
namespace {

int Failure(int error) {
  errno = error;
  return -1;
}

int RenameFolder(int fromFolder, const char* from, int toFolder, const char* to) {
  struct stat existing {};
  if (Retried([&] { return ::fstatat(toFolder, to, &existing, AT_SYMLINK_NOFOLLOW); }) == 0) {
    return Failure(EEXIST);
  }
  if (errno != ENOENT) return -1;
  const int result = Retried([&] { return ::renameat(fromFolder, from, toFolder, to); });
  return result != 0 && (errno == ENOTEMPTY || errno == ENOTDIR) ? Failure(EEXIST) : result;
}

// A file system without links gets an empty file of our own first, which then may be replaced.
int ReserveAndRename(int fromFolder, const char* from, int toFolder, const char* to) {
  constexpr int kReserve = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
  FileDescriptor reserved(Retried([&] { return ::openat(toFolder, to, kReserve, 0600); }));
  if (!reserved.IsOpen()) return -1;
  (void)reserved.Close();
  if (Retried([&] { return ::renameat(fromFolder, from, toFolder, to); }) == 0) return 0;
  const int error = errno;
  ::unlinkat(toFolder, to, 0);
  return Failure(error);
}

int RenameFile(int fromFolder, const char* from, int toFolder, const char* to) {
  if (Retried([&] { return ::linkat(fromFolder, from, toFolder, to, 0); }) == 0) {
    return Retried([&] { return ::unlinkat(fromFolder, from, 0); });
  }
  const bool hasNoLinks = errno == EPERM || errno == EOPNOTSUPP || errno == EMLINK;
  return hasNoLinks ? ReserveAndRename(fromFolder, from, toFolder, to) : -1;
}

}  // namespace

int RenameWithoutReplacing(int fromFolder, const char* from, int toFolder, const char* to) {
  const int result = Retried([&] { return ::renameat2(fromFolder, from, toFolder, to, RENAME_NOREPLACE); });
  if (result == 0 || (errno != EINVAL && errno != ENOSYS)) return result;
  struct stat source {};
  if (Retried([&] { return ::fstatat(fromFolder, from, &source, AT_SYMLINK_NOFOLLOW); }) != 0) return -1;
  return S_ISDIR(source.st_mode) ? RenameFolder(fromFolder, from, toFolder, to)
                                 : RenameFile(fromFolder, from, toFolder, to);
}

}  // namespace tessel::posix
