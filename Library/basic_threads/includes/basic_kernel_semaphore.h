#pragma once

#include "basic_cache_gap.h"
#include "windows_compat.h"

#include <cstdint>

namespace basic {

// A kernel semaphore and nothing else: every wait and post is a system call. Used where the waiter
// is expected to block anyway, such as waiting for a run to finish.
class kernel_semaphore {
 public:
  explicit kernel_semaphore(std::int32_t value);
  ~kernel_semaphore();
  kernel_semaphore(const kernel_semaphore&) = delete;
  kernel_semaphore& operator=(const kernel_semaphore&) = delete;

  void wait();
  void post();

 private:
  [[maybe_unused]] detail::cache_gap _gap_before;
  HANDLE _semaphore;
  [[maybe_unused]] detail::cache_gap _gap_after;
};

}  // namespace basic
