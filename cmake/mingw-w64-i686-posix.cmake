# The same with std::thread and std::mutex, which the tests need.
include("${CMAKE_CURRENT_LIST_DIR}/mingw-w64-i686.cmake")
set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-posix)
