#pragma once

#include "basic_cache_gap.h"
#include "windows_compat.h"

#include <atomic>
#include <cstdint>

namespace basic {

// A counting semaphore whose counter lives in user space: a wait that finds a token and a post
// that finds nobody blocked are one atomic instruction each. Only a waiter that must block, and
// the post that wakes it, use the kernel semaphore. Built with value 1 it is a non-recursive mutex
// that any thread may unlock.
class semaphore {
 public:
  semaphore(std::int32_t value, std::uint32_t spin_rounds);
  ~semaphore();
  semaphore(const semaphore&) = delete;
  semaphore& operator=(const semaphore&) = delete;

  void wait() {
    if (_value.load(std::memory_order_relaxed) <= 0) {
      YieldProcessor();
      // Only decides when to try the decrement, so a plain read is enough.
      for (std::uint32_t round = 0; round < spin; ++round) {
        if (_value.load(std::memory_order_relaxed) > 0) break;
        YieldProcessor();
      }
    }
    if (_value.fetch_sub(1) <= 0) wait_in_kernel();
  }

  void post() {
    // A negative value before the increment means a waiter is blocked or about to block; the
    // kernel count covers a waiter that has not reached its kernel wait yet.
    if (_value.fetch_add(1) < 0) wake_in_kernel();
  }

  // Tokens available, or minus the number of blocked waiters. A snapshot for tests only.
  std::int32_t value() const { return _value.load(std::memory_order_relaxed); }

 private:
  void wait_in_kernel();
  void wake_in_kernel();

  [[maybe_unused]] detail::cache_gap _gap_before;
  std::atomic<std::int32_t> _value;
  [[maybe_unused]] detail::cache_gap _gap_after_value;
  const std::uint32_t spin;
  HANDLE _semaphore;
  [[maybe_unused]] detail::cache_gap _gap_after;
};

}  // namespace basic
