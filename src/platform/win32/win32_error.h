// Failures of the Windows API as the errors of the ports, and handles that close themselves.
#pragma once

#include <string>
#include <utility>

#include "platform/win32/windows_api.h"

namespace tessel::windows {

// Throws the RuntimeError of a step that failed with a system error code: "Cannot <step> "<path>": <reason>".
// A missing file is 53, or 76 when a folder was wanted.
[[noreturn]] void ThrowWin32(DWORD error, const std::string& step, const std::string& path,
                             bool folderWanted = false);

// The system's text for an error code, without its line end.
[[nodiscard]] std::string ErrorText(DWORD error);

class Handle {
 public:
  explicit Handle(HANDLE handle = INVALID_HANDLE_VALUE) : handle_(handle) {}
  ~Handle() { Close(); }
  Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  [[nodiscard]] bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE && handle_ != nullptr; }
  [[nodiscard]] HANDLE Get() const { return handle_; }
  void Close() {
    if (IsOpen()) ::CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE));
  }

 private:
  HANDLE handle_;
};

}  // namespace tessel::windows
