#pragma once

#include "basic_cache_gap.h"
#include "basic_thread_function.h"

#include <cstdint>

namespace basic {
namespace detail {
class thread_function_base;
}

// Runs one thread_function at a time on a worker borrowed from the process-wide pool. Calling
// order: set_function, start, join, and again; destroy only after join. One thread drives a
// handle; different handles may be driven from different threads.
class thread {
 public:
  // Stack size 0 ("system default") is mapped to default_stack_size. Taken literally, 0 would
  // defeat the pool: no idle worker is smaller than four times 0, so every start would build a new
  // worker. A fixed size lets such handles share workers like any other.
  static constexpr std::uint32_t default_stack_size = 1024 * 1024;

  explicit thread(std::uint32_t requested_stack_size);
  ~thread();
  thread(const thread&) = delete;
  thread& operator=(const thread&) = delete;

  void set_function(thread_function* function);
  // Runs the function on a worker and returns at once.
  void start();
  // Waits for the run to finish; everything it wrote is visible afterwards.
  void join();

 private:
  [[maybe_unused]] detail::cache_gap _gap_before;

 public:
  // Stack bytes for the worker that runs the function; never 0.
  const std::uint32_t stack_size;

 private:
  bool _acquired;
  thread_function* _function;
  detail::thread_function_base* worker;
  [[maybe_unused]] detail::cache_gap _gap_after;
};

}  // namespace basic
