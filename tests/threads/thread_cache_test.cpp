#include "basic_thread.h"
#include "basic_thread_cache.h"
#include "work_probe.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace {

using basic::detail::thread_cache;
using basic::detail::thread_function_base;
constexpr std::uint32_t KiB = 1024;

std::vector<std::uint32_t> idle_sizes() {
  std::vector<std::uint32_t> sizes;
  for (const auto* worker : thread_cache::instance().idle_workers())
    sizes.push_back(worker->stack_size());
  return sizes;
}

// Leaves the pool holding exactly one idle worker of each size, in the order of `sizes`' joins.
void seed_pool(const std::vector<std::uint32_t>& sizes) {
  basic::clear_thread_cache();
  std::vector<std::unique_ptr<basic::thread>> handles;
  std::vector<probe_work> works(sizes.size());
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    handles.push_back(std::make_unique<basic::thread>(sizes[i]));
    handles.back()->set_function(&works[i]);
    handles.back()->start();
  }
  for (auto& h : handles) h->join();
}

struct reuse_case {
  const char* name;
  std::uint32_t request;
  bool creates;
  std::vector<std::uint32_t> idle_while_running;
};

TEST(thread_cache, reuses_a_worker_only_below_four_times_the_request) {
  const reuse_case cases[] = {
      {"100 KiB: 512 is not below 400, a new worker", 100 * KiB, true, {64 * KiB, 512 * KiB}},
      {"200 KiB: 512 is below 800, takes it", 200 * KiB, false, {64 * KiB}},
      {"48 KiB: takes the 64 KiB worker", 48 * KiB, false, {512 * KiB}},
      {"16 KiB: 64 is not below 64, a new worker", 16 * KiB, true, {64 * KiB, 512 * KiB}},
      {"512 KiB: an exact fit", 512 * KiB, false, {64 * KiB}},
      {"600 KiB: nothing large enough", 600 * KiB, true, {64 * KiB, 512 * KiB}},
  };
  for (const auto& c : cases) {
    seed_pool({64 * KiB, 512 * KiB});
    ASSERT_EQ(idle_sizes(), (std::vector<std::uint32_t>{64 * KiB, 512 * KiB})) << c.name;
    const auto created = thread_cache::instance().workers_created();
    basic::thread handle(c.request);
    probe_work work;
    handle.set_function(&work);
    handle.start();
    EXPECT_EQ(idle_sizes(), c.idle_while_running) << c.name;
    handle.join();
    EXPECT_EQ(thread_cache::instance().workers_created() - created, c.creates ? 1u : 0u) << c.name;
    EXPECT_EQ(idle_sizes().size(), c.creates ? 3u : 2u) << c.name;
  }
}

TEST(thread_cache, most_recently_released_worker_comes_first) {
  seed_pool({64 * KiB, 64 * KiB, 64 * KiB, 32 * KiB});
  const auto idle = thread_cache::instance().idle_workers();
  ASSERT_EQ(idle_sizes(), (std::vector<std::uint32_t>{32 * KiB, 64 * KiB, 64 * KiB, 64 * KiB}));

  basic::thread handle(64 * KiB);
  probe_work work;
  handle.set_function(&work);
  handle.start();
  // The three equal workers were joined first to last, so the last sits first and is taken.
  EXPECT_EQ(thread_cache::instance().idle_workers(),
            (std::vector<const thread_function_base*>{idle[0], idle[2], idle[3]}));
  handle.join();
  EXPECT_EQ(thread_cache::instance().idle_workers(), idle);
}

#if defined(__linux__)
int process_threads() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind("Threads:", 0) == 0) return std::stoi(line.substr(8));
  return -1;
}

// A joined thread may linger in the process table for a moment after its join.
int settled_threads(int expected) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
  int now = process_threads();
  while (now != expected && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    now = process_threads();
  }
  return now;
}
#endif

TEST(thread_cache, clear_ends_every_idle_worker) {
  // A first worker brings up any helper thread the runtime starts lazily (sanitizers have one).
  seed_pool({64 * KiB});
  basic::clear_thread_cache();
#if defined(__linux__)
  const int threads = settled_threads(process_threads());
#endif
  seed_pool({64 * KiB, 128 * KiB, 512 * KiB});
  ASSERT_EQ(idle_sizes().size(), 3u);
#if defined(__linux__)
  EXPECT_EQ(process_threads(), threads + 3);
#endif
  basic::clear_thread_cache();
  EXPECT_TRUE(idle_sizes().empty());
#if defined(__linux__)
  EXPECT_EQ(settled_threads(threads), threads);
#endif
  const auto created = thread_cache::instance().workers_created();
  basic::thread handle(64 * KiB);
  probe_work work;
  handle.set_function(&work);
  handle.start();
  handle.join();
  EXPECT_EQ(thread_cache::instance().workers_created() - created, 1u);
  EXPECT_EQ(work.runs, 1);
}

}  // namespace
