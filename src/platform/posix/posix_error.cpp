#include "platform/posix/posix_error.h"

#include <sys/stat.h>
#include <unistd.h>

#include <system_error>

#include "host/error.h"

namespace tessel::posix {
namespace {

int ClassicNumber(int error, bool folderWanted) {
  switch (error) {
    case ENOENT:
      return folderWanted ? error_number::kPathNotFound : error_number::kFileNotFound;
    case EEXIST:
      return error_number::kFileAlreadyExists;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return error_number::kDiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
    case ETXTBSY:
      return error_number::kPermissionDenied;
    case ENOTDIR:
      return folderWanted ? error_number::kPathNotFound : error_number::kPathFileAccess;
    case EIO:
      return error_number::kDeviceIo;
    case ENOMEM:
      return error_number::kOutOfMemory;
    default:
      return error_number::kPathFileAccess;
  }
}

}  // namespace

void ThrowErrno(int error, const std::string& step, const std::string& path, bool folderWanted) {
  throw RuntimeError(ClassicNumber(error, folderWanted),
                     "Cannot " + step + " \"" + path + "\": " + std::generic_category().message(error));
}

void ThrowFileErrno(int error, const std::string& step, const std::string& path, int folder,
                    const std::string& name) {
  const auto separator = name.rfind('/');
  struct stat status {};
  const bool folderMissing = separator != std::string::npos && separator > 0 &&
                             ::fstatat(folder, name.substr(0, separator).c_str(), &status, 0) != 0 &&
                             SaysMissing(errno);
  ThrowErrno(error, step, path, folderMissing);
}

// An interrupted close has closed all the same, and a second one could hit somebody else's file.
int FileDescriptor::Close() {
  if (fd_ < 0) return 0;
  return ::close(std::exchange(fd_, -1)) == 0 || errno == EINTR ? 0 : errno;
}

}  // namespace tessel::posix
