#include "platform/posix/folder_removal.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/folder_reader.h"
#include "platform/posix/posix_error.h"

namespace tessel::posix {
namespace {

constexpr mode_t kOwnerAll = 0700;

// How often a folder into which somebody writes is emptied again.
constexpr int kAttempts = 3;

// Opens a folder that is about to go, giving the owner the rights that reading it needs. -1 with errno.
FileDescriptor OpenForRemoval(int parent, const char* name) {
  const int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
  const auto open = [&] { return Retried([&] { return ::openat(parent, name, flags); }); };
  FileDescriptor folder(open());
  if (!folder.IsOpen() && errno == EACCES && ::fchmodat(parent, name, kOwnerAll, 0) == 0) {
    folder = FileDescriptor(open());
  }
  return folder;
}

// Removes an entry whose folder may be read-only. 0, or -1 with errno.
int Unlink(int folder, const char* name, int flags) {
  const auto unlink = [&] { return Retried([&] { return ::unlinkat(folder, name, flags); }); };
  if (unlink() == 0) return 0;
  const int error = errno;
  if ((error == EACCES || error == EPERM) && ::fchmod(folder, kOwnerAll) == 0) return unlink();
  errno = error;
  return -1;
}

void RemoveContents(int folder, const std::string& path);

void RemoveFolderIn(int parent, const char* name, const std::string& path) {
  for (int attempt = 1;; ++attempt) {
    {
      const FileDescriptor folder = OpenForRemoval(parent, name);
      if (!folder.IsOpen() && errno == ENOENT) return;
      if (!folder.IsOpen()) ThrowErrno(errno, "delete folder", path, true);
      RemoveContents(folder.Get(), path);
    }
    const int result =
        parent == AT_FDCWD ? Retried([name] { return ::rmdir(name); }) : Unlink(parent, name, AT_REMOVEDIR);
    if (result == 0 || errno == ENOENT) return;
    if (errno != ENOTEMPTY || attempt == kAttempts) ThrowErrno(errno, "delete folder", path, true);
  }
}

void RemoveContents(int folder, const std::string& path) {
  for (const FolderEntry& entry : ReadFolder(folder, path)) {
    const std::string entryPath = path + "/" + entry.name;
    if (entry.kind == EntryKind::kFolder) {
      RemoveFolderIn(folder, entry.name.c_str(), entryPath);
    } else if (Unlink(folder, entry.name.c_str(), 0) != 0 && errno != ENOENT) {
      ThrowErrno(errno, "delete", entryPath);
    }
  }
}

}  // namespace

void RemoveFolder(const std::string& native, const std::string& path) {
  struct stat status {};
  if (Retried([&] { return ::lstat(native.c_str(), &status); }) != 0) {
    ThrowErrno(errno, "delete folder", path, true);
  }
  if (!S_ISLNK(status.st_mode)) {
    RemoveFolderIn(AT_FDCWD, native.c_str(), path);
  } else if (Unlink(AT_FDCWD, native.c_str(), 0) != 0 && errno != ENOENT) {
    ThrowErrno(errno, "delete", path);
  }
}

}  // namespace tessel::posix
