// Many start/join batches on several handles from two driving threads at once, the way the
// engine drives its slots, with the pool shared between them.
#include "basic_thread.h"
#include "basic_thread_cache.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

namespace {

struct batch_work : basic::thread_function {
  std::uint64_t sum = 0;  // plain: ordered by start and join only
  int runs = 0;
  std::uint64_t next = 0;
  void run() override {
    sum += next;
    ++runs;
  }
};

TEST(thread_stress, batches_of_start_and_join_keep_every_result) {
  constexpr int drivers = 2;
  constexpr int batches = 1500;
  const std::uint32_t stacks[] = {64 * 1024, 128 * 1024, 512 * 1024, 512 * 1024};
  constexpr int slots = 4;

  basic::clear_thread_cache();
  const auto created = basic::detail::thread_cache::instance().workers_created();
  std::vector<std::vector<batch_work>> works(drivers, std::vector<batch_work>(slots));
  std::vector<std::thread> threads;
  for (int d = 0; d < drivers; ++d)
    threads.emplace_back([&, d] {
      std::vector<std::shared_ptr<basic::thread>> handles;
      for (const auto stack : stacks) handles.push_back(std::make_shared<basic::thread>(stack));
      for (int b = 0; b < batches; ++b) {
        for (int s = 0; s < slots; ++s) {
          works[d][s].next = static_cast<std::uint64_t>(b) * slots + s;
          handles[s]->set_function(&works[d][s]);
        }
        for (auto& h : handles) h->start();
        for (auto& h : handles) h->join();
      }
    });
  for (auto& t : threads) t.join();

  for (int d = 0; d < drivers; ++d)
    for (int s = 0; s < slots; ++s) {
      // Sum over b of (b * slots + s).
      const std::uint64_t expected =
          std::uint64_t{slots} * batches * (batches - 1) / 2 + std::uint64_t(s) * batches;
      EXPECT_EQ(works[d][s].runs, batches) << "driver " << d << " slot " << s;
      EXPECT_EQ(works[d][s].sum, expected) << "driver " << d << " slot " << s;
    }
  // Without reuse this would be drivers * slots * batches.
  EXPECT_LE(basic::detail::thread_cache::instance().workers_created() - created,
            std::uint64_t{2} * drivers * slots);
}

}  // namespace
