// What the POSIX adapters share: the classic number of an errno, calls that a signal interrupts, and a file
// descriptor that closes itself.
#pragma once

#include <cerrno>
#include <string>
#include <utility>

namespace tessel::posix {

// Throws a RuntimeError: `step` and `path` as in "Cannot copy "/a/b": No such file or directory". A missing
// entry gives 53, or 76 when `folderWanted`.
[[noreturn]] void ThrowErrno(int error, const std::string& step, const std::string& path,
                             bool folderWanted = false);

// An error of a step on a file, whose name may lead through folders: a missing file is 53, a missing folder
// above it 76. `folder` is an open folder or AT_FDCWD.
[[noreturn]] void ThrowFileErrno(int error, const std::string& step, const std::string& path, int folder,
                                 const std::string& name);

// Whether an errno says that there is no such entry; any other says that one cannot tell.
[[nodiscard]] inline bool SaysMissing(int error) {
  return error == ENOENT || error == ENOTDIR;
}

// Runs a system call again as long as a signal interrupts it.
template <class Call>
auto Retried(Call&& call) {
  for (;;) {
    const auto result = call();
    if (result != -1 || errno != EINTR) return result;
  }
}

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
