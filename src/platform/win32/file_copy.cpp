#include "platform/win32/file_copy.h"

#include <memory>

#include "platform/win32/staged_file.h"

namespace tessel::windows {
namespace {

constexpr DWORD kPiece = 1 << 20;

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

// False when the progress ended it.
bool CopyContent(HANDLE from, const std::string& path, StagedFile& target, std::uint64_t size,
                 const CopyProgress& progress) {
  const auto buffer = std::make_unique<char[]>(kPiece);
  std::uint64_t done = 0;
  for (;;) {
    DWORD count = 0;
    if (::ReadFile(from, buffer.get(), kPiece, &count, nullptr) == 0)
      ThrowWin32(::GetLastError(), "copy", path);
    if (count == 0) return true;
    target.Write({buffer.get(), count});
    done += count;
    if (progress && !progress(done, size)) return false;
  }
}

}  // namespace

bool CopyOneFile(const std::wstring& from, const std::string& path, const std::wstring& to,
                 const std::string& targetPath, bool replace, const CopyProgress& progress) {
  const Handle source(::CreateFileW(from.c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  if (!source.IsOpen()) ThrowWin32(::GetLastError(), "copy", path);
  const BY_HANDLE_FILE_INFORMATION before = InformationOf(source.Get(), path);
  if (!replace && ::GetFileAttributesW(to.c_str()) != INVALID_FILE_ATTRIBUTES)
    ThrowWin32(ERROR_FILE_EXISTS, "copy to", targetPath);
  StagedFile target(to, targetPath);
  if (!CopyContent(source.Get(), path, target, SizeOf(before), progress)) return false;
  if (!SameVersion(before, InformationOf(source.Get(), path))) ThrowWin32(ERROR_FILE_INVALID, "copy", path);
  target.TakeAttributes(before);
  target.Commit(replace);
  return true;
}

}  // namespace tessel::windows
