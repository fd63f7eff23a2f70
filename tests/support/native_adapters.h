// The adapters of the machine that the tests are built for, for tests that make or derive from one.
#pragma once

#include <cstdlib>

#include "platform/native/native_platform.h"
#ifdef _WIN32
#include "platform/win32/code_pages.h"
#include "platform/win32/win32_file_system.h"
#include "platform/win32/win32_services.h"
#else
#include "platform/posix/iconv_encodings.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/posix_services.h"
#endif

namespace tessel::test {

#ifdef _WIN32
using NativeFileSystem = windows::Win32FileSystem;
using NativeEncodings = windows::CodePages;
using NativeLauncher = windows::Win32ProcessLauncher;
using windows::NativePaths;
inline void SetVariable(const char* name, const std::string& value) {
  _putenv_s(name, value.c_str());
}
#else
using NativeFileSystem = posix::PosixFileSystem;
using NativeEncodings = posix::IconvEncodings;
using NativeLauncher = posix::PosixProcessLauncher;
using posix::NativePaths;
inline void SetVariable(const char* name, const std::string& value) {
  setenv(name, value.c_str(), 1);
}
#endif

}  // namespace tessel::test
