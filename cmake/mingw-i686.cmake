# Cross-compiles for i686 Windows with Debian's mingw-w64 (posix thread model,
# for the standard library's threads and mutexes).
set(CMAKE_SYSTEM_PROCESSOR i686)
set(ZV_MINGW_PREFIX i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
