// Every check of the library, made to fail: each prints its own line and aborts.
#include "assure_line.h"
#include "basic_kernel_semaphore.h"
#include "basic_processor_count.h"
#include "basic_semaphore.h"
#include "basic_thread.h"
#include "basic_thread_base.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <stdexcept>
#include <thread>

namespace {

struct idle_work : basic::thread_function {
  void run() override {}
};

struct throwing_work : basic::thread_function {
  void run() override { throw std::runtime_error("work failed"); }
};

constexpr std::uint32_t stack = 64 * 1024;

struct assure_case {
  const char* name;
  const char* file;
  const char* anchor;
  const char* expression;
  void (*fail)();
};

void PrintTo(const assure_case& c, std::ostream* out) { *out << c.name; }

const assure_case cases[] = {
    {"thread_destroyed_while_running", "basic_thread.cpp", "thread::~thread", "_acquired",
     [] {
       idle_work work;
       basic::thread handle(stack);
       handle.set_function(&work);
       handle.start();
     }},
    {"thread_set_function_while_running", "basic_thread.cpp", "void thread::set_function",
     "_acquired",
     [] {
       idle_work work;
       basic::thread handle(stack);
       handle.set_function(&work);
       handle.start();
       handle.set_function(&work);
     }},
    {"thread_started_without_function", "basic_thread.cpp", "void thread::start",
     "_acquired && _function != 0", [] { basic::thread(stack).start(); }},
    {"thread_started_twice", "basic_thread.cpp", "void thread::start",
     "_acquired && _function != 0",
     [] {
       idle_work work;
       basic::thread handle(stack);
       handle.set_function(&work);
       handle.start();
       handle.start();
     }},
    {"thread_joined_without_start", "basic_thread.cpp", "void thread::join", "!_acquired",
     [] { basic::thread(stack).join(); }},
    {"work_throws", "basic_thread_function_base.cpp", "::run()", "(!\"unexpected exception\")",
     [] {
       throwing_work work;
       basic::thread handle(stack);
       handle.set_function(&work);
       handle.start();
       handle.join();
     }},
    {"os_thread_function_set_while_running", "basic_thread_base.cpp",
     "void thread_base::set_function", "_thread == 0",
     [] {
       idle_work work;
       basic::detail::thread_base os_thread(stack);
       os_thread.set_function(&work);
       os_thread.start();
       os_thread.set_function(&work);
     }},
    {"os_thread_started_without_function", "basic_thread_base.cpp", "void thread_base::start",
     "_thread == 0 && _function != 0", [] { basic::detail::thread_base(stack).start(); }},
    {"os_thread_not_created", "basic_thread_base.cpp", "void thread_base::start", "_thread != 0",
     [] {
       idle_work work;
       basic::detail::thread_base os_thread(stack);
       os_thread.set_function(&work);
       dw_platform_fail_next(dw_platform_call::begin_thread);
       os_thread.start();
     }},
    {"os_thread_joined_without_start", "basic_thread_base.cpp", "void thread_base::join",
     "_thread != 0", [] { basic::detail::thread_base(stack).join(); }},
    {"os_thread_wait_fails", "basic_thread_base.cpp", "void thread_base::join",
     "WaitForSingleObject(_thread, INFINITE) == WAIT_OBJECT_0",
     [] {
       idle_work work;
       basic::detail::thread_base os_thread(stack);
       os_thread.set_function(&work);
       os_thread.start();
       dw_platform_fail_next(dw_platform_call::wait);
       os_thread.join();
     }},
    {"os_thread_close_fails", "basic_thread_base.cpp", "void thread_base::join",
     "CloseHandle(_thread) != 0",
     [] {
       idle_work work;
       basic::detail::thread_base os_thread(stack);
       os_thread.set_function(&work);
       os_thread.start();
       dw_platform_fail_next(dw_platform_call::close_handle);
       os_thread.join();
     }},
    {"exception_leaves_os_thread", "basic_thread_base.cpp", "thread_base::entry",
     "(\"unexpected exception\", 0)",
     [] {
       throwing_work work;
       basic::detail::thread_base os_thread(stack);
       os_thread.set_function(&work);
       os_thread.start();
       os_thread.join();
     }},
    {"semaphore_negative", "basic_semaphore.cpp", "semaphore::semaphore", "_value >= 0",
     [] { basic::semaphore(-1, 0); }},
    {"semaphore_not_created", "basic_semaphore.cpp", "semaphore::semaphore", "_semaphore != 0",
     [] {
       dw_platform_fail_next(dw_platform_call::create_semaphore);
       basic::semaphore(0, 0);
     }},
    {"semaphore_not_closed", "basic_semaphore.cpp", "semaphore::~semaphore",
     "CloseHandle(_semaphore) != 0",
     [] {
       basic::semaphore lock(1, 0);
       dw_platform_fail_next(dw_platform_call::close_handle);
     }},
    {"semaphore_wait_fails", "basic_semaphore.cpp", "semaphore::wait_in_kernel",
     "WaitForSingleObject(_semaphore, INFINITE) == WAIT_OBJECT_0",
     [] {
       basic::semaphore empty(0, 0);
       dw_platform_fail_next(dw_platform_call::wait);
       empty.wait();
     }},
    {"semaphore_release_fails", "basic_semaphore.cpp", "semaphore::wake_in_kernel",
     "ReleaseSemaphore(_semaphore, 1, 0) != 0",
     [] {
       auto* empty = new basic::semaphore(0, 0);
       std::thread([empty] { empty->wait(); }).detach();
       while (empty->value() >= 0) std::this_thread::yield();
       dw_platform_fail_next(dw_platform_call::release_semaphore);
       empty->post();
     }},
    {"kernel_semaphore_negative", "basic_kernel_semaphore.cpp", "kernel_semaphore::kernel_semaphore",
     "value >= 0", [] { basic::kernel_semaphore(-1); }},
    {"kernel_semaphore_not_created", "basic_kernel_semaphore.cpp",
     "kernel_semaphore::kernel_semaphore", "_semaphore != 0",
     [] {
       dw_platform_fail_next(dw_platform_call::create_semaphore);
       basic::kernel_semaphore(0);
     }},
    {"kernel_semaphore_not_closed", "basic_kernel_semaphore.cpp",
     "kernel_semaphore::~kernel_semaphore", "CloseHandle(_semaphore) != 0",
     [] {
       basic::kernel_semaphore signal(0);
       dw_platform_fail_next(dw_platform_call::close_handle);
     }},
    {"kernel_semaphore_wait_fails", "basic_kernel_semaphore.cpp", "kernel_semaphore::wait",
     "WaitForSingleObject(_semaphore, INFINITE) == WAIT_OBJECT_0",
     [] {
       basic::kernel_semaphore signal(1);
       dw_platform_fail_next(dw_platform_call::wait);
       signal.wait();
     }},
    {"kernel_semaphore_post_fails", "basic_kernel_semaphore.cpp", "kernel_semaphore::post",
     "ReleaseSemaphore(_semaphore, 1, 0) != 0",
     [] {
       basic::kernel_semaphore signal(0);
       dw_platform_fail_next(dw_platform_call::release_semaphore);
       signal.post();
     }},
    {"affinity_unavailable", "basic_processor_count.cpp", "affinity_processor_count",
     "GetProcessAffinityMask(GetCurrentProcess(), &pm, &sm) != 0",
     [] {
       dw_platform_fail_next(dw_platform_call::process_affinity);
       basic::affinity_processor_count();
     }},
};

class assure : public ::testing::TestWithParam<assure_case> {
 protected:
  void SetUp() override { use_threadsafe_death_tests(); }
};

TEST_P(assure, prints_its_check_and_aborts) {
  const assure_case& c = GetParam();
  const std::string expected = assure_line(c.file, c.anchor, c.expression);
  ASSERT_FALSE(expected.empty()) << "no check " << c.expression << " in " << c.file;
  EXPECT_EXIT(c.fail(), ::testing::KilledBySignal(SIGABRT), ::testing::HasSubstr(expected))
      << c.name;
}

INSTANTIATE_TEST_SUITE_P(every_check, assure, ::testing::ValuesIn(cases),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
