// A file system that fails at its n-th call, or from that call on, as if the disk were full.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/error.h"
#include "platform/file_system.h"

namespace tessel::test {

enum class Failing { kOnce, kFromThenOn };

class FailingFiles : public FileSystem {
 public:
  FailingFiles(FileSystem& files, int at, Failing how) : files_(files), at_(at), how_(how) {}
  // The n-th call from now on fails.
  void FailAt(int at, Failing how) {
    at_ = at;
    how_ = how;
    calls_ = 0;
  }
  // Whether the n-th call came.
  [[nodiscard]] bool Reached() const { return calls_ >= at_; }

  [[nodiscard]] bool FileExists(const std::string& path) const override { return In(path).FileExists(path); }
  [[nodiscard]] bool FolderExists(const std::string& path) const override {
    return In(path).FolderExists(path);
  }
  void CreateFolder(const std::string& path) override { In(path).CreateFolder(path); }
  void CreateFolders(const std::string& path) override { In(path).CreateFolders(path); }
  void DeleteFolder(const std::string& path) override { In(path).DeleteFolder(path); }
  void Move(const std::string& from, const std::string& to) override { In(from).Move(from, to); }
  void DeleteFile(const std::string& path) override { In(path).DeleteFile(path); }
  using FileSystem::CopyFile;
  using FileSystem::CopyFolderContents;
  [[nodiscard]] bool CopyFile(const std::string& from, const std::string& to, bool overwrite,
                              const CopyProgress& progress) override {
    return In(from).CopyFile(from, to, overwrite, progress);
  }
  void CopyFolderContents(const std::string& from, const std::string& to,
                          const std::function<void()>& between) override {
    In(from).CopyFolderContents(from, to, between);
  }
  [[nodiscard]] std::vector<std::string> ListFiles(const std::string& folder) const override {
    return In(folder).ListFiles(folder);
  }
  [[nodiscard]] std::vector<std::string> ListFolders(const std::string& folder) const override {
    return In(folder).ListFolders(folder);
  }
  [[nodiscard]] bool IsReadOnly(const std::string& path) const override { return In(path).IsReadOnly(path); }
  void SetReadOnly(const std::string& path, bool readOnly) override { In(path).SetReadOnly(path, readOnly); }
  [[nodiscard]] std::string ReadBytes(const std::string& path) const override {
    return In(path).ReadBytes(path);
  }
  void ReadLines(const std::string& path,
                 const std::function<bool(std::string_view line)>& line) const override {
    In(path).ReadLines(path, line);
  }
  void WriteBytes(const std::string& path, std::string_view bytes) override {
    In(path).WriteBytes(path, bytes);
  }
  void WriteStream(const std::string& path,
                   const std::function<void(const ByteSink& sink)>& produce) override {
    In(path).WriteStream(path, produce);
  }
  void AppendBytes(const std::string& path, std::string_view bytes) override {
    In(path).AppendBytes(path, bytes);
  }
  void MakeDurable(const std::string& folder) override { In(folder).MakeDurable(folder); }
  void SyncFolder(const std::string& folder) override { In(folder).SyncFolder(folder); }
  [[nodiscard]] std::unique_ptr<HeldFile> Hold(const std::string& path, bool make) override {
    return In(path).Hold(path, make);
  }
  [[nodiscard]] std::string NativePath(const std::string& path) const override {
    return files_.NativePath(path);
  }

 private:
  // The file system behind, unless this call is to fail.
  [[nodiscard]] FileSystem& In(const std::string& path) const {
    ++calls_;
    if (calls_ == at_ || (calls_ > at_ && how_ == Failing::kFromThenOn))
      throw RuntimeError(error_number::kDiskFull, "planned failure on " + path);
    return files_;
  }

  FileSystem& files_;
  int at_;
  Failing how_;
  mutable int calls_ = 0;
};

}  // namespace tessel::test
