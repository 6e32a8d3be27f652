#pragma once
#include <cstdint>

namespace dw {

// trunc(n / d) as one multiply and shift, exact for n < 2^24 and 1 <= d < 2^16: with
// m = ceil(2^40 / d) the error n * (m - 2^40 / d) / 2^40 stays below 2^-16 < 1 / d, too small
// to reach the next multiple of d, and n * m stays below 2^64.
class ExactDivider {
 public:
  static constexpr uint32_t maxDivisor = 0xFFFF;
  static constexpr uint32_t maxDividend = 0xFFFFFF;

  ExactDivider() = default;
  explicit ExactDivider(uint32_t divisor)
      : _multiplier(((uint64_t(1) << 40) + divisor - 1) / (divisor ? divisor : 1)) {}

  uint32_t divide(uint32_t dividend) const { return uint32_t((uint64_t(dividend) * _multiplier) >> 40); }

 private:
  uint64_t _multiplier = uint64_t(1) << 40;
};

}  // namespace dw
