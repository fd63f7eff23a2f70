#include "platform/posix/posix_file_system.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

#include "host/error.h"
#include "platform/posix/durability.h"
#include "platform/posix/file_copy.h"
#include "platform/posix/folder_reader.h"
#include "platform/posix/folder_removal.h"
#include "platform/posix/posix_error.h"
#include "platform/posix/posix_held_file.h"
#include "platform/posix/rename.h"

namespace tessel::posix {
namespace {

constexpr mode_t kNewFile = 0666;
constexpr mode_t kNewFolder = 0777;
constexpr mode_t kAllWrite = 0222;
constexpr std::size_t kReadSize = 64 * 1024;
constexpr std::size_t kWriteBuffer = 64 * 1024;

std::string ParentOf(const std::string& native) {
  const auto separator = native.rfind('/');
  if (separator == std::string::npos) return ".";
  return separator == 0 ? "/" : native.substr(0, separator);
}

// The attributes of what a path leads to; false when there is nothing of that name.
bool Look(const std::string& native, const std::string& path, struct stat& status) {
  if (Retried([&] { return ::stat(native.c_str(), &status); }) == 0) return true;
  if (!SaysMissing(errno)) ThrowErrno(errno, "look for", path);
  return false;
}

// The same for what a link in an open folder leads to.
bool LinkTarget(int folder, const std::string& name, const std::string& path, struct stat& status) {
  if (Retried([&] { return ::fstatat(folder, name.c_str(), &status, 0); }) == 0) return true;
  if (!SaysMissing(errno) && errno != ELOOP) ThrowErrno(errno, "look for", path + "/" + name);
  return false;
}

// The attributes of something that must be there.
struct stat Attributes(const char* step, const std::string& native, const std::string& path) {
  struct stat status {};
  if (Retried([&] { return ::stat(native.c_str(), &status); }) != 0) {
    ThrowFileErrno(errno, step, path, AT_FDCWD, native);
  }
  return status;
}

FileDescriptor OpenForReading(const std::string& native, const std::string& path, struct stat& status) {
  FileDescriptor file(Retried([&] { return ::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); }));
  if (!file.IsOpen()) ThrowFileErrno(errno, "open", path, AT_FDCWD, native);
  if (Retried([&] { return ::fstat(file.Get(), &status); }) != 0) ThrowErrno(errno, "open", path);
  if (S_ISDIR(status.st_mode)) ThrowErrno(EISDIR, "open", path);
  return file;
}

std::size_t ReadSome(int file, char* buffer, std::size_t size, const std::string& path) {
  const ssize_t count = Retried([&] { return ::read(file, buffer, size); });
  if (count < 0) ThrowErrno(errno, "read", path);
  return static_cast<std::size_t>(count);
}

int MakeFolder(const std::string& native) {
  return Retried([&native] { return ::mkdir(native.c_str(), kNewFolder); });
}

// Makes a folder and its missing parents. False with errno set.
bool MakeFolders(const std::string& native) {
  if (MakeFolder(native) == 0) return true;
  if (errno == ENOENT) {
    const std::string parent = ParentOf(native);
    const bool canGoOn = parent != native && parent != "." && MakeFolders(parent);
    if (canGoOn && MakeFolder(native) == 0) return true;
  }
  const int error = errno;
  struct stat status {};
  if (::stat(native.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) return true;
  errno = error;
  return false;
}

// Whether a folder lies in another or is it, found by walking up.
bool LiesIn(int folder, int outer, const std::string& path) {
  struct stat outerStatus {};
  struct stat status {};
  struct stat above {};
  const auto look = [&path](int opened, struct stat& found) {
    if (Retried([&] { return ::fstat(opened, &found); }) != 0) ThrowErrno(errno, "read folder", path, true);
  };
  look(outer, outerStatus);
  FileDescriptor level = OpenFolder(folder, ".", path);
  for (;;) {
    look(level.Get(), status);
    if (status.st_dev == outerStatus.st_dev && status.st_ino == outerStatus.st_ino) return true;
    level = OpenFolder(level.Get(), "..", path);
    look(level.Get(), above);
    if (above.st_dev == status.st_dev && above.st_ino == status.st_ino) return false;
  }
}

}  // namespace

std::string PosixFileSystem::NativePath(const std::string& path) const {
  return paths_.Native(path);
}

std::string PosixFileSystem::Native(const std::string& path) const {
  std::string native = paths_.Native(path);
  while (native.size() > 1 && native.back() == '/') {
    native.pop_back();
  }
  return native;
}

template <class Step>
auto PosixFileSystem::OnDrive(const std::string& path, Step&& step) {
  try {
    return step();
  } catch (const RuntimeError& error) {
    if (error.Number() != error_number::kPathNotFound || !MakeDrive(path)) throw;
  }
  return step();
}

bool PosixFileSystem::MakeDrive(const std::string& path) const {
  const std::string root = paths_.DriveRoot(path);
  struct stat status {};
  if (root.empty() || Look(root, path, status)) return false;
  if (!MakeFolders(root)) ThrowErrno(errno, "create drive", root, true);
  return true;
}

bool PosixFileSystem::FileExists(const std::string& path) const {
  struct stat status {};
  return path.find('\0') == std::string::npos && Look(paths_.Native(path), path, status) &&
         !S_ISDIR(status.st_mode);
}

bool PosixFileSystem::FolderExists(const std::string& path) const {
  struct stat status {};
  return path.find('\0') == std::string::npos && Look(Native(path), path, status) && S_ISDIR(status.st_mode);
}

void PosixFileSystem::CreateFolder(const std::string& path) {
  const std::string native = Native(path);
  OnDrive(path, [&] {
    if (MakeFolder(native) != 0) ThrowErrno(errno, "create folder", path, true);
  });
}

void PosixFileSystem::CreateFolders(const std::string& path) {
  const std::string native = Native(path);
  if (!MakeFolders(native)) ThrowErrno(errno, "create folder", path, true);
}

void PosixFileSystem::DeleteFolder(const std::string& path) {
  RemoveFolder(Native(path), path);
}

void PosixFileSystem::Move(const std::string& from, const std::string& to) {
  const std::string source = Native(from);
  const std::string target = Native(to);
  (void)MakeDrive(to);
  if (RenameWithoutReplacing(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str()) == 0) return;
  ThrowFileErrno(errno, "move", from + "\" to \"" + to, AT_FDCWD, source);
}

void PosixFileSystem::DeleteFile(const std::string& path) {
  const std::string native = Native(path);
  if (Retried([&native] { return ::unlink(native.c_str()); }) != 0) {
    ThrowFileErrno(errno, "delete", path, AT_FDCWD, native);
  }
}

void PosixFileSystem::MakeDurable(const std::string& folder) {
  posix::MakeDurable(OpenFolder(AT_FDCWD, Native(folder).c_str(), folder, true).Get(), folder);
}

void PosixFileSystem::SyncFolder(const std::string& folder) {
  posix::SyncFolder(OpenFolder(AT_FDCWD, Native(folder).c_str(), folder, true).Get(), folder);
}

bool PosixFileSystem::CopyFile(const std::string& from, const std::string& to, bool overwrite,
                               const CopyProgress& progress) {
  const std::string source = Native(from);
  const std::string target = Native(to);
  return OnDrive(to, [&] {
    return FileCopier(progress).CopyFile(AT_FDCWD, source, from, AT_FDCWD, target, to, overwrite);
  });
}

void PosixFileSystem::CopyFolderContents(const std::string& from, const std::string& to,
                                         const std::function<void()>& between) {
  const FileDescriptor source = OpenFolder(AT_FDCWD, Native(from).c_str(), from, true);
  const FileDescriptor target = OpenFolder(AT_FDCWD, Native(to).c_str(), to, true);
  if (LiesIn(target.Get(), source.Get(), to)) ThrowErrno(EINVAL, "copy \"" + from + "\" into itself at", to);
  FileCopier(CallingBetween(between)).CopyTree(source.Get(), from, target.Get(), to);
}

std::vector<std::string> PosixFileSystem::List(const std::string& folder, bool folders) const {
  const FileDescriptor opened = OpenFolder(AT_FDCWD, Native(folder).c_str(), folder, true);
  std::vector<std::string> names;
  for (FolderEntry& entry : ReadFolder(opened.Get(), folder)) {
    bool isFolder = entry.kind == EntryKind::kFolder;
    bool isFile = entry.kind == EntryKind::kFile;
    struct stat status {};
    if (entry.kind == EntryKind::kLink && LinkTarget(opened.Get(), entry.name, folder, status)) {
      isFolder = S_ISDIR(status.st_mode);
      isFile = S_ISREG(status.st_mode);
    }
    if (folders ? isFolder : isFile) names.push_back(std::move(entry.name));
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::vector<std::string> PosixFileSystem::ListFiles(const std::string& folder) const {
  return List(folder, false);
}

std::vector<std::string> PosixFileSystem::ListFolders(const std::string& folder) const {
  return List(folder, true);
}

bool PosixFileSystem::IsReadOnly(const std::string& path) const {
  return (Attributes("read the attributes of", Native(path), path).st_mode & S_IWUSR) == 0;
}

void PosixFileSystem::SetReadOnly(const std::string& path, bool readOnly) {
  const std::string native = Native(path);
  const mode_t permissions = Attributes("set the attributes of", native, path).st_mode & 07777;
  const mode_t wanted = readOnly ? permissions & ~kAllWrite : permissions | S_IWUSR;
  if (Retried([&] { return ::chmod(native.c_str(), wanted); }) != 0) {
    ThrowErrno(errno, "set the attributes of", path);
  }
}

std::string PosixFileSystem::ReadBytes(const std::string& path) const {
  struct stat status {};
  const FileDescriptor file = OpenForReading(Native(path), path, status);
  // One byte more than announced, so that the end of the file shows in a second reading.
  std::string bytes(static_cast<std::size_t>(status.st_size) + 1, '\0');
  std::size_t size = 0;
  while (const std::size_t count = ReadSome(file.Get(), bytes.data() + size, bytes.size() - size, path)) {
    size += count;
    if (size == bytes.size()) bytes.resize(2 * size + kReadSize);
  }
  bytes.resize(size);
  return bytes;
}

void PosixFileSystem::ReadLines(const std::string& path,
                                const std::function<bool(std::string_view line)>& line) const {
  struct stat status {};
  const FileDescriptor file = OpenForReading(Native(path), path, status);
  std::string pending;
  std::size_t lineStart = 0;
  std::size_t searchFrom = 0;
  for (;;) {
    const auto end = pending.find('\n', searchFrom);
    if (end != std::string::npos) {
      std::string_view text(pending.data() + lineStart, end - lineStart);
      if (text.ends_with('\r')) text.remove_suffix(1);
      if (!line(text)) return;
      lineStart = searchFrom = end + 1;
      continue;
    }
    pending.erase(0, lineStart);
    lineStart = 0;
    searchFrom = pending.size();
    pending.resize(searchFrom + kReadSize);
    const std::size_t count = ReadSome(file.Get(), pending.data() + searchFrom, kReadSize, path);
    pending.resize(searchFrom + count);
    if (count == 0) break;
  }
  if (pending.empty()) return;
  if (pending.ends_with('\r')) pending.pop_back();
  (void)line(pending);
}

void PosixFileSystem::WriteBytes(const std::string& path, std::string_view bytes) {
  WriteStream(path, [bytes](const ByteSink& sink) { sink(bytes); });
}

void PosixFileSystem::WriteStream(const std::string& path,
                                  const std::function<void(const ByteSink& sink)>& produce) {
  const std::string native = Native(path);
  StagedFile file = OnDrive(path, [&] { return StagedFile(AT_FDCWD, native, path, kNewFile); });
  std::string buffer;
  produce([&file, &buffer](std::string_view piece) {
    if (buffer.size() + piece.size() > kWriteBuffer) {
      file.Write(buffer);
      buffer.clear();
    }
    if (piece.size() > kWriteBuffer) {
      file.Write(piece);
    } else {
      buffer.append(piece);
    }
  });
  file.Write(buffer);
  file.Flush();
  file.Commit(true);
}

void PosixFileSystem::AppendBytes(const std::string& path, std::string_view bytes) {
  constexpr int kAppend = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK;
  const std::string native = Native(path);
  const FileDescriptor file = OnDrive(path, [&] {
    FileDescriptor opened(Retried([&] { return ::open(native.c_str(), kAppend, kNewFile); }));
    if (!opened.IsOpen()) ThrowFileErrno(errno, "append to", path, AT_FDCWD, native);
    return opened;
  });
  while (!bytes.empty()) {
    const ssize_t written = Retried([&] { return ::write(file.Get(), bytes.data(), bytes.size()); });
    if (written < 0) ThrowErrno(errno, "append to", path);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::unique_ptr<HeldFile> PosixFileSystem::Hold(const std::string& path, bool make) {
  const std::string native = Native(path);
  return OnDrive(path, [&] { return HoldFile(native, path, make); });
}

}  // namespace tessel::posix
