#include "platform/win32/file_copy.h"

#include <algorithm>
#include <chrono>
#include <memory>

#include "platform/win32/staged_file.h"

namespace tessel::windows {
namespace {

constexpr DWORD kBuffer = 1 << 20;
// Pieces between two calls of the progress: time for one, and bounds of its size.
constexpr std::chrono::milliseconds kPieceTime{50};
constexpr std::uint64_t kFirstPiece = 4 << 20;
constexpr std::uint64_t kSmallestPiece = 128 * 1024;
constexpr std::uint64_t kLargestPiece = 256 << 20;

BY_HANDLE_FILE_INFORMATION InformationOf(HANDLE file, const std::string& path) {
  BY_HANDLE_FILE_INFORMATION information{};
  if (::GetFileInformationByHandle(file, &information) == 0) ThrowWin32(::GetLastError(), "copy", path);
  return information;
}

std::uint64_t SizeOf(const BY_HANDLE_FILE_INFORMATION& information) {
  return (static_cast<std::uint64_t>(information.nFileSizeHigh) << 32) | information.nFileSizeLow;
}

bool SameVersion(const BY_HANDLE_FILE_INFORMATION& left, const BY_HANDLE_FILE_INFORMATION& right) {
  return SizeOf(left) == SizeOf(right) &&
         ::CompareFileTime(&left.ftLastWriteTime, &right.ftLastWriteTime) == 0;
}

// One file on its way.
class Content {
 public:
  Content(HANDLE from, const std::string& path, StagedFile& target, std::uint64_t size)
      : from_(from), path_(path), target_(target), size_(size) {}

  // The size of a piece follows the speed of the disks. False when the progress ended it.
  [[nodiscard]] bool Copy(const CopyProgress& progress) {
    using Clock = std::chrono::steady_clock;
    std::uint64_t piece = kFirstPiece;
    for (bool more = true; more;) {
      const auto start = Clock::now();
      more = CopyUpTo(done_ + piece);
      if (progress && (more || done_ == 0 || done_ > told_) && !progress(told_ = done_, size_)) return false;
      const auto time = Clock::now() - start;
      if (time < kPieceTime / 2) piece = std::min(piece * 2, kLargestPiece);
      if (time > kPieceTime) piece = std::max(piece / 2, kSmallestPiece);
    }
    return true;
  }

 private:
  // False at the end of the file.
  bool CopyUpTo(std::uint64_t end) {
    while (done_ < end) {
      DWORD count = 0;
      const auto wanted = static_cast<DWORD>(std::min<std::uint64_t>(end - done_, kBuffer));
      if (::ReadFile(from_, buffer_.get(), wanted, &count, nullptr) == 0)
        ThrowWin32(::GetLastError(), "copy", path_);
      if (count == 0) return false;
      target_.Write({buffer_.get(), count});
      done_ += count;
    }
    return true;
  }

  HANDLE from_;
  const std::string& path_;
  StagedFile& target_;
  std::uint64_t size_;
  std::uint64_t done_ = 0;
  std::uint64_t told_ = 0;
  std::unique_ptr<char[]> buffer_ = std::make_unique_for_overwrite<char[]>(kBuffer);
};

}  // namespace

bool CopyOneFile(const std::wstring& from, const std::string& path, const std::wstring& to,
                 const std::string& targetPath, bool replace, const CopyProgress& progress) {
  Handle source(::CreateFileW(from.c_str(), GENERIC_READ,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                              FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  if (!source.IsOpen()) ThrowWin32(::GetLastError(), "copy", path);
  const BY_HANDLE_FILE_INFORMATION before = InformationOf(source.Get(), path);
  if (!replace && ::GetFileAttributesW(to.c_str()) != INVALID_FILE_ATTRIBUTES)
    ThrowWin32(ERROR_FILE_EXISTS, "copy to", targetPath);
  StagedFile target(to, targetPath);
  if (!Content(source.Get(), path, target, SizeOf(before)).Copy(progress)) return false;
  if (!SameVersion(before, InformationOf(source.Get(), path))) ThrowWin32(ERROR_FILE_INVALID, "copy", path);
  target.TakeAttributes(before);
  // A file that is copied onto itself could not be replaced while it is open.
  source.Close();
  target.Commit(replace);
  return true;
}

}  // namespace tessel::windows
