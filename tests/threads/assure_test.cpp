// Every check of the library, made to fail: each prints its own line and aborts.
#include "assure_line.h"
#include "basic_kernel_semaphore.h"
#include "basic_processor_count.h"
#include "basic_semaphore.h"
#include "basic_thread.h"
#include "basic_thread_base.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#if defined(_WIN32)
// Without the POSIX layer no system call can be made to fail: the cases that need it are left out,
// and this stand-in keeps the helpers as they are.
enum class dw_platform_call { count };
inline void dw_platform_fail_next(dw_platform_call) {}
#endif

namespace {

using call = dw_platform_call;
constexpr std::uint32_t stack = 64 * 1024;

struct throwing_work : basic::thread_function {
  void run() override { throw std::runtime_error("work failed"); }
};
basic::thread_function idle;
throwing_work throwing;

// A handle running `work`, left running.
basic::thread& running(basic::thread&& handle, basic::thread_function& work = idle) {
  handle.set_function(&work);
  handle.start();
  return handle;
}

// A bare OS thread through start and join; `fail` makes one system call of the join fail.
void os_thread(basic::thread_function& work, call fail = call::count) {
  basic::detail::thread_base thread(stack);
  thread.set_function(&work);
  thread.start();
  if (fail != call::count) dw_platform_fail_next(fail);
  thread.join();
}

struct assure_case {
  const char* name;
  const char* file;
  const char* anchor;  // the function that makes the check
  const char* expression;
  void (*fail)();
};

void PrintTo(const assure_case& c, std::ostream* out) { *out << c.name; }

const assure_case cases[] = {
    {"thread_destroyed_running", "basic_thread.cpp", "thread::~thread", "_acquired",
     [] { basic::thread handle(stack); running(std::move(handle)); }},
    {"thread_given_work_running", "basic_thread.cpp", "thread::set_function", "_acquired",
     [] { running(basic::thread(stack)).set_function(&idle); }},
    {"thread_started_without_work", "basic_thread.cpp", "thread::start",
     "_acquired && _function != 0", [] { basic::thread(stack).start(); }},
    {"thread_started_twice", "basic_thread.cpp", "thread::start", "_acquired && _function != 0",
     [] { running(basic::thread(stack)).start(); }},
    {"thread_joined_unstarted", "basic_thread.cpp", "thread::join", "!_acquired",
     [] { basic::thread(stack).join(); }},
    {"work_throws", "basic_thread_function_base.cpp", "::run()", "(!\"unexpected exception\")",
     [] { running(basic::thread(stack), throwing).join(); }},
    {"os_thread_given_work_running", "basic_thread_base.cpp", "thread_base::set_function",
     "_thread == 0",
     [] {
       basic::detail::thread_base thread(stack);
       thread.set_function(&idle);
       thread.start();
       thread.set_function(&idle);
     }},
    {"os_thread_started_without_work", "basic_thread_base.cpp", "thread_base::start",
     "_thread == 0 && _function != 0", [] { basic::detail::thread_base(stack).start(); }},
    {"os_thread_joined_unstarted", "basic_thread_base.cpp", "thread_base::join", "_thread != 0",
     [] { basic::detail::thread_base(stack).join(); }},
    {"exception_leaves_os_thread", "basic_thread_base.cpp", "thread_base::entry",
     "(\"unexpected exception\", 0)", [] { os_thread(throwing); }},
    {"semaphore_negative", "basic_semaphore.cpp", "semaphore::semaphore", "_value >= 0",
     [] { basic::semaphore(-1, 0); }},
    {"kernel_semaphore_negative", "basic_kernel_semaphore.cpp",
     "kernel_semaphore::kernel_semaphore", "value >= 0", [] { basic::kernel_semaphore(-1); }},
#if !defined(_WIN32)
    // The POSIX layer can make any system call fail on demand; the real Windows calls cannot.
    {"os_thread_not_created", "basic_thread_base.cpp", "thread_base::start", "_thread != 0",
     [] {
       dw_platform_fail_next(call::begin_thread);
       os_thread(idle);
     }},
    {"os_thread_wait_fails", "basic_thread_base.cpp", "thread_base::join",
     "WaitForSingleObject(_thread, INFINITE) == WAIT_OBJECT_0",
     [] { os_thread(idle, call::wait); }},
    {"os_thread_close_fails", "basic_thread_base.cpp", "thread_base::join",
     "CloseHandle(_thread) != 0", [] { os_thread(idle, call::close_handle); }},
    {"semaphore_not_created", "basic_semaphore.cpp", "semaphore::semaphore", "_semaphore != 0",
     [] {
       dw_platform_fail_next(call::create_semaphore);
       basic::semaphore(0, 0);
     }},
    {"semaphore_not_closed", "basic_semaphore.cpp", "semaphore::~semaphore",
     "CloseHandle(_semaphore) != 0",
     [] {
       basic::semaphore lock(1, 0);
       dw_platform_fail_next(call::close_handle);
     }},
    {"semaphore_wait_fails", "basic_semaphore.cpp", "semaphore::wait_in_kernel",
     "WaitForSingleObject(_semaphore, INFINITE) == WAIT_OBJECT_0",
     [] {
       basic::semaphore empty(0, 0);
       dw_platform_fail_next(call::wait);
       empty.wait();
     }},
    {"semaphore_release_fails", "basic_semaphore.cpp", "semaphore::wake_in_kernel",
     "ReleaseSemaphore(_semaphore, 1, 0) != 0",
     [] {
       auto* empty = new basic::semaphore(0, 0);
       std::thread([empty] { empty->wait(); }).detach();
       while (empty->value() >= 0) std::this_thread::yield();
       dw_platform_fail_next(call::release_semaphore);
       empty->post();
     }},
    {"kernel_semaphore_not_created", "basic_kernel_semaphore.cpp",
     "kernel_semaphore::kernel_semaphore", "_semaphore != 0",
     [] {
       dw_platform_fail_next(call::create_semaphore);
       basic::kernel_semaphore(0);
     }},
    {"kernel_semaphore_not_closed", "basic_kernel_semaphore.cpp",
     "kernel_semaphore::~kernel_semaphore", "CloseHandle(_semaphore) != 0",
     [] {
       basic::kernel_semaphore signal(0);
       dw_platform_fail_next(call::close_handle);
     }},
    {"kernel_semaphore_wait_fails", "basic_kernel_semaphore.cpp", "kernel_semaphore::wait",
     "WaitForSingleObject(_semaphore, INFINITE) == WAIT_OBJECT_0",
     [] {
       basic::kernel_semaphore signal(1);
       dw_platform_fail_next(call::wait);
       signal.wait();
     }},
    {"kernel_semaphore_post_fails", "basic_kernel_semaphore.cpp", "kernel_semaphore::post",
     "ReleaseSemaphore(_semaphore, 1, 0) != 0",
     [] {
       basic::kernel_semaphore signal(0);
       dw_platform_fail_next(call::release_semaphore);
       signal.post();
     }},
    {"affinity_unavailable", "basic_processor_count.cpp", "affinity_processor_count",
     "GetProcessAffinityMask(GetCurrentProcess(), &pm, &sm) != 0",
     [] {
       dw_platform_fail_next(call::process_affinity);
       basic::affinity_processor_count();
     }},
#endif
};

class assure : public ::testing::TestWithParam<assure_case> {
 protected:
  void SetUp() override { use_threadsafe_death_tests(); }
};

TEST_P(assure, prints_its_check_and_aborts) {
  const assure_case& c = GetParam();
  ASSERT_NE(assure_check_line(c.file, c.anchor, c.expression), 0) << "no check " << c.expression << " in " << c.file;
  EXPECT_EXIT(c.fail(), aborted, assure_message(c.file, c.anchor, c.expression))
      << c.name;
}

INSTANTIATE_TEST_SUITE_P(every_check, assure, ::testing::ValuesIn(cases),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
