// Work objects the thread tests share.
#pragma once

#include "basic_thread_function.h"

#include <cstddef>
#include <thread>
#include <vector>

// Records where and how it ran; its writes are plain, so only join makes them visible.
struct probe_work : basic::thread_function {
  void run() override;

  int runs = 0;
  std::thread::id ran_on;
  std::size_t stack_bytes = 0;  // of the thread that ran it; 0 where the platform cannot tell
  std::vector<int> written;
};
