#pragma once
#include <cstdint>
#include <memory>

#include "image_streams/ResampleKernel.h"

namespace dw {

// Filters one pixel-interleaved source row to the destination width, one planar output row per
// channel. Pixels split into a left run (taps before column 0), a middle run (every tap inside
// the row, so no bounds tests) and a right run (taps past the last column).
class HorizontalResampler {
 public:
  static constexpr uint32_t maxChannels = 8;
  using RowFunction = void (*)(const HorizontalResampler& resampler, const uint8_t* sourceRow);

  // Fastest takes the processor's vector unit where there is one; Portable is the plain C++
  // row function (every path gives the same bytes).
  enum class RowPath { Fastest, Portable };

  // False when a table cannot be allocated or the sizes are outside what the fields hold.
  bool Build(uint32_t channels, uint32_t sourceWidth, uint32_t destinationWidth, RowPath path = RowPath::Fastest);
  // Channel k of the next filtered row goes to slot + k * destination width.
  void SetOutputs(uint8_t* slot);
  void FilterRow(const uint8_t* sourceRow) const { rowFunction(*this, sourceRow); }
  // Pixels from .. to - 1 with every tap clamped to the row: the left and right runs.
  void FilterEdge(const uint8_t* sourceRow, int32_t from, int32_t to) const;

  uint8_t* output[maxChannels] = {};
  uint32_t channels = 0;
  int16_t sourceWidth = 0;
  int16_t destinationWidth = 0;
  int16_t taps = 0;
  const int16_t* kernel = nullptr;
  std::unique_ptr<int16_t[]> start;
  std::unique_ptr<uint8_t[]> phaseOffset;
  int32_t leftCount = 0;
  int32_t middleCount = 0;
  int32_t rightCount = 0;
  RowFunction rowFunction = nullptr;

  // For the vector path: one plane per channel (with room for an 8-byte load past the last
  // tap), every phase's weights padded with zeros to 8, and each pixel's padded weight offset.
  std::unique_ptr<uint8_t[]> planes;
  uint32_t planeStride = 0;
  std::unique_ptr<int16_t[]> paddedKernel;
  std::unique_ptr<uint16_t[]> paddedOffset;
};

}  // namespace dw
