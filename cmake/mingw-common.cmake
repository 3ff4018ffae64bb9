# What both mingw-w64 toolchains share: the compilers and the search roots of
# ZV_MINGW_PREFIX (set by the including toolchain file), and a static runtime.
set(CMAKE_SYSTEM_NAME Windows)

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
