# Cross-builds for 32-bit Windows with mingw-w64. The variant without std::thread and std::mutex, which the program does
# not use, makes it smaller by 30 KB. Programs built here are packed, not run: Wine is installed for 64 bits only.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)

set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-win32)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-win32)
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)

# Every processor that Windows 7 still got updates for has SSE2, and core/text/AsciiSearch.cpp is fast with it. Floating
# point numbers are rounded as in the 64-bit program. Windows calls 32-bit programs with a stack that is aligned to 4
# bytes: a function that needs more aligns it itself.
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse -mpreferred-stack-boundary=2")
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse -mpreferred-stack-boundary=2")
# The subsystem version that the 64-bit linker writes by itself: Windows draws windows differently for older ones.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-Wl,--major-subsystem-version=5 -Wl,--minor-subsystem-version=2")

set(CMAKE_FIND_ROOT_PATH /usr/i686-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
