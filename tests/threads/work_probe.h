// Work objects the thread tests share.
#pragma once

#include "basic_thread_function.h"

#include <cstddef>
#include <thread>
#include <vector>

// The stack size of the calling thread; 0 where the platform cannot tell.
std::size_t current_stack_bytes();

// Records where and how it ran; its writes are plain, so only join makes them visible.
struct probe_work : basic::thread_function {
  void run() override;

  int runs = 0;
  std::thread::id ran_on;
  std::size_t stack_bytes = 0;  // of the thread that ran it; 0 where the platform cannot tell
  std::vector<int> written;
};
