#include "platform/win32/staged_file.h"

#include <algorithm>
#include <atomic>

namespace tessel::windows {
namespace {

constexpr DWORD kKeptAttributes =
    FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
constexpr int kAttempts = 100;
constexpr std::size_t kLongestName = 255;

std::wstring TemporaryName(const std::wstring& target) {
  static std::atomic<unsigned> number{0};
  const auto separator = target.find_last_of(L'\\');
  const std::wstring folder = separator == std::wstring::npos ? L"" : target.substr(0, separator + 1);
  return folder + L".tessel-" + std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(++number) +
         L".tmp";
}

}  // namespace

void WriteAll(HANDLE file, std::string_view bytes, const char* step, const std::string& path) {
  constexpr std::size_t kPiece = 1 << 20;
  while (!bytes.empty()) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(std::min(bytes.size(), kPiece));
    if (::WriteFile(file, bytes.data(), size, &written, nullptr) == 0)
      ThrowWin32(::GetLastError(), step, path);
    bytes.remove_prefix(written);
  }
}

StagedFile::StagedFile(std::wstring target, std::string path)
    : target_(std::move(target)), path_(std::move(path)) {
  if (target_.size() - (target_.find_last_of(L'\\') + 1) > kLongestName)
    ThrowWin32(ERROR_FILENAME_EXCED_RANGE, "write", path_);
  DWORD error = ERROR_FILE_EXISTS;
  for (int attempt = 0; attempt < kAttempts && error == ERROR_FILE_EXISTS; ++attempt) {
    temporary_ = TemporaryName(target_);
    file_ = Handle(::CreateFileW(temporary_.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_READ,
                                 nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file_.IsOpen()) return;
    error = ::GetLastError();
  }
  ThrowWin32(error == ERROR_FILE_NOT_FOUND ? ERROR_PATH_NOT_FOUND : error, "write", path_);
}

StagedFile::~StagedFile() {
  file_.Close();
  if (!committed_ && !temporary_.empty()) ::DeleteFileW(temporary_.c_str());
}

void StagedFile::Write(std::string_view bytes) {
  WriteAll(file_.Get(), bytes, "write", path_);
}

void StagedFile::Flush() {
  if (::FlushFileBuffers(file_.Get()) == 0) ThrowWin32(::GetLastError(), "write", path_);
}

void StagedFile::TakeAttributes(const BY_HANDLE_FILE_INFORMATION& information) {
  attributes_ = information.dwFileAttributes & kKeptAttributes;
  if (::SetFileTime(file_.Get(), nullptr, nullptr, &information.ftLastWriteTime) == 0)
    ThrowWin32(::GetLastError(), "set the attributes of", path_);
}

void StagedFile::Commit(bool replace) {
  file_.Close();
  // A read-only file would refuse to be renamed over; its content goes anyhow.
  const DWORD existing = replace ? ::GetFileAttributesW(target_.c_str()) : INVALID_FILE_ATTRIBUTES;
  if (existing != INVALID_FILE_ATTRIBUTES && (existing & FILE_ATTRIBUTE_READONLY) != 0)
    ::SetFileAttributesW(target_.c_str(), existing & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
  const DWORD flags = MOVEFILE_WRITE_THROUGH | (replace ? MOVEFILE_REPLACE_EXISTING : 0);
  if (::MoveFileExW(temporary_.c_str(), target_.c_str(), flags) == 0)
    ThrowWin32(::GetLastError(), "write", path_);
  committed_ = true;
  if (attributes_ != 0 && ::SetFileAttributesW(target_.c_str(), attributes_) == 0)
    ThrowWin32(::GetLastError(), "set the attributes of", path_);
}

}  // namespace tessel::windows
