#include "platform/win32/win32_file_system.h"

#include <algorithm>

#include "host/error.h"
#include "platform/win32/file_copy.h"
#include "platform/win32/folder_walk.h"
#include "platform/win32/staged_file.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_held_file.h"

namespace tessel::windows {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::size_t kReadSize = 64 * 1024;
constexpr std::size_t kWriteBuffer = 64 * 1024;

std::wstring ParentOf(const std::wstring& native) {
  const auto separator = native.find_last_of(L'\\');
  return separator == std::wstring::npos ? L"." : native.substr(0, separator);
}

bool IsFolder(const std::wstring& native) {
  const DWORD attributes = ::GetFileAttributesW(native.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// An error of a step on a file: where the folder above it is missing, 76.
[[noreturn]] void ThrowFile(DWORD error, const char* step, const std::string& path) {
  ThrowWin32(error, step, path);
}

// The attributes; INVALID_FILE_ATTRIBUTES when there is nothing of the name for certain.
DWORD AttributesIfThere(const std::wstring& native, const std::string& path) {
  const DWORD attributes = ::GetFileAttributesW(native.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) return attributes;
  switch (const DWORD error = ::GetLastError()) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_DIRECTORY:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_NOT_READY:
      return attributes;
    default:
      ThrowFile(error, "look for", path);
  }
}

Handle OpenForReading(const std::wstring& native, const std::string& path) {
  Handle file(::CreateFileW(native.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
  if (file.IsOpen()) return file;
  const DWORD error = ::GetLastError();
  if (IsFolder(native)) ThrowFile(ERROR_INVALID_FUNCTION, "open", path);
  ThrowFile(error, "open", path);
}

std::size_t ReadSome(HANDLE file, char* buffer, std::size_t size, const std::string& path) {
  DWORD count = 0;
  if (::ReadFile(file, buffer, static_cast<DWORD>(size), &count, nullptr) == 0)
    ThrowFile(::GetLastError(), "read", path);
  return count;
}

// False with the last error set.
bool MakeFolders(const std::wstring& native) {
  if (::CreateDirectoryW(native.c_str(), nullptr) != 0) return true;
  if (::GetLastError() == ERROR_PATH_NOT_FOUND || ::GetLastError() == ERROR_FILE_NOT_FOUND) {
    const std::wstring parent = ParentOf(native);
    if (parent != native && parent != L"." && !parent.empty() && MakeFolders(parent) &&
        ::CreateDirectoryW(native.c_str(), nullptr) != 0)
      return true;
  }
  const DWORD error = ::GetLastError();
  if (IsFolder(native)) return true;
  ::SetLastError(error);
  return false;
}

// The final path of an existing folder, as two names may lead to one.
std::wstring FinalPath(const std::wstring& native, const std::string& path) {
  const Handle folder(::CreateFileW(native.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  if (!folder.IsOpen()) ThrowWin32(::GetLastError(), "read folder", path, true);
  std::wstring final(32768, L'\0');
  final.resize(::GetFinalPathNameByHandleW(folder.Get(), final.data(), static_cast<DWORD>(final.size()), 0));
  return final;
}

bool LiesIn(const std::wstring& folder, const std::wstring& outer) {
  if (folder.size() < outer.size()) return false;
  const bool same = ::CompareStringOrdinal(folder.c_str(), static_cast<int>(outer.size()), outer.c_str(),
                                           static_cast<int>(outer.size()), TRUE) == CSTR_EQUAL;
  return same && (folder.size() == outer.size() || folder[outer.size()] == L'\\');
}

std::vector<std::string> List(const std::wstring& native, const std::string& folder, bool folders) {
  std::vector<std::string> names;
  for (const FolderEntry& entry : ReadFolder(native, folder)) {
    if (entry.IsFolder() == folders) names.push_back(ToUtf8(entry.name));
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

std::wstring Win32FileSystem::WideForWriting(const std::string& path) {
  const std::string driveRoot = paths_.DriveRoot(path);
  if (!driveRoot.empty() && !MakeFolders(paths_.Wide(driveRoot)))
    ThrowWin32(::GetLastError(), "create drive", driveRoot, true);
  return paths_.Wide(path);
}

bool Win32FileSystem::FileExists(const std::string& path) const {
  if (path.find('\0') != std::string::npos) return false;
  const DWORD attributes = AttributesIfThere(paths_.Wide(path), path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool Win32FileSystem::FolderExists(const std::string& path) const {
  if (path.find('\0') != std::string::npos) return false;
  const DWORD attributes = AttributesIfThere(paths_.Wide(path), path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

void Win32FileSystem::CreateFolder(const std::string& path) {
  if (::CreateDirectoryW(WideForWriting(path).c_str(), nullptr) == 0)
    ThrowWin32(::GetLastError(), "create folder", path, true);
}

void Win32FileSystem::CreateFolders(const std::string& path) {
  if (!MakeFolders(paths_.Wide(path))) ThrowWin32(::GetLastError(), "create folder", path, true);
}

void Win32FileSystem::DeleteFolder(const std::string& path) {
  RemoveFolder(paths_.Wide(path), path);
}

void Win32FileSystem::Move(const std::string& from, const std::string& to) {
  const std::wstring source = paths_.Wide(from);
  const std::wstring target = WideForWriting(to);
  if (::MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH) != 0) return;
  ThrowFile(::GetLastError(), "move", from + "\" to \"" + to);
}

void Win32FileSystem::DeleteFile(const std::string& path) {
  const std::wstring native = paths_.Wide(path);
  if (::DeleteFileW(native.c_str()) == 0) ThrowFile(::GetLastError(), "delete", path);
}

bool Win32FileSystem::CopyFile(const std::string& from, const std::string& to, bool overwrite,
                               const CopyProgress& progress) {
  const std::wstring source = paths_.Wide(from);
  if (IsFolder(source)) ThrowFile(ERROR_INVALID_FUNCTION, "copy", from);
  return CopyOneFile(source, from, WideForWriting(to), to, overwrite, progress);
}

void Win32FileSystem::CopyFolderContents(const std::string& from, const std::string& to,
                                         const std::function<void()>& between) {
  const std::wstring source = paths_.Wide(from);
  const std::wstring target = paths_.Wide(to);
  if (LiesIn(FinalPath(target, to), FinalPath(source, from)))
    ThrowWin32(ERROR_INVALID_FUNCTION, "copy \"" + from + "\" into itself at", to);
  CopyTree(source, from, target, to, CallingBetween(between));
}

std::vector<std::string> Win32FileSystem::ListFiles(const std::string& folder) const {
  return List(paths_.Wide(folder), folder, false);
}

std::vector<std::string> Win32FileSystem::ListFolders(const std::string& folder) const {
  return List(paths_.Wide(folder), folder, true);
}

bool Win32FileSystem::IsReadOnly(const std::string& path) const {
  const DWORD attributes = ::GetFileAttributesW(paths_.Wide(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) ThrowFile(::GetLastError(), "read the attributes of", path);
  return (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

void Win32FileSystem::SetReadOnly(const std::string& path, bool readOnly) {
  const std::wstring native = paths_.Wide(path);
  const DWORD attributes = ::GetFileAttributesW(native.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) ThrowFile(::GetLastError(), "set the attributes of", path);
  const DWORD wanted = readOnly ? attributes | FILE_ATTRIBUTE_READONLY
                                : attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY);
  if (::SetFileAttributesW(native.c_str(), wanted) == 0)
    ThrowFile(::GetLastError(), "set the attributes of", path);
}

std::string Win32FileSystem::ReadBytes(const std::string& path) const {
  const Handle file = OpenForReading(paths_.Wide(path), path);
  std::string bytes;
  for (;;) {
    const std::size_t size = bytes.size();
    bytes.resize(size + std::max(kReadSize, size));
    const std::size_t count = ReadSome(file.Get(), bytes.data() + size, bytes.size() - size, path);
    bytes.resize(size + count);
    if (count == 0) return bytes;
  }
}

void Win32FileSystem::ReadLines(const std::string& path,
                                const std::function<bool(std::string_view line)>& line) const {
  const Handle file = OpenForReading(paths_.Wide(path), path);
  std::string pending;
  std::size_t searched = 0;
  for (;;) {
    std::size_t start = 0;
    for (std::size_t end; (end = pending.find('\n', std::max(start, searched))) != std::string::npos;
         start = end + 1) {
      std::string_view text(pending.data() + start, end - start);
      if (text.ends_with('\r')) text.remove_suffix(1);
      if (!line(text)) return;
    }
    pending.erase(0, start);
    searched = pending.size();
    pending.resize(searched + kReadSize);
    const std::size_t count = ReadSome(file.Get(), pending.data() + searched, kReadSize, path);
    pending.resize(searched + count);
    if (count == 0) break;
  }
  if (pending.empty()) return;
  if (pending.ends_with('\r')) pending.pop_back();
  (void)line(pending);
}

void Win32FileSystem::WriteBytes(const std::string& path, std::string_view bytes) {
  WriteStream(path, [bytes](const ByteSink& sink) { sink(bytes); });
}

void Win32FileSystem::WriteStream(const std::string& path,
                                  const std::function<void(const ByteSink& sink)>& produce) {
  const std::wstring native = WideForWriting(path);
  if (IsFolder(native)) ThrowFile(ERROR_INVALID_FUNCTION, "write", path);
  StagedFile file(native, path);
  std::string buffer;
  produce([&file, &buffer](std::string_view piece) {
    buffer.append(piece);
    if (buffer.size() < kWriteBuffer) return;
    file.Write(buffer);
    buffer.clear();
  });
  file.Write(buffer);
  file.Flush();
  file.Commit(true);
}

void Win32FileSystem::AppendBytes(const std::string& path, std::string_view bytes) {
  const std::wstring native = WideForWriting(path);
  const Handle file(::CreateFileW(native.c_str(), FILE_APPEND_DATA, kShareAll, nullptr, OPEN_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) ThrowFile(::GetLastError(), "append to", path);
  WriteAll(file.Get(), bytes, "append to", path);
}

void Win32FileSystem::MakeDurable(const std::string& folder) {
  const std::wstring native = paths_.Wide(folder);
  FlushTree(native, folder);
  FlushFolder(ParentOf(native), folder);
}

void Win32FileSystem::SyncFolder(const std::string& folder) {
  FlushFolder(paths_.Wide(folder), folder);
}

std::unique_ptr<HeldFile> Win32FileSystem::Hold(const std::string& path, bool make) {
  return HoldFile(make ? WideForWriting(path) : paths_.Wide(path), path, make);
}

}  // namespace tessel::windows
