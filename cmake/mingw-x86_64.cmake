# Cross-compiles for x86_64 Windows with Debian's mingw-w64 (posix thread model,
# for the standard library's threads and mutexes).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(ZV_MINGW_PREFIX x86_64-w64-mingw32)

set(CMAKE_C_COMPILER ${ZV_MINGW_PREFIX}-gcc-posix)
set(CMAKE_CXX_COMPILER ${ZV_MINGW_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER ${ZV_MINGW_PREFIX}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${ZV_MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The compiler's runtime (libgcc, libstdc++, winpthread) linked in statically,
# so the modules need nothing beside the system's own DLLs.
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
