#pragma once
#include <array>
#include <cstdint>

namespace dw {

// Exact truncating division s / a for the alpha-weighted colour sums of the down-sampler, by a
// multiply and a shift: a is an alpha sum 1 .. 255 * 16 (a 4 x 4 block at most), and s <= 255 * a
// (each sample adds alpha times a byte).
//
// Why it is exact: m = ceil(2^40 / a) = (2^40 + r) / a with 0 <= r < a, so
// s * m / 2^40 = s / a + s * r / (a * 2^40). With s < 2^20 and r < 2^12 the second term is below
// 1 / a, and the fraction of s / a is at most (a - 1) / a, so the floor does not change.
// tests/engine checks the first and last numerator of every quotient for every a; the product is
// monotonic in s, so that covers every numerator.
constexpr uint32_t kMaxAlphaSum = 255 * 16;
constexpr int kAlphaReciprocalShift = 40;

constexpr std::array<uint64_t, kMaxAlphaSum + 1> makeAlphaReciprocals() {
  std::array<uint64_t, kMaxAlphaSum + 1> table{};
  for (uint32_t a = 1; a <= kMaxAlphaSum; ++a) table[a] = ((uint64_t(1) << kAlphaReciprocalShift) + a - 1) / a;
  return table;
}

// Built by the compiler, so ready before any worker thread runs; entry 0 is unused.
inline constexpr std::array<uint64_t, kMaxAlphaSum + 1> kAlphaReciprocals = makeAlphaReciprocals();

inline uint32_t divideByAlphaSum(uint32_t s, uint32_t a) {
  return uint32_t((uint64_t(s) * kAlphaReciprocals[a]) >> kAlphaReciprocalShift);
}

}  // namespace dw
