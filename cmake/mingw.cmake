# Cross-building for Windows with Debian's mingw-w64. scripts/windows/build sets the two values:
# TESSEL_WINDOWS_TARGET, x86_64 or i686, and TESSEL_WINDOWS_DEPS, where that target's libraries are installed.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TESSEL_WINDOWS_TARGET TESSEL_WINDOWS_DEPS)

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${TESSEL_WINDOWS_TARGET})
# The compilers with std::thread; the others of Debian lack it.
set(CMAKE_C_COMPILER ${TESSEL_WINDOWS_TARGET}-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER ${TESSEL_WINDOWS_TARGET}-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER ${TESSEL_WINDOWS_TARGET}-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH ${TESSEL_WINDOWS_DEPS} /usr/${TESSEL_WINDOWS_TARGET}-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_C_FLAGS_INIT "-isystem ${TESSEL_WINDOWS_DEPS}/include")
set(CMAKE_CXX_FLAGS_INIT "-isystem ${TESSEL_WINDOWS_DEPS}/include")
# Static: nothing of the compiler's runtime has to be shipped.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -L${TESSEL_WINDOWS_DEPS}/lib")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -L${TESSEL_WINDOWS_DEPS}/lib")

find_program(TESSEL_WINE NAMES wine)
if(TESSEL_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${TESSEL_WINE})
endif()
