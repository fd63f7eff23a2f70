#include "platform/posix/posix_held_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "platform/posix/posix_error.h"

namespace tessel::posix {
namespace {

constexpr mode_t kNewFile = 0666;

class PosixHeldFile : public HeldFile {
 public:
  PosixHeldFile(FileDescriptor file, std::string native, std::string path)
      : file_(std::move(file)), native_(std::move(native)), path_(std::move(path)) {}

  [[nodiscard]] std::string Read() const override {
    std::string bytes;
    char buffer[4096];
    for (;;) {
      const ssize_t count = Retried(
          [&] { return ::pread(file_.Get(), buffer, sizeof buffer, static_cast<off_t>(bytes.size())); });
      if (count < 0) ThrowErrno(errno, "read", path_);
      if (count == 0) return bytes;
      bytes.append(buffer, static_cast<std::size_t>(count));
    }
  }
  void Append(std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t written = Retried([&] { return ::write(file_.Get(), bytes.data(), bytes.size()); });
      if (written < 0) ThrowErrno(errno, "append to", path_);
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  void Delete() override {
    if (!file_.IsOpen()) return;
    if (::unlink(native_.c_str()) != 0 && errno != ENOENT) ThrowErrno(errno, "delete", path_);
    static_cast<void>(file_.Close());
  }

 private:
  FileDescriptor file_;
  std::string native_;
  std::string path_;
};

}  // namespace

std::unique_ptr<HeldFile> HoldFile(const std::string& native, const std::string& path, bool make) {
  const int flags = O_RDWR | O_APPEND | O_CLOEXEC | O_NOFOLLOW | (make ? O_CREAT : 0);
  for (;;) {
    FileDescriptor file(Retried([&] { return ::open(native.c_str(), flags, kNewFile); }));
    if (!file.IsOpen()) {
      if (errno == ENOENT && !make) return nullptr;
      ThrowErrno(errno, "open", path, make);
    }
    if (Retried([&file] { return ::flock(file.Get(), LOCK_EX | LOCK_NB); }) != 0) {
      if (errno == EWOULDBLOCK) return nullptr;
      ThrowErrno(errno, "lock", path);
    }
    // Its holder may have deleted it between the opening and the lock.
    struct stat held {};
    struct stat named {};
    if (Retried([&] { return ::fstat(file.Get(), &held); }) != 0) ThrowErrno(errno, "open", path);
    const bool there = Retried([&] { return ::stat(native.c_str(), &named); }) == 0;
    if (!there && errno != ENOENT) ThrowErrno(errno, "open", path);
    if (there && held.st_dev == named.st_dev && held.st_ino == named.st_ino)
      return std::make_unique<PosixHeldFile>(std::move(file), native, path);
    if (!make) return nullptr;
  }
}

}  // namespace tessel::posix
