#pragma once
#include <algorithm>
#include <cstdint>

#include "image_streams/ResampleKernel.h"

namespace dw {

// Rounds a sum of 14-bit weighted samples back to a sample; negative lobes may overshoot, so
// clamp (min and max compile to conditional moves, not branches).
inline uint8_t fixedPointToSample(int32_t sum) {
  return uint8_t(std::min(std::max((sum + (resampleWeightOne >> 1)) >> resampleWeightBits, 0), 255));
}

}  // namespace dw
