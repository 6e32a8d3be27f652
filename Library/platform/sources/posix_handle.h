// Kernel objects behind a POSIX HANDLE, and the counters and failure switches of the test hooks.
#pragma once

#include "windows_compat.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <pthread.h>

namespace dw_platform {

enum class handle_kind { semaphore, thread };

struct kernel_object {
  explicit kernel_object(handle_kind k) : kind(k) {}
  const handle_kind kind;
};

// Low 32 bits: the count; high 32 bits: threads asleep (or about to sleep) on it. One word, so
// that a release reads the sleepers in the same atomic step that raises the count and touches the
// object no more afterwards: a woken waiter may close the semaphore at once.
struct semaphore_object : kernel_object {
  semaphore_object(LONG initial, LONG maximum)
      : kernel_object(handle_kind::semaphore),
        state(static_cast<std::uint64_t>(initial)),
        maximum(maximum) {}
  std::atomic<std::uint64_t> state;
  const LONG maximum;
};

// Shared by the creator's handle and the running thread; whichever lets go last deletes it.
struct thread_object : kernel_object {
  thread_object() : kernel_object(handle_kind::thread) {}
  pthread_t thread{};
  unsigned(DW_STDCALL* start)(void*) = nullptr;
  void* argument = nullptr;
  std::mutex lock;
  std::condition_variable ended;
  bool finished = false;
  // pthread_join may run only once; waiters take turns under join_lock.
  std::mutex join_lock;
  bool joined = false;
  std::atomic<int> references{2};
};

// Counts the call and reports whether a test asked it to fail.
bool enter(dw_platform_call call);

DWORD wait_semaphore(semaphore_object* semaphore, DWORD milliseconds);
DWORD wait_thread(thread_object* thread, DWORD milliseconds);
void close_thread(thread_object* thread);

}  // namespace dw_platform
