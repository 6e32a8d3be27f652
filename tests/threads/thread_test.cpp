#include "basic_thread.h"
#include "basic_thread_cache.h"
#include "work_probe.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <numeric>

namespace {

using basic::detail::thread_cache;

TEST(thread, runs_work_elsewhere_and_join_publishes_its_writes) {
  for (const std::uint32_t requested : {48u * 1024, 64u * 1024, 512u * 1024, 0u}) {
    const std::uint32_t expected_stack = requested ? requested : basic::thread::default_stack_size;
    basic::thread handle(requested);
    EXPECT_EQ(handle.stack_size, expected_stack);
    probe_work work;
    handle.set_function(&work);
    handle.start();
    handle.join();
    EXPECT_EQ(work.runs, 1) << requested;
    EXPECT_NE(work.ran_on, std::this_thread::get_id()) << requested;
    EXPECT_EQ(std::accumulate(work.written.begin(), work.written.end(), 0), 1000) << requested;
#if defined(__linux__)
    EXPECT_GE(work.stack_bytes, expected_stack) << requested;
#endif
  }
}

// The second start reuses the worker the first join released: one OS thread for the lot.
TEST(thread, restarting_a_handle_reuses_one_worker) {
  basic::clear_thread_cache();
  const auto created = thread_cache::instance().workers_created();
  basic::thread handle(96 * 1024);
  probe_work first;
  probe_work second;
  std::thread::id worker_thread;
  for (int i = 0; i < 50; ++i) {
    probe_work& work = i % 2 ? second : first;
    handle.set_function(&work);
    handle.start();
    handle.join();
    if (i == 0) worker_thread = work.ran_on;
    EXPECT_EQ(work.ran_on, worker_thread) << "round " << i;
  }
  EXPECT_EQ(first.runs, 25);
  EXPECT_EQ(second.runs, 25);
  EXPECT_EQ(thread_cache::instance().workers_created() - created, 1u);
  EXPECT_EQ(thread_cache::instance().idle_workers().size(), 1u);
}

// Each work waits for all the others to arrive, which only finishes if they run at once.
TEST(thread, handles_run_in_parallel) {
  constexpr int count = 3;
  struct meeting_work : basic::thread_function {
    std::atomic<int>* arrived = nullptr;
    bool met = false;
    void run() override {
      arrived->fetch_add(1);
      const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
      while (arrived->load() < count && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();
      met = arrived->load() == count;
    }
  };
  std::atomic<int> arrived{0};
  meeting_work works[count];
  std::unique_ptr<basic::thread> handles[count];
  for (int i = 0; i < count; ++i) {
    works[i].arrived = &arrived;
    handles[i] = std::make_unique<basic::thread>(512 * 1024);
    handles[i]->set_function(&works[i]);
  }
  for (auto& h : handles) h->start();
  for (auto& h : handles) h->join();
  for (int i = 0; i < count; ++i) EXPECT_TRUE(works[i].met) << "work " << i;
}

}  // namespace
