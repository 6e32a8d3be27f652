#include "posix_handle.h"

#include <cerrno>
#include <chrono>
#include <climits>
#include <new>
#include <unistd.h>

namespace dw_platform {
namespace {

std::atomic<unsigned> next_thread_id{1};

void release(thread_object* thread) {
  if (thread->references.fetch_sub(1, std::memory_order_acq_rel) == 1) delete thread;
}

void* run_thread(void* argument) {
  auto* thread = static_cast<thread_object*>(argument);
  thread->start(thread->argument);
  {
    std::lock_guard<std::mutex> guard(thread->lock);
    thread->finished = true;
    thread->ended.notify_all();
  }
  release(thread);
  return nullptr;
}

// glibc carves the thread descriptor and static TLS out of the stack, and refuses sizes below its
// minimum; adding the minimum keeps the requested bytes usable for the thread's own frames.
std::size_t stack_bytes(unsigned requested) {
  const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  long minimum = sysconf(_SC_THREAD_STACK_MIN);
  if (minimum <= 0) minimum = PTHREAD_STACK_MIN;
  const std::size_t rounded = (static_cast<std::size_t>(requested) + page - 1) / page * page;
  return rounded + static_cast<std::size_t>(minimum);
}

}  // namespace

DWORD wait_thread(thread_object* thread, DWORD milliseconds) {
  {
    std::unique_lock<std::mutex> guard(thread->lock);
    const auto ended = [thread] { return thread->finished; };
    if (milliseconds == INFINITE)
      thread->ended.wait(guard, ended);
    else if (!thread->ended.wait_for(guard, std::chrono::milliseconds(milliseconds), ended))
      return WAIT_TIMEOUT;
  }
  // The thread has returned from its procedure; joining reclaims its stack before we report it
  // ended, as Windows does.
  std::lock_guard<std::mutex> guard(thread->join_lock);
  if (!thread->joined) {
    if (pthread_join(thread->thread, nullptr) != 0) return WAIT_FAILED;
    thread->joined = true;
  }
  return WAIT_OBJECT_0;
}

void close_thread(thread_object* thread) {
  {
    std::lock_guard<std::mutex> guard(thread->join_lock);
    if (!thread->joined) pthread_detach(thread->thread);
  }
  release(thread);
}

}  // namespace dw_platform

using namespace dw_platform;

std::uintptr_t _beginthreadex(void* security, unsigned stack_size,
                              unsigned(DW_STDCALL* start_address)(void*), void* argument,
                              unsigned init_flags, unsigned* thread_id) {
  if (enter(dw_platform_call::begin_thread)) {
    errno = EAGAIN;
    return 0;
  }
  // Suspended creation and security attributes have no use here.
  if (security != nullptr || init_flags != 0 || start_address == nullptr) {
    errno = EINVAL;
    return 0;
  }
  auto* thread = new (std::nothrow) thread_object;
  if (thread == nullptr) {
    errno = ENOMEM;
    return 0;
  }
  thread->start = start_address;
  thread->argument = argument;

  pthread_attr_t attributes;
  int result = pthread_attr_init(&attributes);
  if (result == 0 && stack_size != 0)
    result = pthread_attr_setstacksize(&attributes, stack_bytes(stack_size));
  if (result == 0) result = pthread_create(&thread->thread, &attributes, run_thread, thread);
  pthread_attr_destroy(&attributes);
  if (result != 0) {
    delete thread;
    errno = result;
    return 0;
  }
  if (thread_id != nullptr) *thread_id = next_thread_id.fetch_add(1, std::memory_order_relaxed);
  return reinterpret_cast<std::uintptr_t>(static_cast<kernel_object*>(thread));
}
