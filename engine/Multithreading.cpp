#include "engine/Multithreading.h"

#include <cstdlib>

#include "basic_processor_count.h"

namespace dw {

namespace {
uint32_t gProcessorOverride = 0;
}

bool readMultithreadingSwitch() { return std::getenv("DW_RASTERIZE_WITHOUT_MULTITHREADING") == nullptr; }

bool multithreadingEnabled() {
  static const bool enabled = readMultithreadingSwitch();
  return enabled;
}

uint32_t processorCount() { return gProcessorOverride ? gProcessorOverride : basic::system_processor_count(); }

namespace engine_testing {
void setProcessorCount(uint32_t count) { gProcessorOverride = count; }
}  // namespace engine_testing

}  // namespace dw
