#pragma once
#include <cstdint>

namespace dw {

// Where destination index i samples the source, for a kernel of `taps` taps: the first source
// index its taps cover and the offset of its phase's weights in the kernel table.
struct SamplePosition {
  int32_t start;
  uint8_t phaseOffset;
};

// Computed in single precision at 1/32-pixel resolution; the same routine serves both axes.
SamplePosition samplePosition(uint32_t i, uint32_t sourceLow, uint32_t sourceHigh, uint32_t destinationLow,
                              uint32_t destinationHigh, int32_t taps);

}  // namespace dw
