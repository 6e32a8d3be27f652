#include "engine/MemoryBudget.h"

#include "shell/HostSuites.h"
#include "windows_compat.h"

namespace dw {

namespace {

constexpr uint32_t kMiB = 1048576;
constexpr int32_t kDefaultCapMiB = 20;

bool gPhysicalOverridden = false;
uint64_t gPhysicalOverride = 0;

bool totalPhysicalMemory(uint64_t& total) {
  if (gPhysicalOverridden) {
    total = gPhysicalOverride;
    return true;
  }
  MEMORYSTATUSEX status{};
  status.dwLength = sizeof status;
  if (!GlobalMemoryStatusEx(&status)) return false;
  total = status.ullTotalPhys;
  return true;
}

}  // namespace

uint32_t rasterMemoryBudget() {
  uint32_t budget = gSuites.runtime ? gSuites.runtime->GetMemoryFigure() : 0;
  uint64_t physical = 0;
  // Only the low 32 bits count, as a 32-bit host sees them.
  if (totalPhysicalMemory(physical) && uint32_t(physical) < budget) budget = uint32_t(physical);
  if (budget < kMiB) budget = kMiB;

  int32_t capMiB = kDefaultCapMiB;
  if (!gSuites.preference || gSuites.preference->GetIntegerPreference("Rasterize", "rasterizeMemory", &capMiB) != 0)
    capMiB = kDefaultCapMiB;
  // A negative preference allows nothing; one beyond 4 GiB allows everything 32 bits can say.
  const uint64_t cap = capMiB <= 0 ? 0 : uint64_t(capMiB) * kMiB;
  return cap < budget ? uint32_t(cap) : budget;
}

namespace engine_testing {
void setPhysicalMemoryForTesting(const uint64_t* totalBytes) {
  gPhysicalOverridden = totalBytes != nullptr;
  gPhysicalOverride = totalBytes ? *totalBytes : 0;
}
}  // namespace engine_testing

}  // namespace dw
