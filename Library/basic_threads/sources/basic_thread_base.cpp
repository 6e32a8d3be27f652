#include "basic_thread_base.h"

#include "basic_assure.h"
#include "basic_semaphore.h"
#include "basic_spin_count.h"

namespace basic {
namespace detail {
namespace {

// Lives on the starting thread's stack; start() waits for `started`, so the new thread never
// reads a dead block.
struct start_block {
  explicit start_block(thread_base* started_thread)
      : thread(started_thread), started(0, spin_count()) {}
  thread_base* thread;
  semaphore started;
};

}  // namespace

thread_base::thread_base(std::uint32_t os_stack_size)
    : stack_size(os_stack_size), _thread(nullptr), _function(nullptr) {}

void thread_base::set_function(thread_function* function) {
  BASIC_ASSURE(_thread == 0);
  _function = function;
}

void thread_base::start() {
  BASIC_ASSURE(_thread == 0 && _function != 0);
  start_block block(this);
  unsigned thread_id = 0;
  _thread = reinterpret_cast<HANDLE>(_beginthreadex(nullptr, stack_size, &thread_base::entry,
                                                    &block, 0, &thread_id));
  BASIC_ASSURE(_thread != 0);
  block.started.wait();
}

void thread_base::join() {
  BASIC_ASSURE(_thread != 0);
  BASIC_ASSURE(WaitForSingleObject(_thread, INFINITE) == WAIT_OBJECT_0);
  BASIC_ASSURE(CloseHandle(_thread) != 0);
  _thread = 0;
}

unsigned DW_STDCALL thread_base::entry(void* argument) {
  try {
    auto* block = static_cast<start_block*>(argument);
    thread_function* function = block->thread->_function;
    block->started.post();  // the block may vanish from here on
    function->run();
  } catch (...) {
    // An exception must not unwind into the C runtime's thread start-up.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-value"
#endif
    BASIC_ASSURE(("unexpected exception", 0));
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
  }
  return 0;
}

}  // namespace detail
}  // namespace basic
