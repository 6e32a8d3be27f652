#pragma once
#include <cstdint>

namespace dw {

// Bytes one tile slot may use: the host's memory figure, limited by the low 32 bits of the
// machine's physical memory, at least 1 MiB, and at most the "rasterizeMemory" preference
// (section "Rasterize", MiB, 20 when it cannot be read). Read anew for every slot.
uint32_t rasterMemoryBudget();

namespace engine_testing {
// Replaces the machine's total physical memory (tests need a figure that does not depend on the
// machine); pass nullptr to go back to the system's answer.
void setPhysicalMemoryForTesting(const uint64_t* totalBytes);
}  // namespace engine_testing

}  // namespace dw
