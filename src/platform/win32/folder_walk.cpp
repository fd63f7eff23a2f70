#include "platform/win32/folder_walk.h"

#include "host/error.h"
#include "platform/win32/file_copy.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_error.h"

namespace tessel::windows {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kReadOnly = FILE_ATTRIBUTE_READONLY;

bool IsGone(DWORD error) {
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

std::wstring Below(const std::wstring& folder, const std::wstring& name) {
  return folder + L"\\" + name;
}

void ClearReadOnly(const std::wstring& path, DWORD attributes) {
  if ((attributes & kReadOnly) != 0) ::SetFileAttributesW(path.c_str(), attributes & ~kReadOnly);
}

void RemoveFolderOnce(const std::wstring& folder, const std::string& path);

// What somebody else deleted meanwhile is gone as wished.
void RemoveEntry(const std::wstring& native, const FolderEntry& entry, const std::string& path) {
  if (entry.IsFolder() && !entry.IsLink()) {
    if (::GetFileAttributesW(native.c_str()) != INVALID_FILE_ATTRIBUTES) RemoveFolderOnce(native, path);
    return;
  }
  ClearReadOnly(native, entry.attributes);
  const BOOL done = entry.IsFolder() ? ::RemoveDirectoryW(native.c_str()) : ::DeleteFileW(native.c_str());
  if (done == 0 && !IsGone(::GetLastError())) ThrowWin32(::GetLastError(), "delete", path);
}

void RemoveFolderOnce(const std::wstring& folder, const std::string& path) {
  const DWORD attributes = ::GetFileAttributesW(folder.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) ThrowWin32(::GetLastError(), "delete folder", path, true);
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) ThrowWin32(ERROR_DIRECTORY, "delete folder", path, true);
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
    for (const FolderEntry& entry : ReadFolder(folder, path))
      RemoveEntry(Below(folder, entry.name), entry, path + "\\" + ToUtf8(entry.name));
  }
  ClearReadOnly(folder, attributes);
  if (::RemoveDirectoryW(folder.c_str()) == 0 && !IsGone(::GetLastError()))
    ThrowWin32(::GetLastError(), "delete folder", path, true);
}

void FlushFile(const std::wstring& native, const std::string& path) {
  const Handle file(
      ::CreateFileW(native.c_str(), GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
  // A read-only file cannot be opened for flushing; it was flushed when it was written.
  if (!file.IsOpen()) {
    if (::GetLastError() == ERROR_ACCESS_DENIED || ::GetLastError() == ERROR_SHARING_VIOLATION) return;
    ThrowWin32(::GetLastError(), "write", path);
  }
  if (::FlushFileBuffers(file.Get()) == 0) ThrowWin32(::GetLastError(), "write", path);
}

}  // namespace

std::vector<FolderEntry> ReadFolder(const std::wstring& folder, const std::string& path) {
  WIN32_FIND_DATAW found{};
  const DWORD attributes = ::GetFileAttributesW(folder.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) ThrowWin32(::GetLastError(), "read folder", path, true);
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) ThrowWin32(ERROR_DIRECTORY, "read folder", path, true);
  const HANDLE search = ::FindFirstFileW(Below(folder, L"*").c_str(), &found);
  std::vector<FolderEntry> entries;
  if (search == INVALID_HANDLE_VALUE) {
    if (::GetLastError() == ERROR_FILE_NOT_FOUND) return entries;
    ThrowWin32(::GetLastError(), "read folder", path, true);
  }
  DWORD error = 0;
  do {
    const std::wstring name = found.cFileName;
    if (name != L"." && name != L"..") entries.push_back({name, found.dwFileAttributes});
  } while (::FindNextFileW(search, &found) != 0);
  error = ::GetLastError();
  ::FindClose(search);
  if (error != ERROR_NO_MORE_FILES) ThrowWin32(error, "read folder", path, true);
  return entries;
}

void RemoveFolder(const std::wstring& folder, const std::string& path) {
  constexpr int kAttempts = 50;
  constexpr DWORD kWait = 20;
  for (int attempt = 1;; ++attempt) {
    try {
      return RemoveFolderOnce(folder, path);
    } catch (const RuntimeError& error) {
      const bool isGone = error.Number() == error_number::kPathNotFound;
      if (isGone && attempt > 1) return;
      if (isGone || attempt == kAttempts) throw;
    }
    // A scanner or somebody else who deletes holds a file for a moment, and its name until he lets it go.
    ::Sleep(kWait);
  }
}

void CopyTree(const std::wstring& from, const std::string& path, const std::wstring& to,
              const std::string& targetPath, const CopyProgress& progress) {
  for (const FolderEntry& entry : ReadFolder(from, path)) {
    const std::string entryPath = path + "\\" + ToUtf8(entry.name);
    const std::string entryTarget = targetPath + "\\" + ToUtf8(entry.name);
    const std::wstring native = Below(to, entry.name);
    if (entry.IsLink()) ThrowWin32(ERROR_INVALID_FUNCTION, "copy the link", entryPath);
    if (!entry.IsFolder()) {
      (void)CopyOneFile(Below(from, entry.name), entryPath, native, entryTarget, true, progress);
      continue;
    }
    const DWORD existing = ::GetFileAttributesW(native.c_str());
    if (existing != INVALID_FILE_ATTRIBUTES && (existing & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
      ThrowWin32(ERROR_INVALID_FUNCTION, "copy into the link", entryTarget);
    if (existing == INVALID_FILE_ATTRIBUTES && ::CreateDirectoryW(native.c_str(), nullptr) == 0)
      ThrowWin32(::GetLastError(), "create folder", entryTarget, true);
    CopyTree(Below(from, entry.name), entryPath, native, entryTarget, progress);
  }
}

void FlushFolder(const std::wstring& folder, const std::string& path) {
  const DWORD attributes = ::GetFileAttributesW(folder.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
    ThrowWin32(ERROR_DIRECTORY, "write folder", path, true);
  const Handle opened(::CreateFileW(folder.c_str(), GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  if (!opened.IsOpen()) {
    // Without the right to open a folder for writing the journal of the file system has to do.
    if (::GetLastError() == ERROR_ACCESS_DENIED) return;
    ThrowWin32(::GetLastError(), "write folder", path, true);
  }
  if (::FlushFileBuffers(opened.Get()) == 0 && ::GetLastError() != ERROR_ACCESS_DENIED &&
      ::GetLastError() != ERROR_INVALID_FUNCTION)
    ThrowWin32(::GetLastError(), "write folder", path, true);
}

void FlushTree(const std::wstring& folder, const std::string& path) {
  for (const FolderEntry& entry : ReadFolder(folder, path)) {
    const std::string entryPath = path + "\\" + ToUtf8(entry.name);
    if (entry.IsLink()) continue;
    if (entry.IsFolder()) {
      FlushTree(Below(folder, entry.name), entryPath);
    } else {
      FlushFile(Below(folder, entry.name), entryPath);
    }
  }
  FlushFolder(folder, path);
}

}  // namespace tessel::windows
