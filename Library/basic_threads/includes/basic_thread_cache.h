#pragma once

#include "basic_semaphore.h"
#include "basic_skip_list.h"
#include "basic_thread_function_base.h"

#include <atomic>
#include <cstdint>
#include <vector>

namespace basic {
namespace detail {

// The process-wide pool of idle workers, ordered by stack size. Built during static
// initialisation, emptied and destroyed at process exit.
class thread_cache {
 public:
  static thread_cache& instance();

  // An idle worker ready for one run: the smallest pooled one whose stack is at least
  // `stack_size` and less than four times it (most recently released first), else a new one.
  thread_function_base* acquire(std::uint32_t stack_size);
  // Takes back a worker whose run has finished.
  void release(thread_function_base* worker);
  // Destroys every idle worker, ending their threads. Call only while no thread is being started
  // or joined (the plug-in's shutdown does).
  void clear();

  // For tests: the idle workers in pool order, and how many workers were ever built.
  std::vector<const thread_function_base*> idle_workers();
  std::uint64_t workers_created() const;

 private:
  thread_cache();
  ~thread_cache();
  thread_cache(const thread_cache&) = delete;
  thread_cache& operator=(const thread_cache&) = delete;

  semaphore _mutex;
  skip_list<thread_function_base> _idle_workers;
  std::atomic<std::uint64_t> _workers_created;
};

}  // namespace detail

// Empties the worker pool; for the plug-in's shutdown.
void clear_thread_cache();

}  // namespace basic
