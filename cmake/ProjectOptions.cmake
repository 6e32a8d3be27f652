# Build switches shared by every room.
option(RASTERIZE_BUILD_HOST  "Build the reference host and its command-line tool" ON)
option(RASTERIZE_BUILD_TESTS "Build the tests" ON)
option(RASTERIZE_BUILD_BENCH "Build the benchmarks" ON)
option(RASTERIZE_BUILD_FUZZ  "Build the libFuzzer targets (clang, with RASTERIZE_SANITIZE including fuzzer-no-link)" OFF)
set(RASTERIZE_SANITIZE "" CACHE STRING "Sanitizers for the whole build: address;undefined, thread, or empty")

if(WIN32)
  # The native target carries only the plug-in and its unit tests.
  set(RASTERIZE_BUILD_HOST OFF CACHE BOOL "" FORCE)
  set(RASTERIZE_BUILD_BENCH OFF CACHE BOOL "" FORCE)
endif()

if(RASTERIZE_SANITIZE)
  string(REPLACE ";" "," _san "${RASTERIZE_SANITIZE}")
  add_compile_options(-fsanitize=${_san} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${_san})
endif()

# Warnings as errors in our own code (not in third-party headers, which come in as system includes).
function(dw_warnings target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /WX)
  else()
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror -Wno-unused-parameter)
  endif()
endfunction()

# Tests of one room: dw_add_test(NAME name LABELS room SOURCES a.cpp b.cpp LIBS libs)
function(dw_add_test)
  cmake_parse_arguments(T "" "NAME" "LABELS;SOURCES;LIBS" ${ARGN})
  add_executable(${T_NAME} ${T_SOURCES})
  dw_warnings(${T_NAME})
  target_link_libraries(${T_NAME} PRIVATE ${T_LIBS} GTest::gtest GTest::gtest_main)
  gtest_discover_tests(${T_NAME} PROPERTIES LABELS "${T_LABELS}" DISCOVERY_TIMEOUT 60)
endfunction()
