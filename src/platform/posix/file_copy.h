// Copies of files and folder trees, as cheap as the kernel can do them: a reflink where the file system has
// it, else a copy inside the kernel, else through a buffer. Small files go through the buffer at once, which
// is the fastest way for them.
#pragma once

#include <memory>
#include <string>

#include "platform/posix/staged_file.h"

namespace tessel::posix {

class FileCopier {
 public:
  // Copies a file's content, permission bits and modification time. Folders are open descriptors or AT_FDCWD;
  // `path` and `targetPath` are what errors show. A link in place of the source is followed.
  void CopyFile(int fromFolder, const char* fromName, const std::string& path, int toFolder,
                const std::string& toName, const std::string& targetPath, bool replace,
                Staging staging = Staging::kAside);

  // Copies everything below an open folder into another, files in place. Links are copied as links. Error 75
  // for entries that are neither file, folder nor link.
  void CopyTree(int from, const std::string& path, int to, const std::string& targetPath);

 private:
  void CopyContent(int from, int to, long long size, const std::string& targetPath);
  void CopyThroughBuffer(int from, int to, std::size_t bufferSize, const std::string& targetPath);

  std::unique_ptr<char[]> buffer_;
  std::size_t bufferSize_ = 0;
  // Cleared at the first refusal: within one copy the file systems stay the same as a rule.
  bool canReflink_ = true;
  bool canCopyInKernel_ = true;
};

}  // namespace tessel::posix
