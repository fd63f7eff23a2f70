// Walks through folders and what is done to everything below them.
#pragma once

#include <string>
#include <vector>

#include "platform/win32/file_copy.h"
#include "platform/win32/windows_api.h"

namespace tessel::windows {

struct FolderEntry {
  std::wstring name;
  DWORD attributes = 0;
  [[nodiscard]] bool IsFolder() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
  // A link or mount point, which is never followed.
  [[nodiscard]] bool IsLink() const { return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0; }
};

// Error 76 when the folder does not exist. `path` is what errors show.
[[nodiscard]] std::vector<FolderEntry> ReadFolder(const std::wstring& folder, const std::string& path);

// Removes a folder with its content, read-only things included, links themselves and never what they lead to.
// What vanishes meanwhile was deleted by somebody else.
void RemoveFolder(const std::wstring& folder, const std::string& path);

// Copies everything below a folder into another, overwriting. `progress` is asked as for one file, and ends
// no copy.
void CopyTree(const std::wstring& from, const std::string& path, const std::wstring& to,
              const std::string& targetPath, const CopyProgress& progress);

// Puts everything below a folder on the disk.
void FlushTree(const std::wstring& folder, const std::string& path);
// Puts the names in a folder on the disk.
void FlushFolder(const std::wstring& folder, const std::string& path);

}  // namespace tessel::windows
