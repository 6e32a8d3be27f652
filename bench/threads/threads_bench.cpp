// Costs of the threading library next to the standard library's nearest equivalents.
#include "basic_kernel_semaphore.h"
#include "basic_semaphore.h"
#include "basic_spin_count.h"
#include "basic_thread.h"
#include "basic_thread_base.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace {

void semaphore_wait_post(benchmark::State& state) {
  basic::semaphore lock(1, basic::spin_count());
  for (auto _ : state) {
    lock.wait();
    lock.post();
  }
}
BENCHMARK(semaphore_wait_post);

void std_mutex_lock_unlock(benchmark::State& state) {
  std::mutex lock;
  for (auto _ : state) {
    lock.lock();
    lock.unlock();
  }
}
BENCHMARK(std_mutex_lock_unlock);

struct nothing : basic::thread_function {
  void run() override { benchmark::ClobberMemory(); }
};

// The engine's pattern: one handle per slot, started and joined once per batch.
void pooled_thread_start_join(benchmark::State& state) {
  nothing work;
  basic::thread handle(512 * 1024);
  handle.set_function(&work);
  for (auto _ : state) {
    handle.start();
    handle.join();
  }
}
BENCHMARK(pooled_thread_start_join)->UseRealTime();

void std_thread_create_join(benchmark::State& state) {
  for (auto _ : state) std::thread([] { benchmark::ClobberMemory(); }).join();
}
BENCHMARK(std_thread_create_join)->UseRealTime();

// What every start would cost without the pool: a fresh OS thread with the same stack size.
void os_thread_create_join(benchmark::State& state) {
  nothing work;
  for (auto _ : state) {
    basic::detail::thread_base os_thread(512 * 1024);
    os_thread.set_function(&work);
    os_thread.start();
    os_thread.join();
  }
}
BENCHMARK(os_thread_create_join)->UseRealTime();

// Two threads pass a token back and forth through a pair of semaphores; one iteration is a round
// trip, so every wait is contended.
template <class Signal, class... Arguments>
void hand_over(benchmark::State& state, Arguments... arguments) {
  Signal ping(0, arguments...);
  Signal pong(0, arguments...);
  std::atomic<bool> stop{false};
  std::thread partner([&] {
    for (;;) {
      ping.wait();
      if (stop.load(std::memory_order_relaxed)) return;
      pong.post();
    }
  });
  for (auto _ : state) {
    ping.post();
    pong.wait();
  }
  stop = true;
  ping.post();
  partner.join();
}

// Kernel semaphores take one argument.
struct kernel_signal : basic::kernel_semaphore {
  explicit kernel_signal(std::int32_t value) : basic::kernel_semaphore(value) {}
};

struct std_signal {
  explicit std_signal(int value) : count(value) {}
  void wait() {
    std::unique_lock<std::mutex> guard(lock);
    ready.wait(guard, [this] { return count > 0; });
    --count;
  }
  void post() {
    std::lock_guard<std::mutex> guard(lock);
    ++count;
    ready.notify_one();
  }
  std::mutex lock;
  std::condition_variable ready;
  int count;
};

void hand_over_semaphore(benchmark::State& state) {
  hand_over<basic::semaphore>(state, basic::spin_count());
}
BENCHMARK(hand_over_semaphore)->UseRealTime();

void hand_over_semaphore_no_spin(benchmark::State& state) {
  hand_over<basic::semaphore>(state, std::uint32_t{0});
}
BENCHMARK(hand_over_semaphore_no_spin)->UseRealTime();

void hand_over_kernel_semaphore(benchmark::State& state) { hand_over<kernel_signal>(state); }
BENCHMARK(hand_over_kernel_semaphore)->UseRealTime();

void hand_over_std_condition_variable(benchmark::State& state) { hand_over<std_signal>(state); }
BENCHMARK(hand_over_std_condition_variable)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
  // A plug-in always lives in a process with threads. Before its first thread, glibc's mutex
  // skips the bus lock, which would flatter std::mutex.
  std::thread([] {}).join();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
