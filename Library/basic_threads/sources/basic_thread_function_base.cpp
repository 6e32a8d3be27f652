#include "basic_thread_function_base.h"

#include "basic_assure.h"
#include "basic_spin_count.h"

namespace basic {
namespace detail {

thread_function_base::thread_function_base(std::uint32_t worker_stack_size)
    : start_signal(0, spin_count()),
      _function(nullptr),
      quit(false),
      done_signal(0),
      os_thread(worker_stack_size) {
  pool_links.item = this;
  pool_links.key = worker_stack_size;
  os_thread.set_function(this);
  os_thread.start();
}

thread_function_base::~thread_function_base() {
  quit = true;
  start_signal.post();
  os_thread.join();
  // The members close done_signal, then start_signal.
}

void thread_function_base::run() {
  start_signal.wait();
  while (!quit) {
    try {
      _function->run();
    } catch (...) {
      // Work runs on a borrowed thread; nobody could catch this, so the process ends here.
      BASIC_ASSURE((!"unexpected exception"));
    }
    done_signal.post();
    start_signal.wait();
  }
}

}  // namespace detail
}  // namespace basic
