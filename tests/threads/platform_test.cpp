// The POSIX side of the Windows calls: the behaviour the library relies on, and the counters.
#include "windows_compat.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <pthread.h>
#include <string>
#include <thread>

namespace {

TEST(platform_semaphore, counts_and_limits_like_windows) {
  HANDLE s = CreateSemaphoreW(nullptr, 2, 3, nullptr);
  ASSERT_NE(s, nullptr);
  EXPECT_EQ(WaitForSingleObject(s, 0), WAIT_OBJECT_0);
  EXPECT_EQ(WaitForSingleObject(s, 0), WAIT_OBJECT_0);
  EXPECT_EQ(WaitForSingleObject(s, 0), WAIT_TIMEOUT);
  LONG previous = -1;
  EXPECT_TRUE(ReleaseSemaphore(s, 3, &previous));
  EXPECT_EQ(previous, 0);
  EXPECT_FALSE(ReleaseSemaphore(s, 1, &previous)) << "past the maximum";
  EXPECT_EQ(previous, 0) << "a refused release reports nothing";
  EXPECT_FALSE(ReleaseSemaphore(s, 0, nullptr));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(WaitForSingleObject(s, 0), WAIT_OBJECT_0);

  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(WaitForSingleObject(s, 30), WAIT_TIMEOUT);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(30));
  EXPECT_TRUE(CloseHandle(s));
  EXPECT_FALSE(CloseHandle(nullptr));
}

TEST(platform_semaphore, refuses_what_it_does_not_support) {
  struct bad_create {
    const char* name;
    LONG initial, maximum;
    LPCWSTR label;
  };
  for (const auto& c : {bad_create{"negative initial", -1, 5, nullptr},
                        bad_create{"initial above maximum", 6, 5, nullptr},
                        bad_create{"no room", 0, 0, nullptr},
                        bad_create{"named", 0, 5, L"shared"}})
    EXPECT_EQ(CreateSemaphoreW(nullptr, c.initial, c.maximum, c.label), nullptr) << c.name;
}

struct thread_start {
  HANDLE gate;
  std::size_t stack_bytes = 0;
  std::atomic<bool> ran{false};
};

unsigned DW_STDCALL gated_thread(void* argument) {
  auto* start = static_cast<thread_start*>(argument);
  WaitForSingleObject(start->gate, INFINITE);
  pthread_attr_t attributes;
  pthread_getattr_np(pthread_self(), &attributes);
  pthread_attr_getstacksize(&attributes, &start->stack_bytes);
  pthread_attr_destroy(&attributes);
  start->ran = true;
  return 0;
}

std::size_t default_stack_bytes() {
  std::size_t size = 0;
  std::thread([&] {
    pthread_attr_t attributes;
    pthread_getattr_np(pthread_self(), &attributes);
    pthread_attr_getstacksize(&attributes, &size);
    pthread_attr_destroy(&attributes);
  }).join();
  return size;
}

// A thread handle is signalled once its thread has ended; its stack is at least what was asked
// for, and 0 gives the same stack as any default thread.
TEST(platform_thread, handle_is_signalled_when_the_thread_ends) {
  for (const unsigned requested : {0u, 1u, 48u * 1024, 512u * 1024}) {
    thread_start start;
    start.gate = CreateSemaphoreW(nullptr, 0, 1, nullptr);
    unsigned id = 0;
    HANDLE thread = reinterpret_cast<HANDLE>(_beginthreadex(nullptr, requested, gated_thread, &start, 0, &id));
    ASSERT_NE(thread, nullptr) << requested;
    EXPECT_NE(id, 0u);
    EXPECT_EQ(WaitForSingleObject(thread, 20), WAIT_TIMEOUT) << requested;
    ReleaseSemaphore(start.gate, 1, nullptr);
    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0) << requested;
    EXPECT_TRUE(start.ran);
    EXPECT_EQ(WaitForSingleObject(thread, 0), WAIT_OBJECT_0) << "stays signalled";
    EXPECT_TRUE(CloseHandle(thread));
    CloseHandle(start.gate);
    if (requested == 0)
      EXPECT_EQ(start.stack_bytes, default_stack_bytes());
    else
      EXPECT_GE(start.stack_bytes, requested);
  }
}

TEST(platform_thread, closing_a_running_thread_lets_it_finish) {
  thread_start start;
  start.gate = CreateSemaphoreW(nullptr, 0, 1, nullptr);
  HANDLE thread = reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, gated_thread, &start, 0, nullptr));
  ASSERT_NE(thread, nullptr);
  EXPECT_TRUE(CloseHandle(thread));
  ReleaseSemaphore(start.gate, 1, nullptr);
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!start.ran && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
  EXPECT_TRUE(start.ran);
  std::this_thread::sleep_for(std::chrono::milliseconds(10));  // let it finish with the gate
  CloseHandle(start.gate);
}

TEST(platform_system, memory_matches_the_kernel) {
  MEMORYSTATUSEX status{};
  EXPECT_FALSE(GlobalMemoryStatusEx(&status)) << "dwLength must be set";
  status.dwLength = sizeof(status);
  ASSERT_TRUE(GlobalMemoryStatusEx(&status));
  std::ifstream meminfo("/proc/meminfo");
  std::string key;
  unsigned long long total_kib = 0;
  meminfo >> key >> total_kib;
  ASSERT_EQ(key, "MemTotal:");
  EXPECT_NEAR(static_cast<double>(status.ullTotalPhys), total_kib * 1024.0, 1 << 20);
  EXPECT_LE(status.ullAvailPhys, status.ullTotalPhys);
  EXPECT_LE(status.dwMemoryLoad, 100u);
  EXPECT_GE(status.ullTotalVirtual, status.ullTotalPhys / 64);
}

TEST(platform_system, tick_count_follows_the_clock) {
  const DWORD before = GetTickCount();
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  const DWORD elapsed = GetTickCount() - before;
  EXPECT_GE(elapsed, 49u);
  EXPECT_LT(elapsed, 5000u);
}

TEST(platform_system, processor_information) {
  SYSTEM_INFO info;
  GetSystemInfo(&info);
  EXPECT_EQ(info.dwNumberOfProcessors, std::thread::hardware_concurrency());
  EXPECT_EQ(info.dwPageSize, static_cast<DWORD>(sysconf(_SC_PAGESIZE)));
  DWORD_PTR process = 0;
  DWORD_PTR system = 0;
  ASSERT_TRUE(GetProcessAffinityMask(GetCurrentProcess(), &process, &system));
  EXPECT_NE(process & system, 0u);
  EXPECT_EQ(process & ~system, 0u) << "the process mask lies inside the system mask";
  EXPECT_FALSE(GetProcessAffinityMask(nullptr, &process, &system));
}

// Each kernel-level call is counted once, for the process and for the calling thread, and a
// requested failure hits exactly the next call of its kind.
TEST(platform_counters, count_calls_and_inject_one_failure) {
  const auto process = dw_platform_kernel_calls();
  const auto own = dw_platform_thread_kernel_calls();
  const auto creates = dw_platform_calls(dw_platform_call::create_semaphore);
  HANDLE s = CreateSemaphoreW(nullptr, 0, 1, nullptr);
  ReleaseSemaphore(s, 1, nullptr);
  WaitForSingleObject(s, INFINITE);
  dw_platform_fail_next(dw_platform_call::create_semaphore);
  EXPECT_EQ(CreateSemaphoreW(nullptr, 0, 1, nullptr), nullptr);
  HANDLE t = CreateSemaphoreW(nullptr, 0, 1, nullptr);
  EXPECT_NE(t, nullptr) << "only one call fails";
  CloseHandle(t);
  CloseHandle(s);
  EXPECT_EQ(dw_platform_thread_kernel_calls() - own, 7u);
  EXPECT_GE(dw_platform_kernel_calls() - process, 7u);
  EXPECT_EQ(dw_platform_calls(dw_platform_call::create_semaphore) - creates, 3u);
}

}  // namespace
