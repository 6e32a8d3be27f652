#include "engine/DownsampleSimd.h"

#include <atomic>
#include <cstring>

#include "engine/DownsampleKernels.h"

#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__)) && DW_DOWNSAMPLE_SSE2
// Hot loops get a second, 256-bit version, chosen once at run time on processors that have it.
#define DW_DOWNSAMPLE_AVX2 1
#include <immintrin.h>
#endif

namespace dw {
namespace simd {

namespace {

std::atomic<bool> gWideVectorsAllowed{true};

// The F rows are read as F streams at once; asking for data this far ahead keeps enough requests in
// flight when the tile comes from main memory. Prefetches past a buffer's end are harmless.
constexpr int kPrefetchDistance = 512;

#if DW_DOWNSAMPLE_AVX2
bool haveAvx2() {
  static const bool available = __builtin_cpu_supports("avx2") != 0;
  return available && gWideVectorsAllowed.load(std::memory_order_relaxed);
}
#endif

template <int F>
constexpr int divisionShift() {
  static_assert(F == 2 || F == 4, "the vector steps reduce 2 x 2 and 4 x 4 blocks");
  return F == 2 ? 2 : 4;  // / F^2
}

template <int F>
void verticalByteSumsScalar(const uint8_t* const* rows, size_t offset, size_t from, size_t n, uint16_t* out) {
  for (size_t j = from; j < n; ++j) {
    unsigned sum = 0;
    for (int r = 0; r < F; ++r) sum += rows[r][offset + j];
    out[j] = uint16_t(sum);
  }
}

#if DW_DOWNSAMPLE_AVX2
template <int F>
__attribute__((target("avx2"))) size_t verticalByteSumsAvx2(const uint8_t* const* rows, size_t offset, size_t n,
                                                            uint16_t* out) {
  size_t j = 0;
  for (; j + 32 <= n; j += 32) {
    __m256i lo = _mm256_setzero_si256(), hi = _mm256_setzero_si256();
    for (int r = 0; r < F; ++r) {
      const uint8_t* p = rows[r] + offset + j;
      _mm_prefetch(reinterpret_cast<const char*>(p) + kPrefetchDistance, _MM_HINT_T0);
      lo = _mm256_add_epi16(lo, _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))));
      hi = _mm256_add_epi16(hi, _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16))));
    }
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + j), lo);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + j + 16), hi);
  }
  return j;
}

// Byte shuffles that turn a 16-byte load of whole pixel pairs into multiply-add operands. Combo
// q = j c + k (pair j of the load, channel k) takes the 16-bit lanes 2q and 2q + 1 of operand q / 4:
// the values are channel k of the pair's two pixels, the multipliers their alphas (1 for the alpha
// channel itself), so one multiply-add gives the pair's alpha sum or alpha-weighted colour sum.
struct PairShuffle {
  alignas(32) uint8_t values[2][32];
  alignas(32) uint8_t alphas[2][32];
  alignas(32) uint8_t ones[2][32];
  int32_t pairsPerLoad;
};

PairShuffle makePairShuffle(int32_t c) {
  PairShuffle s{};
  s.pairsPerLoad = 16 / (2 * c);
  std::memset(s.values, 0x80, sizeof s.values);  // 0x80 shuffles in a zero
  std::memset(s.alphas, 0x80, sizeof s.alphas);
  for (int32_t q = 0; q < s.pairsPerLoad * c; ++q) {
    const int32_t j = q / c, k = q % c, operand = q / 4, byte = 4 * (q % 4);
    const int32_t first = 2 * j * c, second = (2 * j + 1) * c;  // the pair's pixels in the load
    for (int half = 0; half < 2; ++half) {
      uint8_t* values = s.values[operand] + 16 * half;
      uint8_t* alphas = s.alphas[operand] + 16 * half;
      uint8_t* ones = s.ones[operand] + 16 * half;
      values[byte] = uint8_t(first + k);
      values[byte + 2] = uint8_t(second + k);
      if (k == 0) {
        ones[byte] = ones[byte + 2] = 1;
      } else {
        alphas[byte] = uint8_t(first);
        alphas[byte + 2] = uint8_t(second);
      }
    }
  }
  return s;
}

const PairShuffle& pairShuffle(int32_t c) {
  static const PairShuffle table[9] = {{},
                                       makePairShuffle(1),
                                       makePairShuffle(2),
                                       makePairShuffle(3),
                                       makePairShuffle(4),
                                       makePairShuffle(5),
                                       makePairShuffle(6),
                                       makePairShuffle(7),
                                       makePairShuffle(8)};
  return table[c];
}

// Pixels of up to 8 channels: one half of the register takes the load's pairs, the other half the
// next load's. Returns the first pair it did not do.
template <int F>
__attribute__((target("avx2"))) int32_t alphaPairSumsAvx2(const uint8_t* const* rows, size_t offset,
                                                         size_t rowBytes, int32_t pairs, int32_t c, uint32_t* acc) {
  const PairShuffle& shuffle = pairShuffle(c);
  const int32_t ppl = shuffle.pairsPerLoad;
  const size_t loadStep = size_t(ppl) * 2 * c;
  const __m256i values0 = _mm256_load_si256(reinterpret_cast<const __m256i*>(shuffle.values[0]));
  const __m256i values1 = _mm256_load_si256(reinterpret_cast<const __m256i*>(shuffle.values[1]));
  const __m256i alphas0 = _mm256_load_si256(reinterpret_cast<const __m256i*>(shuffle.alphas[0]));
  const __m256i alphas1 = _mm256_load_si256(reinterpret_cast<const __m256i*>(shuffle.alphas[1]));
  const __m256i ones0 = _mm256_load_si256(reinterpret_cast<const __m256i*>(shuffle.ones[0]));
  const __m256i ones1 = _mm256_load_si256(reinterpret_cast<const __m256i*>(shuffle.ones[1]));
  int32_t j = 0;
  for (; j + 2 * ppl <= pairs && offset + size_t(j) * 2 * c + loadStep + 16 <= rowBytes; j += 2 * ppl) {
    __m256i sums0 = _mm256_setzero_si256(), sums1 = _mm256_setzero_si256();
    for (int r = 0; r < F; ++r) {
      const uint8_t* src = rows[r] + offset + size_t(j) * 2 * c;
      _mm_prefetch(reinterpret_cast<const char*>(src) + kPrefetchDistance, _MM_HINT_T0);
      const __m256i v = _mm256_inserti128_si256(
          _mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(src))),
          _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + loadStep)), 1);
      const __m256i m0 = _mm256_or_si256(_mm256_shuffle_epi8(v, alphas0), ones0);
      const __m256i m1 = _mm256_or_si256(_mm256_shuffle_epi8(v, alphas1), ones1);
      sums0 = _mm256_add_epi32(sums0, _mm256_madd_epi16(_mm256_shuffle_epi8(v, values0), m0));
      sums1 = _mm256_add_epi32(sums1, _mm256_madd_epi16(_mm256_shuffle_epi8(v, values1), m1));
    }
    // Lanes past the load's combos land on the next pairs' sums, which later stores overwrite.
    uint32_t* first = acc + size_t(j) * c;
    uint32_t* second = first + size_t(ppl) * c;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(first), _mm256_castsi256_si128(sums0));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(first + 4), _mm256_castsi256_si128(sums1));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(second), _mm256_extracti128_si256(sums0, 1));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(second + 4), _mm256_extracti128_si256(sums1, 1));
  }
  return j;
}
#endif

#if DW_DOWNSAMPLE_AVX2
// Byte shuffles that put channel k of a pixel pair's two pixels side by side, for a multiply-add of
// unsigned bytes by 1: output q = j c + k (pair j of the 16-byte load) takes bytes 2q and 2q + 1.
struct TwoByTwoShuffle {
  alignas(32) uint8_t pairs[32];
  int32_t pairsPerLoad;
};

TwoByTwoShuffle makeTwoByTwoShuffle(int32_t c) {
  TwoByTwoShuffle s{};
  s.pairsPerLoad = 16 / (2 * c);
  std::memset(s.pairs, 0x80, sizeof s.pairs);
  for (int32_t q = 0; q < s.pairsPerLoad * c; ++q) {
    const int32_t j = q / c, k = q % c;
    for (int half = 0; half < 2; ++half) {
      s.pairs[16 * half + 2 * q] = uint8_t(2 * j * c + k);
      s.pairs[16 * half + 2 * q + 1] = uint8_t((2 * j + 1) * c + k);
    }
  }
  return s;
}

const TwoByTwoShuffle& twoByTwoShuffle(int32_t c) {
  static const TwoByTwoShuffle table[9] = {{},
                                           makeTwoByTwoShuffle(1),
                                           makeTwoByTwoShuffle(2),
                                           makeTwoByTwoShuffle(3),
                                           makeTwoByTwoShuffle(4),
                                           makeTwoByTwoShuffle(5),
                                           makeTwoByTwoShuffle(6),
                                           makeTwoByTwoShuffle(7),
                                           makeTwoByTwoShuffle(8)};
  return table[c];
}

// Each 128-bit half takes one load of whole pixel pairs; the horizontal pair sums come from one
// multiply-add (at most 510, no saturation), the two rows are added, divided by 4 and packed, and
// each half's bytes are the outputs of its pairs, in order.
__attribute__((target("avx2"))) int32_t reduceTwoByTwoAvx2(const uint8_t* const* rows, size_t offset,
                                                          size_t rowBytes, int32_t n, int32_t c, uint8_t* result) {
  const TwoByTwoShuffle& shuffle = twoByTwoShuffle(c);
  const int32_t ppl = shuffle.pairsPerLoad;
  const size_t loadStep = size_t(ppl) * 2 * c;
  const __m256i control = _mm256_load_si256(reinterpret_cast<const __m256i*>(shuffle.pairs));
  const __m256i ones = _mm256_set1_epi8(1);
  int32_t x = 0;
  for (; x + 2 * ppl <= n && offset + size_t(x) * 2 * c + loadStep + 16 <= rowBytes; x += 2 * ppl) {
    __m256i sums = _mm256_setzero_si256();
    for (int r = 0; r < 2; ++r) {
      const uint8_t* src = rows[r] + offset + size_t(x) * 2 * c;
      _mm_prefetch(reinterpret_cast<const char*>(src) + kPrefetchDistance, _MM_HINT_T0);
      const __m256i v = _mm256_inserti128_si256(
          _mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(src))),
          _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + loadStep)), 1);
      sums = _mm256_add_epi16(sums, _mm256_maddubs_epi16(_mm256_shuffle_epi8(v, control), ones));
    }
    const __m256i bytes = _mm256_packus_epi16(_mm256_srli_epi16(sums, 2), _mm256_setzero_si256());
    // Bytes past the load's outputs land on the next outputs, which later stores overwrite.
    uint8_t* first = result + size_t(x) * c;
    _mm_storel_epi64(reinterpret_cast<__m128i*>(first), _mm256_castsi256_si128(bytes));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(first + size_t(ppl) * c), _mm256_extracti128_si256(bytes, 1));
  }
  return x;
}
#endif

// A zero alpha adds nothing, which is the same as skipping the sample.
template <int F, int C>
void alphaPairSumsScalar(const uint8_t* const* rows, size_t offset, int32_t from, int32_t pairs, int32_t channels,
                         uint32_t* acc) {
  const int32_t c = C ? C : channels;
  for (int32_t j = from; j < pairs; ++j) {
    uint32_t* a = acc + size_t(j) * c;
    for (int32_t k = 0; k < c; ++k) a[k] = 0;
    for (int r = 0; r < F; ++r) {
      const uint8_t* px = rows[r] + offset + size_t(j) * 2 * c;
      for (int i = 0; i < 2; ++i, px += c) {
        const uint32_t alpha = px[0];
        a[0] += alpha;
        for (int32_t k = 1; k < c; ++k) a[k] += alpha * px[k];
      }
    }
  }
}

}  // namespace

void storeChanged(uint8_t* dst, const uint8_t* src, size_t n) {
  size_t i = 0;
#if DW_DOWNSAMPLE_SSE2
  for (; i + 16 <= n; i += 16) {
    const __m128i now = _mm_loadu_si128(reinterpret_cast<const __m128i*>(dst + i));
    const __m128i next = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + i));
    if (_mm_movemask_epi8(_mm_cmpeq_epi8(now, next)) != 0xFFFF)
      _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + i), next);
  }
#endif
  for (; i < n; ++i)
    if (dst[i] != src[i]) dst[i] = src[i];
}

template <int F>
void verticalByteSums(const uint8_t* const* rows, size_t offset, size_t n, uint16_t* out) {
  size_t j = 0;
#if DW_DOWNSAMPLE_AVX2
  if (haveAvx2()) j = verticalByteSumsAvx2<F>(rows, offset, n, out);
#endif
#if DW_DOWNSAMPLE_SSE2
  const __m128i zero = _mm_setzero_si128();
  for (; j + 16 <= n; j += 16) {
    __m128i lo = zero, hi = zero;
    for (int r = 0; r < F; ++r) {
      _mm_prefetch(reinterpret_cast<const char*>(rows[r] + offset + j) + kPrefetchDistance, _MM_HINT_T0);
      const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(rows[r] + offset + j));
      lo = _mm_add_epi16(lo, _mm_unpacklo_epi8(v, zero));
      hi = _mm_add_epi16(hi, _mm_unpackhi_epi8(v, zero));
    }
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + j), lo);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + j + 8), hi);
  }
#endif
  verticalByteSumsScalar<F>(rows, offset, j, n, out);
}

template <int F>
void horizontalGraySums(const uint16_t* sums, int32_t n, uint8_t* result) {
  constexpr int shift = divisionShift<F>();
  int32_t x = 0;
#if DW_DOWNSAMPLE_SSE2
  const __m128i ones = _mm_set1_epi16(1);
  auto load = [](const uint16_t* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); };
  for (; x + 16 <= n; x += 16) {
    const uint16_t* s = sums + size_t(x) * F;
    __m128i lo, hi;
    if (F == 2) {
      // Pairs of neighbours: one multiply-add with ones each.
      const __m128i p0 = _mm_madd_epi16(load(s), ones), p1 = _mm_madd_epi16(load(s + 8), ones);
      const __m128i p2 = _mm_madd_epi16(load(s + 16), ones), p3 = _mm_madd_epi16(load(s + 24), ones);
      lo = _mm_packs_epi32(p0, p1);
      hi = _mm_packs_epi32(p2, p3);
    } else {
      // Pairs, packed back to 16 bits (at most 2040), then pairs of pairs.
      __m128i quads[4];
      for (int q = 0; q < 4; ++q) {
        const __m128i pairs = _mm_packs_epi32(_mm_madd_epi16(load(s + 16 * q), ones),
                                              _mm_madd_epi16(load(s + 16 * q + 8), ones));
        quads[q] = _mm_madd_epi16(pairs, ones);
      }
      lo = _mm_packs_epi32(quads[0], quads[1]);
      hi = _mm_packs_epi32(quads[2], quads[3]);
    }
    const __m128i bytes = _mm_packus_epi16(_mm_srli_epi16(lo, shift), _mm_srli_epi16(hi, shift));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(result + x), bytes);
  }
#endif
  for (; x < n; ++x) {
    unsigned sum = 0;
    for (int i = 0; i < F; ++i) sum += sums[size_t(x) * F + i];
    result[x] = uint8_t(sum >> shift);
  }
}

template <int F>
void horizontalPixelSums(const uint16_t* sums, int32_t n, int32_t c, uint8_t* result) {
  constexpr int shift = divisionShift<F>();
#if DW_DOWNSAMPLE_SSE2
  // Eight channels per vector; a last vector that would pass the pixel's end starts at c - 8
  // instead. Narrower pixels take one vector whose spare lanes the next pixel overwrites.
  const int32_t last = c > 8 ? c - 8 : 0;
  for (int32_t x = 0; x < n; ++x) {
    const uint16_t* s = sums + size_t(x) * F * c;
    uint8_t* o = result + size_t(x) * c;
    for (int32_t k = 0;; k += 8) {
      if (k > last) k = last;
      __m128i sum = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + k));
      for (int i = 1; i < F; ++i)
        sum = _mm_add_epi16(sum, _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + size_t(i) * c + k)));
      sum = _mm_srli_epi16(sum, shift);
      _mm_storel_epi64(reinterpret_cast<__m128i*>(o + k), _mm_packus_epi16(sum, sum));
      if (k == last) break;
    }
  }
#else
  for (int32_t x = 0; x < n; ++x)
    for (int32_t k = 0; k < c; ++k) {
      unsigned sum = 0;
      for (int i = 0; i < F; ++i) sum += sums[(size_t(x) * F + i) * c + k];
      result[size_t(x) * c + k] = uint8_t(sum >> shift);
    }
#endif
}

int32_t reduceTwoByTwo(const uint8_t* const* rows, size_t offset, size_t rowBytes, int32_t n, int32_t c,
                       uint8_t* result) {
#if DW_DOWNSAMPLE_AVX2
  if (c <= 8 && haveAvx2()) return reduceTwoByTwoAvx2(rows, offset, rowBytes, n, c, result);
#else
  (void)rows, (void)offset, (void)rowBytes, (void)n, (void)c, (void)result;
#endif
  return 0;
}

template <int F>
void alphaPairSums(const uint8_t* const* rows, size_t offset, size_t rowBytes, int32_t pairs, int32_t c,
                   uint32_t* acc) {
  int32_t j = 0;
#if DW_DOWNSAMPLE_AVX2
  if (c <= 8 && haveAvx2()) j = alphaPairSumsAvx2<F>(rows, offset, rowBytes, pairs, c, acc);
#else
  (void)rowBytes;
#endif
  switch (c) {
    case 2: return alphaPairSumsScalar<F, 2>(rows, offset, j, pairs, c, acc);
    case 4: return alphaPairSumsScalar<F, 4>(rows, offset, j, pairs, c, acc);
    case 5: return alphaPairSumsScalar<F, 5>(rows, offset, j, pairs, c, acc);
    default: return alphaPairSumsScalar<F, 0>(rows, offset, j, pairs, c, acc);
  }
}

}  // namespace simd

namespace engine_testing {
void allowWideVectors(bool allowed) { simd::gWideVectorsAllowed.store(allowed, std::memory_order_relaxed); }
}  // namespace engine_testing

namespace simd {

template void verticalByteSums<2>(const uint8_t* const*, size_t, size_t, uint16_t*);
template void verticalByteSums<4>(const uint8_t* const*, size_t, size_t, uint16_t*);
template void horizontalGraySums<2>(const uint16_t*, int32_t, uint8_t*);
template void horizontalGraySums<4>(const uint16_t*, int32_t, uint8_t*);
template void horizontalPixelSums<2>(const uint16_t*, int32_t, int32_t, uint8_t*);
template void horizontalPixelSums<4>(const uint16_t*, int32_t, int32_t, uint8_t*);
template void alphaPairSums<2>(const uint8_t* const*, size_t, size_t, int32_t, int32_t, uint32_t*);
template void alphaPairSums<4>(const uint8_t* const*, size_t, size_t, int32_t, int32_t, uint32_t*);

}  // namespace simd
}  // namespace dw
