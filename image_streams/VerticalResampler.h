#pragma once
#include <cstdint>

#include "image_streams/ResampleKernel.h"

namespace dw {

// Filters one destination row from the current row set (taps horizontally filtered rows per
// channel) and writes it pixel-interleaved.
class VerticalResampler {
 public:
  static constexpr uint32_t maxChannels = 8;
  using RowFunction = void (*)(const VerticalResampler& resampler, uint8_t* output);

  // Fastest takes the processor's vector unit where there is one; Portable is the plain C++
  // row function (every path gives the same bytes).
  enum class RowPath { Fastest, Portable };

  // Chooses the kernel for the heights and clears the row set; false for unusable sizes.
  bool Build(uint32_t channels, uint32_t sourceHeight, uint32_t destinationHeight, RowPath path = RowPath::Fastest);
  void FilterRow(uint8_t* output) const { rowFunction(*this, output); }

  // rows[k][t]: row t of the row set for channel k.
  const uint8_t* rows[maxChannels][resampleMaxTaps] = {};
  uint32_t channels = 0;
  int16_t outputWidth = 0;
  int16_t taps = 0;
  const int16_t* kernel = nullptr;
  uint8_t phaseOffset = 0;
  RowFunction rowFunction = nullptr;
};

}  // namespace dw
