#include "platform/posix/durability.h"

#include <fcntl.h>
#include <unistd.h>

#include "platform/posix/folder_reader.h"
#include "platform/posix/posix_error.h"

namespace tessel::posix {
namespace {

bool Unsupported(int error) {
  return error == ENOSYS || error == EINVAL || error == EOPNOTSUPP;
}

void SyncFile(int file, const std::string& path) {
  if (Retried([file] { return ::fsync(file); }) != 0 && !Unsupported(errno)) {
    ThrowErrno(errno, "write to the disk", path);
  }
}

enum class Depth { kFilesOnly, kFolders };

void SyncOneByOne(int folder, const std::string& path, Depth depth) {
  for (const FolderEntry& entry : ReadFolder(folder, path)) {
    const std::string entryPath = path + "/" + entry.name;
    if (entry.kind == EntryKind::kFolder && depth == Depth::kFolders) {
      SyncOneByOne(OpenFolder(folder, entry.name.c_str(), entryPath).Get(), entryPath, depth);
    } else if (entry.kind == EntryKind::kFile) {
      const FileDescriptor file(
          Retried([&] { return ::openat(folder, entry.name.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC); }));
      if (file.IsOpen()) {
        SyncFile(file.Get(), entryPath);
      } else if (errno != ENOENT) {
        ThrowErrno(errno, "write to the disk", entryPath);
      }
    }
  }
  SyncFile(folder, path);
}

}  // namespace

void SyncFolder(int folder, const std::string& path) {
  SyncFile(folder, path);
}

void MakeDurable(int folder, const std::string& path) {
  if (Retried([folder] { return ::syncfs(folder); }) == 0) {
    SyncFile(folder, path);
    return;
  }
  if (!Unsupported(errno)) ThrowErrno(errno, "write to the disk", path);
  SyncOneByOne(folder, path, Depth::kFolders);
  const std::string parent = path + "/..";
  SyncOneByOne(OpenFolder(folder, "..", parent).Get(), parent, Depth::kFilesOnly);
}

}  // namespace tessel::posix
