// The file system on Windows.
#pragma once

#include "platform/file_system.h"
#include "platform/win32/native_paths.h"

namespace tessel::windows {

class Win32FileSystem : public FileSystem {
 public:
  explicit Win32FileSystem(std::string drivesDirectory) : paths_(std::move(drivesDirectory)) {}

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
  void MakeDurable(const std::string& folder) override;
  void SyncFolder(const std::string& folder) override;
  [[nodiscard]] std::unique_ptr<HeldFile> Hold(const std::string& path, bool make) override;
  [[nodiscard]] std::string NativePath(const std::string& path) const override { return paths_.Native(path); }

 private:
  // For a path that is about to come into being: its mapped drive is made when missing.
  [[nodiscard]] std::wstring WideForWriting(const std::string& path);

  NativePaths paths_;
};

}  // namespace tessel::windows
