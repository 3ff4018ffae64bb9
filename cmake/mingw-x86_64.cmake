# Cross-compiles for x86_64 Windows with Debian's mingw-w64 (posix thread model,
# for the standard library's threads and mutexes).
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(ZV_MINGW_PREFIX x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
