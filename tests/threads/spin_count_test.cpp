#include "basic_processor_count.h"
#include "basic_spin_count.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sched.h>
#include <string>
#include <thread>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

// Runs the probe in a fresh process confined to `cpus` and returns what it printed.
std::string probe_under(const std::vector<int>& cpus) {
  int out[2];
  if (pipe(out) != 0) return "pipe failed";
  const pid_t child = fork();
  if (child == 0) {
    cpu_set_t set;
    CPU_ZERO(&set);
    for (int cpu : cpus) CPU_SET(cpu, &set);
    dup2(out[1], STDOUT_FILENO);
    if (sched_setaffinity(0, sizeof(set), &set) == 0)
      execl(SPIN_COUNT_PROBE, SPIN_COUNT_PROBE, nullptr);
    _exit(127);
  }
  close(out[1]);
  std::string text;
  char buffer[256];
  for (ssize_t n; (n = read(out[0], buffer, sizeof buffer)) > 0;) text.append(buffer, n);
  close(out[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return "probe failed";
  return text;
}

std::vector<int> allowed_cpus() {
  cpu_set_t set;
  CPU_ZERO(&set);
  sched_getaffinity(0, sizeof(set), &set);
  std::vector<int> cpus;
  for (int cpu = 0; cpu < CPU_SETSIZE; ++cpu)
    if (CPU_ISSET(cpu, &set)) cpus.push_back(cpu);
  return cpus;
}

// The system count is the same under any mask; libstdc++ asks the kernel for it independently.
std::string expected_for(std::size_t cpus) {
  return "spin_count=" + std::string(cpus == 1 ? "0" : "1024") + " affinity=" +
         std::to_string(cpus) + " system=" + std::to_string(std::thread::hardware_concurrency()) +
         "\n";
}

TEST(spin_count, follows_the_affinity_a_process_starts_with) {
  const std::vector<int> cpus = allowed_cpus();
  ASSERT_FALSE(cpus.empty());
  const std::vector<std::vector<int>> masks = {
      {cpus.front()},
      {cpus.back()},
      cpus,
      std::vector<int>(cpus.begin(), cpus.begin() + std::min<std::size_t>(2, cpus.size())),
  };
  for (const auto& mask : masks)
    EXPECT_EQ(probe_under(mask), expected_for(mask.size())) << mask.size() << " CPUs";

  EXPECT_EQ(basic::affinity_processor_count(), cpus.size());
  EXPECT_EQ(basic::spin_count(), cpus.size() == 1 ? 0u : 1024u);
}

}  // namespace
