#pragma once
#include <cstdint>

namespace dw {

// Cubic convolution weights (a = -0.75) in 14-bit fixed point for 32 sub-pixel phases,
// widened by 1/scale for reductions. Phase-major: the weights of phase p are
// weights[p * taps .. p * taps + taps - 1], and each phase sums to exactly 16384.
struct ResampleKernel {
  int16_t taps;
  double scale;
  const int16_t* weights;
};

constexpr int32_t resamplePhases = 32;
constexpr int32_t resampleWeightBits = 14;
constexpr int32_t resampleWeightOne = 1 << resampleWeightBits;
constexpr int32_t resampleKernelCount = 5;
// The widest kernel; also how many rows a vertical row set and the source band's overlap hold.
constexpr int32_t resampleMaxTaps = 8;

// Tables 0 .. 4, built once on first use.
const ResampleKernel& resampleKernel(int32_t table);

// The table for scale = destination size / source size: each threshold is the geometric mean of
// two neighbouring kernel scales.
int32_t chooseResampleKernel(double scale);

// The single-precision scale of an axis, as the resamplers compare it.
double resampleScale(uint32_t sourceSize, uint32_t destinationSize);

}  // namespace dw
