# Shared by the MinGW-w64 toolchain files; each sets DW_MINGW_TRIPLE and DW_MINGW_THREADS first.
#
# DW_MINGW_THREADS picks Debian's compiler variant: "win32" needs no threading runtime at all (the
# plug-in only uses the Windows calls), "posix" adds winpthreads, which std::thread needs in GCC 12
# (the tests use it). Either way the runtime is linked statically: the outputs import system DLLs
# only, so a host or wine loads them without any MinGW DLL beside them.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_VERSION 6.1)

# try_compile projects read this file again and must pick the same compiler.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES DW_MINGW_THREADS)

set(CMAKE_C_COMPILER ${DW_MINGW_TRIPLE}-gcc-${DW_MINGW_THREADS})
set(CMAKE_CXX_COMPILER ${DW_MINGW_TRIPLE}-g++-${DW_MINGW_THREADS})
set(CMAKE_RC_COMPILER ${DW_MINGW_TRIPLE}-windres)
set(CMAKE_AR ${DW_MINGW_TRIPLE}-ar CACHE FILEPATH "")
set(CMAKE_RANLIB ${DW_MINGW_TRIPLE}-ranlib CACHE FILEPATH "")

# Only the cross sysroot and folders the build names itself (staged Boost, GoogleTest built for this
# target) are searched for headers, libraries and packages; programs come from the build machine.
list(APPEND CMAKE_FIND_ROOT_PATH /usr/${DW_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++ -Wl,--kill-at")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++ -Wl,--kill-at")
