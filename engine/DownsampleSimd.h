#pragma once
#include <cstddef>
#include <cstdint>

#if defined(__SSE2__) || defined(_M_X64) || (defined(_M_IX86_FP) && _M_IX86_FP >= 2)
#define DW_DOWNSAMPLE_SSE2 1
#include <emmintrin.h>
#endif

// The vector steps of the down-sampler. Every step works on a chunk of one output row; the caller
// pads its arrays by 32 lanes, which the steps may read and write past the chunk.
namespace dw {

constexpr int32_t kMaxSimdChannels = 32;

namespace simd {

// Copies the bytes of src that differ from dst. Runs of 16 bytes that already match are not written.
void storeChanged(uint8_t* dst, const uint8_t* src, size_t n);

// out[j] = sum over F rows of rows[r][offset + j], j < n.
template <int F>
void verticalByteSums(const uint8_t* const* rows, size_t offset, size_t n, uint16_t* out);

// One channel: result[x] = (sum of sums[F x .. F x + F - 1]) / F^2, x < n.
template <int F>
void horizontalGraySums(const uint16_t* sums, int32_t n, uint8_t* result);

// c channels: result[x c + k] = (sum over i < F of sums[(F x + i) c + k]) / F^2, x < n.
template <int F>
void horizontalPixelSums(const uint16_t* sums, int32_t n, int32_t c, uint8_t* result);

// 2 x 2 blocks of c <= 8 channels in one step: result[x c + k] = block sum / 4 for outputs
// x = 0, 1, ... as far as the 256-bit step goes (none without it). Returns the outputs done.
int32_t reduceTwoByTwo(const uint8_t* const* rows, size_t offset, size_t rowBytes, int32_t n, int32_t c,
                       uint8_t* result);

// For each pair j of neighbouring supersampled pixels (2j, 2j + 1), over F rows:
// acc[j c] = sum of alpha, acc[j c + k] = sum of alpha * value_k. rowBytes bounds every read of a row.
template <int F>
void alphaPairSums(const uint8_t* const* rows, size_t offset, size_t rowBytes, int32_t pairs, int32_t c,
                   uint32_t* acc);

// block[k] = sum over i < N of sums[i c + k], k < c (lanes up to c + 3 may be written).
template <int N>
inline void sumAlphaPixels(const uint32_t* pixelSums, int32_t c, uint32_t* block) {
#if DW_DOWNSAMPLE_SSE2
  for (int32_t k = 0; k < c; k += 4) {
    __m128i sum = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixelSums + k));
    for (int i = 1; i < N; ++i)
      sum = _mm_add_epi32(sum, _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixelSums + size_t(i) * c + k)));
    _mm_store_si128(reinterpret_cast<__m128i*>(block + k), sum);
  }
#else
  for (int32_t k = 0; k < c; ++k) {
    uint32_t sum = 0;
    for (int i = 0; i < N; ++i) sum += pixelSums[size_t(i) * c + k];
    block[k] = sum;
  }
#endif
}

}  // namespace simd
}  // namespace dw
