#pragma once
#include <cstdint>

namespace dw {

// True unless "DW_RASTERIZE_WITHOUT_MULTITHREADING" is set (any value, empty included). Read on the
// first call in the process and never again, so changing the variable later has no effect.
bool multithreadingEnabled();

// The variable as it is now; what the first call of multithreadingEnabled() keeps.
bool readMultithreadingSwitch();

// The processors the system reports (not the affinity mask): one tile slot each when supersampling.
uint32_t processorCount();

namespace engine_testing {
// Makes processorCount() answer count (0: the system's answer again), so tests can plan any number
// of slots on any machine.
void setProcessorCount(uint32_t count);
}  // namespace engine_testing

}  // namespace dw
