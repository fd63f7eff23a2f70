// The platform of the machine that the program is built for. What does not care which includes this.
#pragma once

#ifdef _WIN32
#include "platform/win32/win32_platform.h"
#else
#include "platform/posix/posix_platform.h"
#endif

namespace tessel {

#ifdef _WIN32
using NativePlatform = Win32Platform;
using NativePlatformOptions = Win32PlatformOptions;
#else
using NativePlatform = PosixPlatform;
using NativePlatformOptions = PosixPlatformOptions;
#endif

}  // namespace tessel
