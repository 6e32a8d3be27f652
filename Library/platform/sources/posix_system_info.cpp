#include "posix_handle.h"

#include <climits>
#include <ctime>
#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr unsigned mask_bits = sizeof(DWORD_PTR) * CHAR_BIT;

// The pseudo-handle Windows returns for the current process.
HANDLE const current_process = reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(-1));

DWORD_PTR low_bits(long count) {
  if (count <= 0) return 0;
  if (static_cast<unsigned long>(count) >= mask_bits) return ~DWORD_PTR{0};
  return (DWORD_PTR{1} << count) - 1;
}

DWORDLONG pages_to_bytes(long pages) {
  if (pages <= 0) return 0;
  return static_cast<DWORDLONG>(pages) * static_cast<DWORDLONG>(sysconf(_SC_PAGESIZE));
}

}  // namespace

void GetSystemInfo(LPSYSTEM_INFO info) {
  const long page = sysconf(_SC_PAGESIZE);
  long processors = sysconf(_SC_NPROCESSORS_ONLN);
  if (processors < 1) processors = 1;
  *info = SYSTEM_INFO{};
  info->dwPageSize = static_cast<DWORD>(page);
  info->lpMinimumApplicationAddress = reinterpret_cast<LPVOID>(static_cast<std::uintptr_t>(page));
  info->lpMaximumApplicationAddress =
      reinterpret_cast<LPVOID>((std::uintptr_t{1} << (sizeof(void*) == 8 ? 47 : 31)) - 1);
  info->dwActiveProcessorMask = low_bits(processors);
  info->dwNumberOfProcessors = static_cast<DWORD>(processors);
  info->dwAllocationGranularity = static_cast<DWORD>(page);
}

HANDLE GetCurrentProcess() { return current_process; }

BOOL GetProcessAffinityMask(HANDLE process, PDWORD_PTR process_mask, PDWORD_PTR system_mask) {
  if (dw_platform::enter(dw_platform_call::process_affinity)) return FALSE;
  if (process != current_process || process_mask == nullptr || system_mask == nullptr) return FALSE;
  cpu_set_t set;
  CPU_ZERO(&set);
  if (sched_getaffinity(0, sizeof(set), &set) != 0) return FALSE;
  DWORD_PTR mask = 0;
  for (unsigned cpu = 0; cpu < mask_bits && cpu < CPU_SETSIZE; ++cpu)
    if (CPU_ISSET(cpu, &set)) mask |= DWORD_PTR{1} << cpu;
  *process_mask = mask;
  *system_mask = low_bits(sysconf(_SC_NPROCESSORS_CONF));
  return TRUE;
}

BOOL GlobalMemoryStatusEx(LPMEMORYSTATUSEX status) {
  if (status == nullptr || status->dwLength != sizeof(MEMORYSTATUSEX)) return FALSE;
  const DWORDLONG total = pages_to_bytes(sysconf(_SC_PHYS_PAGES));
  const DWORDLONG available = pages_to_bytes(sysconf(_SC_AVPHYS_PAGES));
  if (total == 0) return FALSE;
  status->ullTotalPhys = total;
  status->ullAvailPhys = available < total ? available : total;
  status->dwMemoryLoad = static_cast<DWORD>(100 - status->ullAvailPhys * 100 / total);
  status->ullTotalPageFile = total;
  status->ullAvailPageFile = status->ullAvailPhys;
  // The address space a process may use: its limit if one is set, otherwise the user half.
  DWORDLONG address_space = DWORDLONG{1} << (sizeof(void*) == 8 ? 47 : 31);
  rlimit limit{};
  if (getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY &&
      limit.rlim_cur < address_space)
    address_space = limit.rlim_cur;
  status->ullTotalVirtual = address_space;
  status->ullAvailVirtual = address_space;
  status->ullAvailExtendedVirtual = 0;
  return TRUE;
}

DWORD GetTickCount() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  const std::uint64_t milliseconds = static_cast<std::uint64_t>(now.tv_sec) * 1000u +
                                     static_cast<std::uint64_t>(now.tv_nsec) / 1000000u;
  return static_cast<DWORD>(milliseconds);  // wraps after 49.7 days, as on Windows
}
