#include "platform/win32/win32_services.h"

#include <algorithm>

#include "platform/win32/wide_text.h"
#include "platform/win32/win32_error.h"
#include "platform/win32/windows_api.h"

namespace tessel::windows {
namespace {

bool HasNulOrLineBreak(const std::string& text) {
  return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string::npos;
}

// A profile file by its full path: a bare name would be looked for in the Windows folder.
std::wstring ProfilePath(const NativePaths& paths, const std::string& file) {
  const std::wstring native = paths.Wide(file);
  wchar_t full[32768];
  const DWORD size = ::GetFullPathNameW(native.c_str(), 32768, full, nullptr);
  return size == 0 || size >= 32768 ? native : std::wstring(full, size);
}

}  // namespace

LocalTime SystemClock::Now() const {
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

void RealPauser::Sleep(std::chrono::milliseconds time) {
  if (time.count() > 0) ::Sleep(static_cast<DWORD>(std::min<long long>(time.count(), INFINITE - 1)));
}

std::wstring QuotedArgument(const std::wstring& argument) {
  if (!argument.empty() && argument.find_first_of(L" \t\n\v\"") == std::wstring::npos) return argument;
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t c : argument) {
    // Backslashes count twice in front of a quotation mark, and only there.
    if (c == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    quoted += c;
  }
  return quoted.append(backslashes, L'\\') + L"\"";
}

std::int32_t Win32ProcessLauncher::Start(const std::string& program,
                                         const std::vector<std::string>& arguments) {
  if (program.empty() || program.find('\0') != std::string::npos) return 0;
  const std::wstring native = paths_.Wide(program);
  std::wstring line = L"\"" + native + L"\"";
  for (const std::string& argument : arguments)
    line += L" " + QuotedArgument(ToWide(argument));

  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_SHOWMINNOACTIVE;
  PROCESS_INFORMATION process{};
  // A bare name is searched for in PATH; a path is taken as it is.
  const bool isPath = native.find_first_of(L"\\:") != std::wstring::npos;
  if (::CreateProcessW(isPath ? native.c_str() : nullptr, line.data(), nullptr, nullptr, FALSE,
                       CREATE_UNICODE_ENVIRONMENT, nullptr, nullptr, &startup, &process) == 0)
    return 0;
  const Handle thread(process.hThread);
  const Handle started(process.hProcess);
  return static_cast<std::int32_t>(process.dwProcessId);
}

std::string Win32ProfileStrings::Get(const std::string& file, const std::string& section,
                                     const std::string& key, const std::string& defaultText,
                                     std::size_t size) const {
  std::wstring buffer(std::max<std::size_t>(size, 1), L'\0');
  const DWORD length = ::GetPrivateProfileStringW(
      ToWide(section).c_str(), ToWide(key).c_str(), ToWide(defaultText).c_str(), buffer.data(),
      static_cast<DWORD>(buffer.size()), ProfilePath(paths_, file).c_str());
  return ToUtf8({buffer.data(), length});
}

std::int32_t Win32ProfileStrings::Write(const std::string& file, const std::string& section,
                                        const std::string& key, const std::string& value) {
  if (HasNulOrLineBreak(section + key + value)) return 0;
  return ::WritePrivateProfileStringW(ToWide(section).c_str(), ToWide(key).c_str(), ToWide(value).c_str(),
                                      ProfilePath(paths_, file).c_str());
}

std::string Win32SystemInformation::LanguageName() const {
  wchar_t name[256];
  const DWORD size = ::VerLanguageNameW(::GetSystemDefaultLangID(), name, 256);
  return ToUtf8({name, std::min<DWORD>(size, 255)});
}

std::string Win32SystemInformation::DisplayedIconFile(const std::string& path) const {
  const auto dot = path.find_last_of("./\\:");
  if (dot == std::string::npos || path[dot] != '.' || dot + 1 == path.size()) return {};
  // The kind of file decides, so that the file need not exist.
  wchar_t location[1024];
  DWORD size = 1024;
  if (FAILED(::AssocQueryStringW(0, ASSOCSTR_DEFAULTICON, ToWide(path.substr(dot)).c_str(), nullptr, location,
                                 &size)))
    return {};
  ::PathParseIconLocationW(location);
  ::PathUnquoteSpacesW(location);
  return location[0] == L'%' ? std::string() : ToUtf8(location);
}

}  // namespace tessel::windows
