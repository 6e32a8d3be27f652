# A 64-bit Windows build (g++-mingw-w64-x86-64): the unit tests run it under wine64, since this
# machine cannot run 32-bit programs. Posix threads by default, for the tests' std::thread.
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(DW_MINGW_TRIPLE x86_64-w64-mingw32)
if(NOT DEFINED DW_MINGW_THREADS)
  set(DW_MINGW_THREADS posix)
endif()
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
