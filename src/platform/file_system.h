// Port of the file system. Paths are texts as in platform/paths.h; failures are RuntimeErrors with the
// classic numbers (7 out of memory, 53 file not found, 57 device, 58 already exists, 61 disk full, 70
// permission denied, 75 path or file access, 76 path not found) whose description names the step, the path
// and the system's reason. Calls that a signal interrupts go on. Several threads may use one object at once,
// each on files of its own.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/held_file.h"

namespace tessel {

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  // Whether there is anything but a folder, or a folder, of that name. False says that there is none for
  // certain; when that cannot be told (no right to look, a failing device), the error is thrown.
  [[nodiscard]] virtual bool FileExists(const std::string& path) const = 0;
  [[nodiscard]] virtual bool FolderExists(const std::string& path) const = 0;

  // Creates one folder. Error 58 when something of that name exists, 76 when the parent is missing.
  virtual void CreateFolder(const std::string& path) = 0;
  // Creates a folder and its missing parents; nothing happens when it exists.
  virtual void CreateFolders(const std::string& path) = 0;
  // Deletes a folder with its whole content, read-only files included. Symbolic links are removed, never
  // followed. What vanishes meanwhile was deleted by somebody else. Error 76 when it does not exist.
  virtual void DeleteFolder(const std::string& path) = 0;
  // Renames a file or folder within its file system, as one step that never replaces anything: of two callers
  // with one target, one gets error 58. Error 58 when the target exists, 53 or 76 when the source does not.
  // Which of the two names stands after a power failure, SyncFolder of the parent decides.
  virtual void Move(const std::string& from, const std::string& to) = 0;
  // A link is removed, not what it leads to. Error 53 when there is no such file.
  virtual void DeleteFile(const std::string& path) = 0;

  // Asked after every piece of a copy, none of which takes 100 ms: bytes of the file copied so far, and all.
  // False ends the copy.
  using CopyProgress = std::function<bool(std::uint64_t done, std::uint64_t all)>;
  // Copies one file through the kernel (reflink where possible), and gives it its name when it is whole, so
  // that no half file stands under the final name. Error 58 when the target exists and may not be replaced,
  // 75 when the file changes while it is copied. False when `progress` ended the copy: nothing has changed.
  [[nodiscard]] virtual bool CopyFile(const std::string& from, const std::string& to, bool overwrite,
                                      const CopyProgress& progress) = 0;
  void CopyFile(const std::string& from, const std::string& to, bool overwrite) {
    (void)CopyFile(from, to, overwrite, nullptr);
  }
  // Copies everything below a folder into another, which must exist, overwriting files of the same name.
  // After an error what was copied so far stays. Error 76 when one of them does not exist; a folder is not
  // copied into itself. Calls `between` every 50 ms or so, also inside a large file.
  virtual void CopyFolderContents(const std::string& from, const std::string& to,
                                  const std::function<void()>& between) = 0;
  void CopyFolderContents(const std::string& from, const std::string& to) {
    CopyFolderContents(from, to, nullptr);
  }
  // Progress that calls `between` no more often; nothing without it.
  [[nodiscard]] static CopyProgress CallingBetween(const std::function<void()>& between) {
    if (!between) return nullptr;
    return [&between, called = std::chrono::steady_clock::now()](std::uint64_t, std::uint64_t) mutable {
      const auto now = std::chrono::steady_clock::now();
      if (now - called < std::chrono::milliseconds(50)) return true;
      between();
      called = std::chrono::steady_clock::now();
      return true;
    };
  }

  // Names of the files directly in a folder, sorted. Error 76 when the folder does not exist.
  [[nodiscard]] virtual std::vector<std::string> ListFiles(const std::string& folder) const = 0;
  // Names of the folders directly in a folder, sorted. Error as ListFiles.
  [[nodiscard]] virtual std::vector<std::string> ListFolders(const std::string& folder) const = 0;

  // Whether the owner may not write. Both throw when there is nothing of that name.
  [[nodiscard]] virtual bool IsReadOnly(const std::string& path) const = 0;
  virtual void SetReadOnly(const std::string& path, bool readOnly) = 0;

  // The whole content. Error 53 when there is no such file.
  [[nodiscard]] virtual std::string ReadBytes(const std::string& path) const = 0;
  // Calls `line` with each line's bytes, without its CR LF or LF (or, in the last line, a lone CR), until it
  // returns false or the file ends.
  virtual void ReadLines(const std::string& path,
                         const std::function<bool(std::string_view line)>& line) const = 0;
  // Replaces a file as one step: written aside, flushed, then given its name. A process that is killed in
  // between leaves nothing, or on some file systems a file ".tessel-<process>-<number>.tmp" beside it.
  virtual void WriteBytes(const std::string& path, std::string_view bytes) = 0;
  // As WriteBytes, for content that is produced piece by piece: `produce` hands pieces to its argument. When
  // it throws, nothing is left and the error goes to the caller.
  using ByteSink = std::function<void(std::string_view piece)>;
  virtual void WriteStream(const std::string& path,
                           const std::function<void(const ByteSink& sink)>& produce) = 0;
  // Appends to a file, made when missing. Neither one step nor durable: after an error or a crash a part of
  // the bytes may stand.
  virtual void AppendBytes(const std::string& path, std::string_view bytes) = 0;

  // When this returns, everything that was written below a folder so far is on the disk (contents, names,
  // attributes), as are the folder itself and the files directly beside it. Error 57 or 61 when something
  // could not be written, 76 for no folder.
  virtual void MakeDurable(const std::string& folder) = 0;
  // Brings the names in a folder to the disk, after something in it was made, renamed or deleted.
  virtual void SyncFolder(const std::string& folder) = 0;
  // Opens a file, which is made when missing and wanted, and holds it. Nothing when somebody else holds it,
  // or when it does not exist and is not to be made.
  [[nodiscard]] virtual std::unique_ptr<HeldFile> Hold(const std::string& path, bool make) = 0;

  // The native form of a path, for arguments and messages to other programs.
  [[nodiscard]] virtual std::string NativePath(const std::string& path) const = 0;
};

}  // namespace tessel
