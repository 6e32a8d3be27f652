#include "basic_thread_cache.h"

#include "basic_assure.h"
#include "basic_semaphore_lock.h"
#include "basic_spin_count.h"

namespace basic {
namespace detail {

thread_cache& thread_cache::instance() {
  static thread_cache cache;
  return cache;
}

namespace {
// Builds the pool during static initialisation, so it outlives every object built after it.
[[maybe_unused]] thread_cache& cache_at_start = thread_cache::instance();
}  // namespace

thread_cache::thread_cache() : _mutex(1, spin_count()), _workers_created(0) {}

// Runs at process exit; the mutex closes after the pool is empty.
thread_cache::~thread_cache() { clear(); }

thread_function_base* thread_cache::acquire(std::uint32_t stack_size) {
  thread_function_base* worker = nullptr;
  {
    semaphore_lock lock(_mutex, true);
    // Unsigned 32-bit on purpose: a request of 1 GiB or more wraps, and then finds fewer
    // workers to reuse, never a too-small one.
    worker = _idle_workers.take_first_at_least(stack_size, stack_size * 4u);
  }
  if (worker != nullptr) return worker;
  // Built outside the lock: creating a thread is slow and must not stall other handles.
  try {
    worker = new thread_function_base(stack_size);
  } catch (...) {
    BASIC_ASSURE((!"unexpected exception"));
  }
  _workers_created.fetch_add(1, std::memory_order_relaxed);
  return worker;
}

void thread_cache::release(thread_function_base* worker) {
  semaphore_lock lock(_mutex, true);
  _idle_workers.insert(&worker->pool_links);
}

void thread_cache::clear() {
  // Taking the lock for each removal costs nothing here and keeps the list sound if a handle is
  // joined concurrently after all; it is never held while a worker is destroyed.
  for (;;) {
    thread_function_base* worker = nullptr;
    {
      semaphore_lock lock(_mutex, true);
      worker = _idle_workers.pop_front();
    }
    if (worker == nullptr) return;
    delete worker;
  }
}

std::vector<const thread_function_base*> thread_cache::idle_workers() {
  std::vector<const thread_function_base*> workers;
  semaphore_lock lock(_mutex, true);
  for (auto* at = _idle_workers.first(); at != nullptr; at = at->next[0])
    workers.push_back(at->item);
  return workers;
}

std::uint64_t thread_cache::workers_created() const { return _workers_created.load(); }

}  // namespace detail

void clear_thread_cache() { detail::thread_cache::instance().clear(); }

}  // namespace basic
