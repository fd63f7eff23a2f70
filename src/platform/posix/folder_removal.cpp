#include "platform/posix/folder_removal.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/folder_reader.h"
#include "platform/posix/posix_error.h"

namespace tessel::posix {
namespace {

constexpr mode_t kOwnerAll = 0700;

// Opens a folder that is about to go, giving the owner the rights that reading it needs.
FileDescriptor OpenForRemoval(int parent, const char* name, const std::string& path) {
  const int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
  FileDescriptor folder(::openat(parent, name, flags));
  if (!folder.IsOpen() && errno == EACCES && ::fchmodat(parent, name, kOwnerAll, 0) == 0) {
    folder = FileDescriptor(::openat(parent, name, flags));
  }
  if (!folder.IsOpen()) ThrowErrno(errno, "delete folder", path, true);
  return folder;
}

void RemoveEntry(int folder, const std::string& name, int flags, const std::string& path) {
  if (::unlinkat(folder, name.c_str(), flags) == 0 || errno == ENOENT) return;
  const bool opened = (errno == EACCES || errno == EPERM) && ::fchmod(folder, kOwnerAll) == 0;
  if (opened && ::unlinkat(folder, name.c_str(), flags) == 0) return;
  ThrowErrno(errno, "delete", path);
}

void RemoveContents(int folder, const std::string& path) {
  for (const FolderEntry& entry : ReadFolder(folder, path)) {
    const std::string entryPath = path + "/" + entry.name;
    if (entry.kind == EntryKind::kFolder) {
      const FileDescriptor opened = OpenForRemoval(folder, entry.name.c_str(), entryPath);
      RemoveContents(opened.Get(), entryPath);
      RemoveEntry(folder, entry.name, AT_REMOVEDIR, entryPath);
    } else {
      RemoveEntry(folder, entry.name, 0, entryPath);
    }
  }
}

}  // namespace

void RemoveFolder(const std::string& native, const std::string& path) {
  struct stat status {};
  if (::lstat(native.c_str(), &status) != 0) ThrowErrno(errno, "delete folder", path, true);
  if (S_ISLNK(status.st_mode)) {
    if (::unlink(native.c_str()) != 0) ThrowErrno(errno, "delete", path);
    return;
  }
  {
    const FileDescriptor folder = OpenForRemoval(AT_FDCWD, native.c_str(), path);
    RemoveContents(folder.Get(), path);
  }
  if (::rmdir(native.c_str()) != 0) ThrowErrno(errno, "delete folder", path, true);
}

}  // namespace tessel::posix
