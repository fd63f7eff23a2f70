// The file system on POSIX.
#pragma once

#include <sys/types.h>

#include "platform/file_system.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/staged_file.h"

namespace tessel::posix {

class PosixFileSystem : public FileSystem {
 public:
  // The drives directory is a native path; it and the drives in it come into being with the first write.
  explicit PosixFileSystem(std::string drivesDirectory) : paths_(std::move(drivesDirectory)) {}

  [[nodiscard]] bool FileExists(const std::string& path) const override;
  [[nodiscard]] bool FolderExists(const std::string& path) const override;
  void CreateFolder(const std::string& path) override;
  void CreateFolders(const std::string& path) override;
  void DeleteFolder(const std::string& path) override;
  void Move(const std::string& from, const std::string& to) override;
  void DeleteFile(const std::string& path) override;
  using FileSystem::CopyFile;
  using FileSystem::CopyFolderContents;
  [[nodiscard]] bool CopyFile(const std::string& from, const std::string& to, bool overwrite,
                              const CopyProgress& progress) override;
  // Error 75 when the target lies in the source.
  void CopyFolderContents(const std::string& from, const std::string& to,
                          const std::function<void()>& between) override;
  [[nodiscard]] std::vector<std::string> ListFiles(const std::string& folder) const override;
  [[nodiscard]] std::vector<std::string> ListFolders(const std::string& folder) const override;
  [[nodiscard]] bool IsReadOnly(const std::string& path) const override;
  void SetReadOnly(const std::string& path, bool readOnly) override;
  [[nodiscard]] std::string ReadBytes(const std::string& path) const override;
  void ReadLines(const std::string& path,
                 const std::function<bool(std::string_view line)>& line) const override;
  void WriteBytes(const std::string& path, std::string_view bytes) override;
  void WriteStream(const std::string& path,
                   const std::function<void(const ByteSink& sink)>& produce) override;
  void AppendBytes(const std::string& path, std::string_view bytes) override;
  // One syncfs for the file system that the folder lies on.
  void MakeDurable(const std::string& folder) override;
  void SyncFolder(const std::string& folder) override;
  [[nodiscard]] std::unique_ptr<HeldFile> Hold(const std::string& path, bool make) override;
  [[nodiscard]] std::string NativePath(const std::string& path) const override;

 private:
  // Native path without separators at its end.
  [[nodiscard]] std::string Native(const std::string& path) const;
  // Runs a step that makes something at a path. When its folder is missing (error 76) because nothing was
  // ever written on its drive, the drive is made and the step run again.
  template <class Step>
  auto OnDrive(const std::string& path, Step&& step);
  // False when the path lies on no drive, or on one that is there.
  [[nodiscard]] bool MakeDrive(const std::string& path) const;
  [[nodiscard]] std::vector<std::string> List(const std::string& folder, bool folders) const;

  NativePaths paths_;
};

}  // namespace tessel::posix
