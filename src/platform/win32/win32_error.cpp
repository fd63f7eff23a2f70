#include "platform/win32/win32_error.h"

#include "host/error.h"
#include "platform/win32/wide_text.h"

namespace tessel::windows {
namespace {

int ClassicNumber(DWORD error, bool folderWanted) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
      return folderWanted ? error_number::kPathNotFound : error_number::kFileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_DIRECTORY:
      return error_number::kPathNotFound;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return error_number::kFileAlreadyExists;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return error_number::kDiskFull;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
      return error_number::kPermissionDenied;
    case ERROR_IO_DEVICE:
    case ERROR_CRC:
    case ERROR_WRITE_FAULT:
    case ERROR_READ_FAULT:
    case ERROR_NOT_READY:
      return error_number::kDeviceIo;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
      return error_number::kOutOfMemory;
    default:
      return error_number::kPathFileAccess;
  }
}

}  // namespace

std::string ErrorText(DWORD error) {
  wchar_t buffer[512];
  const DWORD size = ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                      error, 0, buffer, 512, nullptr);
  std::wstring text(buffer, size);
  while (!text.empty() && (text.back() <= L' ' || text.back() == L'.'))
    text.pop_back();
  return text.empty() ? "error " + std::to_string(error) : ToUtf8(text);
}

void ThrowWin32(DWORD error, const std::string& step, const std::string& path, bool folderWanted) {
  throw RuntimeError(ClassicNumber(error, folderWanted),
                     "Cannot " + step + " \"" + path + "\": " + ErrorText(error));
}

}  // namespace tessel::windows
