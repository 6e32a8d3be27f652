// The POSIX side of the Windows calls: the behaviour the library relies on, and the counters.
#include "windows_compat.h"
#include "work_probe.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <string>
#include <thread>
#include <unistd.h>

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

  struct bad_create {
    const char* name;
    LONG initial, maximum;
    LPCWSTR label;
  };
  for (const auto& c : {bad_create{"negative initial", -1, 5, nullptr},
                        bad_create{"initial above maximum", 6, 5, nullptr},
                        bad_create{"no room", 0, 0, nullptr}, bad_create{"named", 0, 5, L"x"}})
    EXPECT_EQ(CreateSemaphoreW(nullptr, c.initial, c.maximum, c.label), nullptr) << c.name;
}

struct gated_start {
  HANDLE gate = CreateSemaphoreW(nullptr, 0, 1, nullptr);
  std::size_t stack_bytes = 0;
  std::atomic<bool> ran{false};
  ~gated_start() { CloseHandle(gate); }
};

unsigned DW_STDCALL gated_thread(void* argument) {
  auto* start = static_cast<gated_start*>(argument);
  WaitForSingleObject(start->gate, INFINITE);
  start->stack_bytes = current_stack_bytes();
  start->ran = true;
  return 0;
}

// A thread handle is signalled once its thread has ended; its stack is at least what was asked
// for, and 0 gives the same stack as any default thread.
TEST(platform_thread, handle_is_signalled_when_the_thread_ends) {
  std::size_t default_stack = 0;
  std::thread([&] { default_stack = current_stack_bytes(); }).join();
  for (const unsigned requested : {0u, 1u, 48u * 1024, 512u * 1024}) {
    gated_start start;
    unsigned id = 0;
    auto thread = reinterpret_cast<HANDLE>(
        _beginthreadex(nullptr, requested, gated_thread, &start, 0, &id));
    ASSERT_NE(thread, nullptr) << requested;
    EXPECT_NE(id, 0u);
    EXPECT_EQ(WaitForSingleObject(thread, 20), WAIT_TIMEOUT) << requested;
    ReleaseSemaphore(start.gate, 1, nullptr);
    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0) << requested;
    EXPECT_TRUE(start.ran);
    EXPECT_EQ(WaitForSingleObject(thread, 0), WAIT_OBJECT_0) << "stays signalled";
    EXPECT_TRUE(CloseHandle(thread));
    if (requested == 0)
      EXPECT_EQ(start.stack_bytes, default_stack);
    else
      EXPECT_GE(start.stack_bytes, requested);
  }
  // Closing the handle of a running thread lets it run to its end.
  gated_start start;
  auto thread =
      reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, gated_thread, &start, 0, nullptr));
  EXPECT_TRUE(CloseHandle(thread));
  ReleaseSemaphore(start.gate, 1, nullptr);
  while (!start.ran) std::this_thread::yield();
  std::this_thread::sleep_for(std::chrono::milliseconds(10));  // until it is done with the gate
}

TEST(platform_system, reports_what_the_kernel_reports) {
  MEMORYSTATUSEX memory{};
  EXPECT_FALSE(GlobalMemoryStatusEx(&memory)) << "dwLength must be set";
  memory.dwLength = sizeof(memory);
  ASSERT_TRUE(GlobalMemoryStatusEx(&memory));
  std::ifstream meminfo("/proc/meminfo");
  std::string key;
  double total_kib = 0;
  meminfo >> key >> total_kib;
  EXPECT_NEAR(static_cast<double>(memory.ullTotalPhys), total_kib * 1024, 1 << 20) << key;
  EXPECT_LE(memory.ullAvailPhys, memory.ullTotalPhys);
  EXPECT_LE(memory.dwMemoryLoad, 100u);

  const DWORD before = GetTickCount();
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  const DWORD elapsed = GetTickCount() - before;
  EXPECT_GE(elapsed, 49u);
  EXPECT_LT(elapsed, 5000u);

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
