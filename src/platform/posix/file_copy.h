// Copies of files and folder trees, as cheap as the kernel can do them: a reflink where the file system has
// it, else a copy inside the kernel, else through a buffer. Small files go through the buffer at once, which
// is the fastest way for them. A large file is copied piece by piece, each far less than 100 ms of work.
#pragma once

#include <memory>
#include <string>

#include "platform/file_system.h"
#include "platform/posix/staged_file.h"

namespace tessel::posix {

class FileCopier {
 public:
  // `progress` may be nothing. A tree is copied whole, whatever it says.
  explicit FileCopier(FileSystem::CopyProgress progress = nullptr) : progress_(std::move(progress)) {}

  // Copies a file's content, permission bits and modification time. Folders are open descriptors or AT_FDCWD;
  // `path` and `targetPath` are what errors show. A link in place of the source is followed. False when
  // `progress` ended the copy, which then leaves nothing.
  [[nodiscard]] bool CopyFile(int fromFolder, const std::string& fromName, const std::string& path,
                              int toFolder, const std::string& toName, const std::string& targetPath,
                              bool replace, Staging staging = Staging::kAside);

  // Copies everything below an open folder into another, files in place. Links are copied as links. Error 75
  // for entries that are neither file, folder nor link.
  void CopyTree(int from, const std::string& path, int to, const std::string& targetPath);

 private:
  // One copy on its way.
  struct Job {
    int from;
    int to;
    std::uint64_t size;
    const std::string& path;
    const std::string& targetPath;
    std::uint64_t done = 0;
  };

  [[nodiscard]] bool CopyContent(Job& job);
  [[nodiscard]] bool CopyPieces(Job& job);
  [[nodiscard]] std::uint64_t CopyInKernel(Job& job, std::uint64_t size);
  [[nodiscard]] std::uint64_t CopyThroughBuffer(Job& job, std::uint64_t size);

  FileSystem::CopyProgress progress_;
  std::unique_ptr<char[]> buffer_;
  std::size_t bufferSize_ = 0;
  // Cleared at the first refusal: within one copy the file systems stay the same as a rule.
  bool canReflink_ = true;
  bool canCopyInKernel_ = true;
};

}  // namespace tessel::posix
