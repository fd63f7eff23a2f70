#include "platform/posix/posix_file_system.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "host/error.h"
#include "platform/posix/file_copy.h"
#include "platform/posix/folder_reader.h"
#include "platform/posix/folder_removal.h"
#include "platform/posix/posix_error.h"

namespace tessel::posix {
namespace {

constexpr mode_t kNewFile = 0666;
constexpr mode_t kNewFolder = 0777;
constexpr mode_t kAllWrite = 0222;
constexpr std::size_t kReadSize = 64 * 1024;
constexpr std::size_t kWriteBuffer = 64 * 1024;

struct FolderAndName {
  std::string folder;
  std::string name;
};

FolderAndName Split(const std::string& native) {
  const auto separator = native.rfind('/');
  if (separator == std::string::npos) return {".", native};
  return {separator == 0 ? "/" : native.substr(0, separator), native.substr(separator + 1)};
}

bool IsFolder(const std::string& native) {
  struct stat status {};
  return ::stat(native.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// An error of a step on a file: a missing file is 53, a missing folder above it 76.
[[noreturn]] void ThrowFileErrno(int error, const char* step, const std::string& path,
                                 const std::string& native) {
  ThrowErrno(error, step, path, !IsFolder(Split(native).folder));
}

// The folder that a file is about to be made in.
FileDescriptor OpenParent(const FolderAndName& target, const std::string& path) {
  if (target.name.empty()) ThrowErrno(EISDIR, "write", path);
  return OpenFolder(AT_FDCWD, target.folder.c_str(), path, true);
}

FileDescriptor OpenForReading(const std::string& native, const std::string& path, struct stat& status) {
  FileDescriptor file(::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file.IsOpen()) ThrowFileErrno(errno, "open", path, native);
  if (::fstat(file.Get(), &status) != 0) ThrowErrno(errno, "open", path);
  if (S_ISDIR(status.st_mode)) ThrowErrno(EISDIR, "open", path);
  return file;
}

std::size_t ReadSome(int file, char* buffer, std::size_t size, const std::string& path) {
  for (;;) {
    const ssize_t count = ::read(file, buffer, size);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR) ThrowErrno(errno, "read", path);
  }
}

// Makes a folder and its missing parents. False with errno set.
bool MakeFolders(const std::string& native) {
  if (::mkdir(native.c_str(), kNewFolder) == 0) return true;
  if (errno == ENOENT) {
    const std::string parent = Split(native).folder;
    const bool canGoOn = parent != native && parent != "." && MakeFolders(parent);
    if (canGoOn && ::mkdir(native.c_str(), kNewFolder) == 0) return true;
  }
  const int error = errno;
  if (IsFolder(native)) return true;
  errno = error;
  return false;
}

// Whether a folder lies in another or is it, found by walking up.
bool LiesIn(int folder, int outer, const std::string& path) {
  struct stat outerStatus {};
  struct stat status {};
  struct stat above {};
  if (::fstat(outer, &outerStatus) != 0) ThrowErrno(errno, "read folder", path, true);
  FileDescriptor level = OpenFolder(folder, ".", path);
  for (;;) {
    if (::fstat(level.Get(), &status) != 0) ThrowErrno(errno, "read folder", path, true);
    if (status.st_dev == outerStatus.st_dev && status.st_ino == outerStatus.st_ino) return true;
    level = OpenFolder(level.Get(), "..", path);
    if (::fstat(level.Get(), &above) != 0) ThrowErrno(errno, "read folder", path, true);
    if (above.st_dev == status.st_dev && above.st_ino == status.st_ino) return false;
  }
}

int RenameWithoutReplacing(const std::string& from, const std::string& to) {
  const int result = ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
  if (result == 0 || (errno != EINVAL && errno != ENOSYS)) return result;
  struct stat existing {};
  if (::lstat(to.c_str(), &existing) == 0) {
    errno = EEXIST;
    return -1;
  }
  return ::rename(from.c_str(), to.c_str());
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

std::string PosixFileSystem::NativeForWriting(const std::string& path) {
  const std::string driveRoot = paths_.DriveRoot(path);
  if (!driveRoot.empty() && !MakeFolders(driveRoot)) ThrowErrno(errno, "create drive", driveRoot, true);
  return Native(path);
}

bool PosixFileSystem::FileExists(const std::string& path) const {
  struct stat status {};
  return path.find('\0') == std::string::npos && ::stat(paths_.Native(path).c_str(), &status) == 0 &&
         !S_ISDIR(status.st_mode);
}

bool PosixFileSystem::FolderExists(const std::string& path) const {
  return path.find('\0') == std::string::npos && IsFolder(Native(path));
}

void PosixFileSystem::CreateFolder(const std::string& path) {
  const std::string native = NativeForWriting(path);
  if (::mkdir(native.c_str(), kNewFolder) != 0) ThrowErrno(errno, "create folder", path, true);
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
  const std::string target = NativeForWriting(to);
  if (RenameWithoutReplacing(source, target) == 0) return;
  const int error = errno;
  ThrowFileErrno(error, "move", from + "\" to \"" + to, source);
}

void PosixFileSystem::DeleteFile(const std::string& path) {
  const std::string native = Native(path);
  if (::unlink(native.c_str()) != 0) ThrowFileErrno(errno, "delete", path, native);
}

void PosixFileSystem::CopyFile(const std::string& from, const std::string& to, bool overwrite) {
  const std::string source = Native(from);
  const FolderAndName target = Split(NativeForWriting(to));
  struct stat status {};
  if (::stat(source.c_str(), &status) != 0) ThrowFileErrno(errno, "copy", from, source);
  const FileDescriptor folder = OpenParent(target, to);
  FileCopier().CopyFile(AT_FDCWD, source.c_str(), from, folder.Get(), target.name, to, overwrite);
}

void PosixFileSystem::CopyFolderContents(const std::string& from, const std::string& to) {
  const FileDescriptor source = OpenFolder(AT_FDCWD, Native(from).c_str(), from, true);
  const FileDescriptor target = OpenFolder(AT_FDCWD, Native(to).c_str(), to, true);
  if (LiesIn(target.Get(), source.Get(), to)) ThrowErrno(EINVAL, "copy \"" + from + "\" into itself at", to);
  FileCopier().CopyTree(source.Get(), from, target.Get(), to);
}

std::vector<std::string> PosixFileSystem::List(const std::string& folder, bool folders) const {
  const FileDescriptor opened = OpenFolder(AT_FDCWD, Native(folder).c_str(), folder, true);
  std::vector<std::string> names;
  for (FolderEntry& entry : ReadFolder(opened.Get(), folder)) {
    bool isFolder = entry.kind == EntryKind::kFolder;
    bool isFile = entry.kind == EntryKind::kFile;
    struct stat status {};
    if (entry.kind == EntryKind::kLink && ::fstatat(opened.Get(), entry.name.c_str(), &status, 0) == 0) {
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
  const std::string native = Native(path);
  struct stat status {};
  if (::stat(native.c_str(), &status) != 0) ThrowFileErrno(errno, "read the attributes of", path, native);
  return (status.st_mode & S_IWUSR) == 0;
}

void PosixFileSystem::SetReadOnly(const std::string& path, bool readOnly) {
  const std::string native = Native(path);
  struct stat status {};
  if (::stat(native.c_str(), &status) != 0) ThrowFileErrno(errno, "set the attributes of", path, native);
  const mode_t permissions = status.st_mode & 07777;
  const mode_t wanted = readOnly ? permissions & ~kAllWrite : permissions | S_IWUSR;
  if (::chmod(native.c_str(), wanted) != 0) ThrowErrno(errno, "set the attributes of", path);
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
  if (!pending.empty()) (void)line(pending);
}

void PosixFileSystem::WriteBytes(const std::string& path, std::string_view bytes) {
  WriteStream(path, [bytes](const ByteSink& sink) { sink(bytes); });
}

void PosixFileSystem::WriteStream(const std::string& path,
                                  const std::function<void(const ByteSink& sink)>& produce) {
  const std::string native = NativeForWriting(path);
  if (IsFolder(native)) ThrowErrno(EISDIR, "write", path);
  const FolderAndName target = Split(native);
  const FileDescriptor folder = OpenParent(target, path);
  StagedFile file(folder.Get(), target.name, path, kNewFile);
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
  const std::string native = NativeForWriting(path);
  const FileDescriptor file(
      ::open(native.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK, kNewFile));
  if (!file.IsOpen()) ThrowFileErrno(errno, "append to", path, native);
  while (!bytes.empty()) {
    const ssize_t written = ::write(file.Get(), bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      ThrowErrno(errno, "append to", path);
    }
  }
}

}  // namespace tessel::posix
