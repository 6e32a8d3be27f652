#include "engine/Accelerator.h"

#include <atomic>

#include "shell/HostSuites.h"

namespace dw {

namespace {
// 0 not yet asked, 1 disabled, 2 enabled. Atomic because workers read it while the main thread
// may start another rasterization; it is written only on the main thread.
std::atomic<int> gAcceleratorState{0};
}  // namespace

bool acceleratorEnabled() {
  if (!gSuites.hvExtension)
    gSuites.hvExtension = acquireSuiteAs<DWHVExtensionSuite>(kDWHVExtensionSuite, kDWHVExtensionSuiteVersion);
  int state = gAcceleratorState.load(std::memory_order_acquire);
  if (state == 0) {
    const DWHVExtensionSuite* suite = gSuites.hvExtension;
    state = suite && suite->IsEnabled && suite->IsEnabled() != 0 ? 2 : 1;
    gAcceleratorState.store(state, std::memory_order_release);
  }
  return state == 2;
}

const DWHVExtensionSuite* accelerator() {
  return gAcceleratorState.load(std::memory_order_acquire) == 2 ? gSuites.hvExtension : nullptr;
}

namespace engine_testing {
void resetAcceleratorCache() {
  gAcceleratorState.store(0, std::memory_order_release);
  gSuites.hvExtension = nullptr;
}
}  // namespace engine_testing

}  // namespace dw
