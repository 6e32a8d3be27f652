#pragma once

#include "basic_kernel_semaphore.h"
#include "basic_semaphore.h"
#include "basic_skip_list.h"
#include "basic_thread_base.h"
#include "basic_thread_function.h"

#include <cstdint>

namespace basic {
namespace detail {

// A pooled worker: owns one OS thread that waits for work, runs it, signals completion and waits
// again. Created and destroyed only by the thread cache.
class thread_function_base final : public thread_function {
 public:
  // Returns once the worker's thread is running.
  explicit thread_function_base(std::uint32_t worker_stack_size);
  // Ends the loop and joins the thread; the worker must be idle.
  ~thread_function_base() override;

  // The worker loop, run on the worker's own thread.
  void run() override;

  // Hands over one run; `function` is read by the worker only after start_signal.
  void assign(thread_function* function) {
    _function = function;
    start_signal.post();
  }
  // Returns once the assigned run has finished; its writes are then visible to the caller.
  void wait_done() { done_signal.wait(); }

  std::uint32_t stack_size() const { return os_thread.stack_size; }

 private:
  friend class thread_cache;

  // Each semaphore carries its own 128-byte gaps, which also separate the flags between them.
  semaphore start_signal;
  thread_function* _function;
  bool quit;
  kernel_semaphore done_signal;
  thread_base os_thread;
  skip_list_node<thread_function_base> pool_links;
};

}  // namespace detail
}  // namespace basic
