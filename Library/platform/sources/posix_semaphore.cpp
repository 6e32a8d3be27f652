// Kernel semaphores over Linux futexes: a wait sleeps in the kernel only while the count is 0, and
// a release makes a wake call only when somebody sleeps.
#include "posix_handle.h"

#include <chrono>
#include <ctime>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace dw_platform {
namespace {

constexpr std::uint64_t one_sleeper = std::uint64_t{1} << 32;

std::uint32_t count_of(std::uint64_t state) { return static_cast<std::uint32_t>(state); }

// The futex is the count's half of the state word.
std::uint32_t* count_word(std::atomic<std::uint64_t>& state) {
  auto* halves = reinterpret_cast<std::uint32_t*>(&state);
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  return halves + 1;
#else
  return halves;
#endif
}

bool try_take(std::atomic<std::uint64_t>& state) {
  std::uint64_t now = state.load(std::memory_order_relaxed);
  while (count_of(now) > 0)
    if (state.compare_exchange_weak(now, now - 1, std::memory_order_acquire,
                                    std::memory_order_relaxed))
      return true;
  return false;
}

void sleep_while_empty(std::atomic<std::uint64_t>& state, const timespec* timeout) {
  syscall(SYS_futex, count_word(state), FUTEX_WAIT_PRIVATE, 0u, timeout, nullptr, 0);
}

void wake(std::atomic<std::uint64_t>& state, LONG count) {
  syscall(SYS_futex, count_word(state), FUTEX_WAKE_PRIVATE, count, nullptr, nullptr, 0);
}

BOOL release(semaphore_object* semaphore, LONG count, LPLONG previous_count) {
  std::atomic<std::uint64_t>& state = semaphore->state;
  std::uint64_t now = state.load(std::memory_order_relaxed);
  do {
    // Windows refuses a release that would pass the maximum and leaves the count alone.
    if (static_cast<LONG>(count_of(now)) > semaphore->maximum - count) return FALSE;
  } while (!state.compare_exchange_weak(now, now + static_cast<std::uint64_t>(count),
                                        std::memory_order_release, std::memory_order_relaxed));
  if (previous_count != nullptr) *previous_count = static_cast<LONG>(count_of(now));
  // Waking through a closed semaphore's address is harmless: at worst a spurious wake elsewhere,
  // which every futex waiter tolerates.
  if (now >= one_sleeper) wake(state, count);
  return TRUE;
}

}  // namespace

DWORD wait_semaphore(semaphore_object* semaphore, DWORD milliseconds) {
  std::atomic<std::uint64_t>& state = semaphore->state;
  if (try_take(state)) return WAIT_OBJECT_0;
  if (milliseconds == 0) return WAIT_TIMEOUT;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  // Registered before the count is tested again, so a release after this point sees a sleeper.
  state.fetch_add(one_sleeper, std::memory_order_relaxed);
  DWORD result = WAIT_OBJECT_0;
  while (!try_take(state)) {
    if (milliseconds == INFINITE) {
      sleep_while_empty(state, nullptr);
      continue;
    }
    const auto left = deadline - std::chrono::steady_clock::now();
    if (left <= std::chrono::nanoseconds::zero()) {
      result = WAIT_TIMEOUT;
      break;
    }
    const auto nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(left).count();
    const timespec timeout{static_cast<time_t>(nanoseconds / 1000000000),
                           static_cast<long>(nanoseconds % 1000000000)};
    sleep_while_empty(state, &timeout);
  }
  state.fetch_sub(one_sleeper, std::memory_order_relaxed);
  return result;
}

}  // namespace dw_platform

using namespace dw_platform;

HANDLE CreateSemaphoreW(LPSECURITY_ATTRIBUTES attributes, LONG initial_count, LONG maximum_count,
                        LPCWSTR name) {
  if (enter(dw_platform_call::create_semaphore)) return nullptr;
  if (attributes != nullptr || name != nullptr || maximum_count <= 0 || initial_count < 0 ||
      initial_count > maximum_count)
    return nullptr;
  return new semaphore_object(initial_count, maximum_count);
}

BOOL ReleaseSemaphore(HANDLE handle, LONG release_count, LPLONG previous_count) {
  if (enter(dw_platform_call::release_semaphore) || handle == nullptr) return FALSE;
  auto* object = static_cast<kernel_object*>(handle);
  if (object->kind != handle_kind::semaphore || release_count <= 0) return FALSE;
  return release(static_cast<semaphore_object*>(object), release_count, previous_count);
}
