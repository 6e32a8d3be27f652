#pragma once

#include "basic_thread_function.h"
#include "windows_compat.h"

#include <cstdint>

namespace basic {
namespace detail {

// One OS thread that runs one function; the pool's workers each embed one.
class thread_base {
 public:
  explicit thread_base(std::uint32_t os_stack_size);
  thread_base(const thread_base&) = delete;
  thread_base& operator=(const thread_base&) = delete;

  void set_function(thread_function* function);
  // Returns once the new thread is running.
  void start();
  // Waits without limit for the thread to end and closes its handle.
  void join();

  // Passed to the OS as is; 0 takes the system default.
  const std::uint32_t stack_size;

 private:
  static unsigned DW_STDCALL entry(void* start_block);

  HANDLE _thread;
  thread_function* _function;
};

}  // namespace detail
}  // namespace basic
