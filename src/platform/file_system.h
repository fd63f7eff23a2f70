// Port of the file system. Paths are texts as in platform/paths.h; failures are RuntimeErrors with the
// classic numbers (53 file not found, 58 already exists, 61 disk full, 70 permission denied, 75 path or file
// access, 76 path not found) whose description names the step and the path.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  [[nodiscard]] virtual bool FileExists(const std::string& path) const = 0;
  [[nodiscard]] virtual bool FolderExists(const std::string& path) const = 0;

  // Creates one folder. Error 58 when something of that name exists, 76 when the parent is missing.
  virtual void CreateFolder(const std::string& path) = 0;
  // Creates a folder and its missing parents; nothing happens when it exists.
  virtual void CreateFolders(const std::string& path) = 0;
  // Deletes a folder with its whole content, read-only files included. Symbolic links are removed, never
  // followed. Error 76 when it does not exist.
  virtual void DeleteFolder(const std::string& path) = 0;
  // Renames a file or folder within its file system. Error 58 when the target exists, 53 or 76 when the
  // source does not.
  virtual void Move(const std::string& from, const std::string& to) = 0;
  virtual void DeleteFile(const std::string& path) = 0;

  // Copies one file through the kernel (reflink where possible) under a temporary name, then renames it, so
  // that no half file stands under the final name. Error 58 when the target exists and may not be replaced,
  // 75 when the file changes while it is copied.
  virtual void CopyFile(const std::string& from, const std::string& to, bool overwrite) = 0;
  // Copies everything below a folder into another, which must exist, overwriting files of the same name.
  virtual void CopyFolderContents(const std::string& from, const std::string& to) = 0;

  // Names of the files directly in a folder, sorted. Error 76 when the folder does not exist.
  [[nodiscard]] virtual std::vector<std::string> ListFiles(const std::string& folder) const = 0;
  // Names of the folders directly in a folder, sorted.
  [[nodiscard]] virtual std::vector<std::string> ListFolders(const std::string& folder) const = 0;

  [[nodiscard]] virtual bool IsReadOnly(const std::string& path) const = 0;
  virtual void SetReadOnly(const std::string& path, bool readOnly) = 0;

  [[nodiscard]] virtual std::string ReadBytes(const std::string& path) const = 0;
  // Calls `line` with each line's bytes, without its CR LF or LF, until it returns false or the file ends.
  virtual void ReadLines(const std::string& path,
                         const std::function<bool(std::string_view line)>& line) const = 0;
  // Replaces a file as one step: written under a temporary name beside it, flushed, renamed.
  virtual void WriteBytes(const std::string& path, std::string_view bytes) = 0;
  // As WriteBytes, for content that is produced piece by piece: `produce` hands pieces to its argument. When
  // it throws, nothing is left and the error goes to the caller.
  using ByteSink = std::function<void(std::string_view piece)>;
  virtual void WriteStream(const std::string& path,
                           const std::function<void(const ByteSink& sink)>& produce) = 0;
  // Appends to a file, made when missing.
  virtual void AppendBytes(const std::string& path, std::string_view bytes) = 0;

  // The native form of a path, for arguments and messages to other programs.
  [[nodiscard]] virtual std::string NativePath(const std::string& path) const = 0;
};

}  // namespace tessel
