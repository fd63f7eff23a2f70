#include "platform/win32/win32_held_file.h"

#include "platform/win32/staged_file.h"

namespace tessel::windows {
namespace {

class Win32HeldFile : public HeldFile {
 public:
  Win32HeldFile(Handle file, std::wstring native, std::string path)
      : file_(std::move(file)), native_(std::move(native)), path_(std::move(path)) {}

  [[nodiscard]] std::string Read() const override {
    LARGE_INTEGER start{};
    if (::SetFilePointerEx(file_.Get(), start, nullptr, FILE_BEGIN) == 0)
      ThrowWin32(::GetLastError(), "read", path_);
    std::string bytes;
    char buffer[4096];
    DWORD count = 0;
    do {
      if (::ReadFile(file_.Get(), buffer, sizeof buffer, &count, nullptr) == 0)
        ThrowWin32(::GetLastError(), "read", path_);
      bytes.append(buffer, count);
    } while (count != 0);
    return bytes;
  }
  void Append(std::string_view bytes) override {
    LARGE_INTEGER start{};
    if (::SetFilePointerEx(file_.Get(), start, nullptr, FILE_END) == 0)
      ThrowWin32(::GetLastError(), "append to", path_);
    WriteAll(file_.Get(), bytes, "append to", path_);
    // Whoever makes the folder durable cannot open a held file.
    if (::FlushFileBuffers(file_.Get()) == 0) ThrowWin32(::GetLastError(), "append to", path_);
  }
  void Delete() override {
    if (!file_.IsOpen()) return;
    FILE_DISPOSITION_INFO deleted{TRUE};
    if (::SetFileInformationByHandle(file_.Get(), FileDispositionInfo, &deleted, sizeof deleted) == 0)
      ThrowWin32(::GetLastError(), "delete", path_);
    file_.Close();
  }

 private:
  Handle file_;
  std::wstring native_;
  std::string path_;
};

}  // namespace

std::unique_ptr<HeldFile> HoldFile(const std::wstring& native, const std::string& path, bool make) {
  Handle file(::CreateFileW(native.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_READ, nullptr,
                            make ? OPEN_ALWAYS : OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (file.IsOpen()) return std::make_unique<Win32HeldFile>(std::move(file), native, path);
  const DWORD error = ::GetLastError();
  if (error == ERROR_SHARING_VIOLATION) return nullptr;
  if (!make && (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND)) return nullptr;
  ThrowWin32(error, "hold", path);
}

}  // namespace tessel::windows
