#pragma once

#include <cstdint>

namespace basic {

// Processors the system reports, whatever the process's affinity; the engine runs this many
// slots in parallel.
std::uint32_t system_processor_count();

// Processors this process may run on: the bits of (process mask AND system mask).
std::uint32_t affinity_processor_count();

}  // namespace basic
