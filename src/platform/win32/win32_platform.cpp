#include "platform/win32/win32_platform.h"

#include <conio.h>
#include <io.h>

#include <algorithm>

#include "host/error.h"
#include "platform/no_pauser.h"
#include "platform/win32/code_pages.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_error.h"
#include "platform/win32/win32_file_system.h"
#include "platform/win32/win32_services.h"
#include "platform/win32/windows_api.h"

namespace tessel {

std::string DefaultDrivesDirectory() {
  wchar_t value[32768];
  const DWORD size = ::GetEnvironmentVariableW(L"TESSEL_DRIVES", value, 32768);
  return windows::ToUtf8({value, size < 32768 ? size : 0});
}

// The arguments of main are in the ANSI code page, which lacks most characters.
std::vector<std::string> ProgramArguments(int, char**) {
  int count = 0;
  wchar_t** const wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i)
    arguments.push_back(windows::ToUtf8(wide[i]));
  ::LocalFree(wide);
  return arguments;
}

bool StandardErrorIsTerminal() {
  return ::_isatty(2) != 0;
}

// Handles are never given twice here, and a closed pipe fails the write as it is.
void KeepStandardStreams() {}

void LetSignalsEndWaits() {}

std::optional<std::string> AskUnseen(const std::string& question) {
  if (::_isatty(0) == 0) return std::nullopt;
  constexpr wchar_t kEndOfInput = 26;
  constexpr wchar_t kBackspace = 8;
  std::wstring typed;
  ::_cputs(question.c_str());
  for (wint_t key = ::_getwch(); key != L'\r' && key != L'\n'; key = ::_getwch()) {
    if (key == kEndOfInput) return std::nullopt;
    if (key != kBackspace) {
      typed.push_back(static_cast<wchar_t>(key));
    } else if (!typed.empty()) {
      typed.pop_back();
    }
  }
  ::_cputs("\r\n");
  return windows::ToUtf8(typed);
}

ProgramLocation RunningProgram() {
  HMODULE module = nullptr;
  const auto* here = reinterpret_cast<const wchar_t*>(&RunningProgram);
  std::wstring path(32768, L'\0');
  DWORD size = 0;
  if (::GetModuleHandleExW(
          GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, here,
          &module) != 0)
    size = ::GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
  if (size == 0) {
    throw RuntimeError(error_number::kPathNotFound,
                       "Cannot find the program's own file: " + windows::ErrorText(::GetLastError()));
  }
  path.resize(size);
  const auto separator = path.find_last_of(L'\\');
  std::wstring name = path.substr(separator + 1);
  if (const auto dot = name.find_last_of(L'.'); dot != std::wstring::npos) name.resize(dot);
  return {windows::ToUtf8(path.substr(0, separator)), windows::ToUtf8(name)};
}

namespace {

// Where drives are mapped, the program's folder is named without its drive: with it, it would lead elsewhere.
ProgramLocation LocationUnder(const windows::NativePaths& paths) {
  ProgramLocation location = RunningProgram();
  constexpr std::size_t kDrive = 2;
  const std::string& directory = location.directory;
  if (directory.size() > kDrive && directory[1] == ':' && !paths.DriveRoot(directory).empty()) {
    location.directory = directory.substr(kDrive);
    std::replace(location.directory.begin(), location.directory.end(), '\\', '/');
  }
  return location;
}

}  // namespace

struct Win32Platform::Parts {
  explicit Parts(const Win32PlatformOptions& options)
      : paths(options.drivesDirectory ? *options.drivesDirectory : DefaultDrivesDirectory()),
        files(options.drivesDirectory ? *options.drivesDirectory : DefaultDrivesDirectory()),
        pauser(options.pauses ? std::unique_ptr<Pauser>(std::make_unique<windows::RealPauser>())
                              : std::make_unique<NoPauser>()),
        processes(paths),
        profiles(paths),
        system(paths),
        services{files,
                 encodings,
                 clock,
                 *pauser,
                 processes,
                 profiles,
                 system,
                 options.program ? *options.program : LocationUnder(paths),
                 options.ansiCodePage} {
    (void)encodings.Open(options.ansiCodePage);
  }

  windows::NativePaths paths;
  windows::Win32FileSystem files;
  windows::CodePages encodings;
  windows::SystemClock clock;
  std::unique_ptr<Pauser> pauser;
  windows::Win32ProcessLauncher processes;
  windows::Win32ProfileStrings profiles;
  windows::Win32SystemInformation system;
  Platform services;
};

Win32Platform::Win32Platform(const Win32PlatformOptions& options)
    : parts_(std::make_unique<Parts>(options)) {}
Win32Platform::~Win32Platform() = default;

Platform& Win32Platform::Services() {
  return parts_->services;
}

}  // namespace tessel
