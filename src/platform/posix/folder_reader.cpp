#include "platform/posix/folder_reader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <optional>
#include <string_view>

namespace tessel::posix {
namespace {

EntryKind KindOfMode(mode_t mode) {
  if (S_ISREG(mode)) return EntryKind::kFile;
  if (S_ISDIR(mode)) return EntryKind::kFolder;
  return S_ISLNK(mode) ? EntryKind::kLink : EntryKind::kOther;
}

// Nothing for an entry that is gone.
std::optional<EntryKind> KindOf(int folder, const dirent& entry, const std::string& path) {
  switch (entry.d_type) {
    case DT_REG:
      return EntryKind::kFile;
    case DT_DIR:
      return EntryKind::kFolder;
    case DT_LNK:
      return EntryKind::kLink;
    case DT_UNKNOWN: {
      struct stat status {};
      const int result =
          Retried([&] { return ::fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW); });
      if (result == 0) return KindOfMode(status.st_mode);
      if (!SaysMissing(errno)) ThrowErrno(errno, "read", path + "/" + entry.d_name);
      return std::nullopt;
    }
    default:
      return EntryKind::kOther;
  }
}

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

}  // namespace

FileDescriptor OpenFolder(int folder, const char* name, const std::string& path, bool followLink) {
  const int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | (followLink ? 0 : O_NOFOLLOW);
  FileDescriptor opened(Retried([&] { return ::openat(folder, name, flags); }));
  if (!opened.IsOpen()) ThrowErrno(errno, "open folder", path, true);
  return opened;
}

std::vector<FolderEntry> ReadFolder(int folder, const std::string& path) {
  // A descriptor of its own, since closing the stream closes what it reads from.
  FileDescriptor own(Retried([folder] { return ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
  const std::unique_ptr<DIR, CloseFolder> stream(own.IsOpen() ? ::fdopendir(own.Get()) : nullptr);
  if (!stream) ThrowErrno(errno, "read folder", path, true);
  (void)own.Release();

  std::vector<FolderEntry> entries;
  for (;;) {
    errno = 0;
    const dirent* entry = ::readdir(stream.get());
    if (entry == nullptr) {
      if (errno == EINTR) continue;
      if (errno != 0) ThrowErrno(errno, "read folder", path, true);
      return entries;
    }
    const std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    if (const auto kind = KindOf(folder, *entry, path)) entries.push_back({std::string(name), *kind});
  }
}

}  // namespace tessel::posix
