#include "image_streams/VectorRows.h"

#if defined(__SSE2__) || defined(_M_X64) || (defined(_M_IX86_FP) && _M_IX86_FP >= 2)
#define DW_STREAMS_SSE2 1
#include <emmintrin.h>
#endif

#include <cstring>

#include "image_streams/FixedPoint.h"

namespace dw {

#if DW_STREAMS_SSE2

namespace {

inline void storeFour(uint8_t* to, __m128i bytes) {
  const int32_t four = _mm_cvtsi128_si32(bytes);
  std::memcpy(to, &four, 4);
}

// Four 32-bit sums to four clamped samples: the same rounding, shift and clamp as
// fixedPointToSample, the clamp done by the saturating packs.
inline __m128i toSamples(__m128i sums) {
  const __m128i rounded =
      _mm_srai_epi32(_mm_add_epi32(sums, _mm_set1_epi32(resampleWeightOne >> 1)), resampleWeightBits);
  const __m128i words = _mm_packs_epi32(rounded, rounded);
  return _mm_packus_epi16(words, words);
}

// Eight taps of one plane against one phase's padded weights: four partial sums.
inline __m128i tapProducts(const uint8_t* plane, const int16_t* weights) {
  const __m128i pixels =
      _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(plane)), _mm_setzero_si128());
  return _mm_madd_epi16(pixels, _mm_loadu_si128(reinterpret_cast<const __m128i*>(weights)));
}

// Channels 0 stands for any count up to eight, read at run time. The middle run reads each
// channel's plane with 8-byte loads, zero weights covering the taps past the kernel's; four
// pixels at a time, the remainder of the run one by one.
template <uint32_t Channels>
void horizontalRow(const HorizontalResampler& h, const uint8_t* row) {
  const uint32_t channels = Channels ? Channels : h.channels;
  const int32_t first = h.leftCount;
  const int32_t end = h.leftCount + h.middleCount;
  h.FilterEdge(row, 0, first);
  if (end > first) {
    // Only the columns the middle run reads go into the planes.
    const int32_t from = h.start[first];
    const int32_t to = h.start[end - 1] + h.taps;
    uint8_t* plane[HorizontalResampler::maxChannels];
    for (uint32_t k = 0; k < channels; ++k) plane[k] = h.planes.get() + k * h.planeStride;
    const uint8_t* pixel = row + uint32_t(from) * channels;
    for (int32_t p = from; p < to; ++p, pixel += channels)
      for (uint32_t k = 0; k < channels; ++k) plane[k][p] = pixel[k];
  }
  const int16_t* start = h.start.get();
  const uint16_t* offset = h.paddedOffset.get();
  const int16_t* weights = h.paddedKernel.get();
  for (uint32_t k = 0; k < channels; ++k) {
    const uint8_t* plane = h.planes.get() + k * h.planeStride;
    uint8_t* out = h.output[k];
    int32_t x = first;
    for (; x + 4 <= end; x += 4) {
      const __m128i s0 = tapProducts(plane + start[x], weights + offset[x]);
      const __m128i s1 = tapProducts(plane + start[x + 1], weights + offset[x + 1]);
      const __m128i s2 = tapProducts(plane + start[x + 2], weights + offset[x + 2]);
      const __m128i s3 = tapProducts(plane + start[x + 3], weights + offset[x + 3]);
      const __m128i t0 = _mm_add_epi32(_mm_unpacklo_epi32(s0, s1), _mm_unpackhi_epi32(s0, s1));
      const __m128i t1 = _mm_add_epi32(_mm_unpacklo_epi32(s2, s3), _mm_unpackhi_epi32(s2, s3));
      storeFour(out + x, toSamples(_mm_add_epi32(_mm_unpacklo_epi64(t0, t1), _mm_unpackhi_epi64(t0, t1))));
    }
    for (; x < end; ++x) {
      int32_t sum = 0;
      for (int32_t j = 0; j < 8; ++j) sum += weights[offset[x] + j] * plane[start[x] + j];
      out[x] = fixedPointToSample(sum);
    }
  }
  h.FilterEdge(row, end, h.destinationWidth);
}

// Taps pair up for the multiply-add: rows t and t + 1 interleaved word by word against
// (w[t], w[t + 1]). An odd last tap pairs with itself at weight 0. Eight pixels at a time per
// channel, written interleaved; the last few pixels one by one.
template <int32_t Taps>
void verticalRow(const VerticalResampler& v, uint8_t* output) {
  const uint32_t channels = v.channels;
  const int32_t width = v.outputWidth;
  const int16_t* w = v.kernel + v.phaseOffset;
  constexpr int32_t pairs = (Taps + 1) / 2;
  __m128i weightPair[pairs];
  for (int32_t p = 0; p < pairs; ++p) {
    const int32_t high = 2 * p + 1 < Taps ? w[2 * p + 1] : 0;
    weightPair[p] = _mm_set1_epi32(int32_t((uint32_t(uint16_t(high)) << 16) | uint16_t(w[2 * p])));
  }
  const __m128i zero = _mm_setzero_si128();
  for (uint32_t k = 0; k < channels; ++k) {
    const uint8_t* const* rows = v.rows[k];
    uint8_t* out = output + k;
    int32_t x = 0;
    for (; x + 8 <= width; x += 8) {
      __m128i low = zero;
      __m128i high = zero;
      for (int32_t p = 0; p < pairs; ++p) {
        const uint8_t* second = 2 * p + 1 < Taps ? rows[2 * p + 1] : rows[2 * p];
        const __m128i a = _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(rows[2 * p] + x)), zero);
        const __m128i b = _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(second + x)), zero);
        low = _mm_add_epi32(low, _mm_madd_epi16(_mm_unpacklo_epi16(a, b), weightPair[p]));
        high = _mm_add_epi32(high, _mm_madd_epi16(_mm_unpackhi_epi16(a, b), weightPair[p]));
      }
      const __m128i roundedLow =
          _mm_srai_epi32(_mm_add_epi32(low, _mm_set1_epi32(resampleWeightOne >> 1)), resampleWeightBits);
      const __m128i roundedHigh =
          _mm_srai_epi32(_mm_add_epi32(high, _mm_set1_epi32(resampleWeightOne >> 1)), resampleWeightBits);
      const __m128i words = _mm_packs_epi32(roundedLow, roundedHigh);
      alignas(16) uint8_t samples[16];
      _mm_store_si128(reinterpret_cast<__m128i*>(samples), _mm_packus_epi16(words, words));
      for (int32_t i = 0; i < 8; ++i) out[(x + i) * int32_t(channels)] = samples[i];
    }
    for (; x < width; ++x) {
      int32_t sum = 0;
      for (int32_t t = 0; t < Taps; ++t) sum += w[t] * rows[t][x];
      out[x * int32_t(channels)] = fixedPointToSample(sum);
    }
  }
}

}  // namespace

HorizontalResampler::RowFunction vectorHorizontalRow(uint32_t channels) {
  switch (channels) {
    case 1:
      return horizontalRow<1>;
    case 3:
      return horizontalRow<3>;
    case 4:
      return horizontalRow<4>;
    default:
      return horizontalRow<0>;
  }
}

VerticalResampler::RowFunction vectorVerticalRow(int32_t taps) {
  switch (taps) {
    case 2:
      return verticalRow<2>;
    case 3:
      return verticalRow<3>;
    case 4:
      return verticalRow<4>;
    case 5:
      return verticalRow<5>;
    case 6:
      return verticalRow<6>;
    case 7:
      return verticalRow<7>;
    case 8:
      return verticalRow<8>;
    default:
      return nullptr;
  }
}

#else

HorizontalResampler::RowFunction vectorHorizontalRow(uint32_t) { return nullptr; }
VerticalResampler::RowFunction vectorVerticalRow(int32_t) { return nullptr; }

#endif

}  // namespace dw
