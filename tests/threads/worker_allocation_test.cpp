// A worker that cannot be allocated ends the process like any other failed check. Its own program,
// since it replaces the global operator new.
#include "assure_line.h"
#include "basic_thread.h"
#include "basic_thread_function_base.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<bool> refuse_workers{false};
}

void* operator new(std::size_t size) {
  if (size == sizeof(basic::detail::thread_function_base) && refuse_workers.load())
    throw std::bad_alloc();
  if (void* memory = std::malloc(size ? size : 1)) return memory;
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

TEST(thread_cache, worker_allocation_failure_aborts) {
  use_threadsafe_death_tests();
  const char* const file = "basic_thread_cache.cpp";
  const char* const anchor = "thread_cache::acquire";
  const char* const expression = "(!\"unexpected exception\")";
  ASSERT_NE(assure_check_line(file, anchor, expression), 0);
  EXPECT_EXIT(
      {
        basic::thread_function work;
        basic::thread handle(64 * 1024);
        handle.set_function(&work);
        refuse_workers = true;
        handle.start();
      },
      aborted, assure_message(file, anchor, expression));
}

}  // namespace
