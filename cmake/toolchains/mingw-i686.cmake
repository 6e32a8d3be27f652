# The shipped plug-in: a 32-bit Windows DLL built with Debian's MinGW-w64 cross compiler
# (g++-mingw-w64-i686). Usage: cmake -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/mingw-i686.cmake ...
set(CMAKE_SYSTEM_PROCESSOR x86)
set(DW_MINGW_TRIPLE i686-w64-mingw32)
if(NOT DEFINED DW_MINGW_THREADS)
  set(DW_MINGW_THREADS win32)
endif()
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
