#include "image_streams/SamplePosition.h"

#include <cmath>

namespace dw {

SamplePosition samplePosition(uint32_t i, uint32_t sourceLow, uint32_t sourceHigh, uint32_t destinationLow,
                              uint32_t destinationHigh, int32_t taps) {
  const float sourceExtent = float(sourceHigh - sourceLow);
  const float destinationExtent = float(destinationHigh - destinationLow);
  const float position = ((float(i) + 0.5f) / destinationExtent * sourceExtent + float(sourceLow) - 0.5f) * 32.0f;
  int32_t q = int32_t(std::lround(position));
  const int32_t highest = int32_t(int16_t(sourceHigh - sourceLow)) * 32;
  if (q > highest) q = highest;
  if (q < 0) q = 0;
  return SamplePosition{(q >> 5) - (taps - 1) / 2, uint8_t((q & 31) * taps)};
}

}  // namespace dw
