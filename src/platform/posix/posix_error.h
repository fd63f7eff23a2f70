// What the POSIX adapters share: the classic number of an errno, and a file descriptor that closes itself.
#pragma once

#include <string>
#include <utility>

namespace tessel::posix {

// Throws a RuntimeError: `step` and `path` as in "Cannot copy "/a/b": No such file or directory". A missing
// entry gives 53, or 76 when `folderWanted`.
[[noreturn]] void ThrowErrno(int error, const std::string& step, const std::string& path,
                             bool folderWanted = false);

class FileDescriptor {
 public:
  explicit FileDescriptor(int fd = -1) : fd_(fd) {}
  ~FileDescriptor() { Close(); }
  FileDescriptor(FileDescriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
  }
  [[nodiscard]] int Get() const { return fd_; }
  [[nodiscard]] bool IsOpen() const { return fd_ >= 0; }
  // Gives the descriptor away.
  [[nodiscard]] int Release() { return std::exchange(fd_, -1); }
  // Errno of the close, which reports late write errors; 0 when all went well.
  int Close();

 private:
  int fd_;
};

}  // namespace tessel::posix
