#include "basic_thread.h"

#include "basic_assure.h"
#include "basic_thread_cache.h"

namespace basic {

thread::thread(std::uint32_t requested_stack_size)
    : stack_size(requested_stack_size == 0 ? default_stack_size : requested_stack_size),
      _acquired(true),
      _function(nullptr),
      worker(nullptr) {}

thread::~thread() { BASIC_ASSURE(_acquired); }

void thread::set_function(thread_function* function) {
  BASIC_ASSURE(_acquired);
  _function = function;
}

void thread::start() {
  BASIC_ASSURE(_acquired && _function != 0);
  worker = detail::thread_cache::instance().acquire(stack_size);
  worker->assign(_function);
  _acquired = false;
}

void thread::join() {
  BASIC_ASSURE(!_acquired);
  worker->wait_done();
  _acquired = true;
  detail::thread_cache::instance().release(worker);
  worker = nullptr;
}

}  // namespace basic
