#include "engine/DownsampleKernels.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "engine/AlphaReciprocal.h"
#include "engine/DownsampleSimd.h"

namespace dw {

namespace {

// Each output row is reduced in chunks whose intermediate sums fit these stack arrays, so no tile
// or row needs memory of its own. The pads let vector loads and stores run past a chunk's last
// pixel into lanes nobody reads.
constexpr int32_t kChunkLanes = 4096;
constexpr int32_t kPadLanes = 32;

struct Rows {
  const uint8_t* row[4];
};

template <int F>
Rows superRows(const DownsampleTile& t, int32_t y) {
  Rows rows{};
  for (int r = 0; r < F; ++r) rows.row[r] = t.super + (size_t(F) * size_t(y) + size_t(r)) * size_t(t.superStride);
  return rows;
}

// Pixels per chunk: the chunk's sums fill at most kChunkLanes lanes.
int32_t chunkPixels(int32_t factor, int32_t channels) { return std::max<int32_t>(1, kChunkLanes / (factor * channels)); }

template <int F>
void opaqueKernel(const DownsampleTile& t) {
  const int32_t c = t.channels;
  const int32_t step = chunkPixels(F, c);
  const size_t rowBytes = size_t(t.tileWidth) * F * size_t(c);
  alignas(32) uint16_t sums[kChunkLanes + kPadLanes] = {};
  alignas(32) uint8_t result[kChunkLanes + kPadLanes] = {};
  for (int32_t y = 0; y < t.tileRows; ++y) {
    const Rows rows = superRows<F>(t, y);
    uint8_t* out = t.tile + size_t(y) * size_t(t.tileStride);
    for (int32_t x0 = 0; x0 < t.tileWidth; x0 += step) {
      const int32_t n = std::min(step, t.tileWidth - x0);
      const size_t offset = size_t(x0) * F * c;
      // 2 x 2 blocks may be reduced in one step; what it leaves goes the two-step way.
      const int32_t done = F == 2 ? simd::reduceTwoByTwo(rows.row, offset, rowBytes, n, c, result) : 0;
      if (done < n) {
        const size_t rest = offset + size_t(done) * F * c;
        simd::verticalByteSums<F>(rows.row, rest, size_t(n - done) * F * c, sums);
        if (c == 1)
          simd::horizontalGraySums<F>(sums, n - done, result + done);
        else
          simd::horizontalPixelSums<F>(sums, n - done, c, result + size_t(done) * c);
      }
      simd::storeChanged(out + size_t(x0) * c, result, size_t(n) * c);
    }
  }
}

// Per output pixel: alpha = A / F^2 and colour k = S[k] / A from the sums of the block's F / 2 pixel
// pairs, or, for a fully transparent block, alpha 0 with the colour bytes it held.
// C = 0: the channel count is only known at run time.
template <int F, int C>
void divideAlphaSums(const uint32_t* sums, int32_t n, int32_t channels, const uint8_t* old, uint8_t* result) {
  constexpr int shift = F == 2 ? 2 : 4;
  constexpr int pairs = F / 2;
  const int32_t c = C ? C : channels;
  alignas(16) uint32_t block[kMaxSimdChannels + 4];
  for (int32_t x = 0; x < n; ++x, old += c, result += c) {
    const uint32_t* s = sums + size_t(x) * pairs * c;
    if (C) {
      for (int32_t k = 0; k < c; ++k) {
        uint32_t sum = 0;
        for (int i = 0; i < pairs; ++i) sum += s[i * c + k];
        block[k] = sum;
      }
    } else {
      simd::sumAlphaPixels<pairs>(s, c, block);
    }
    const uint32_t alpha = block[0];
    if (alpha == 0) {
      result[0] = 0;
      for (int32_t k = 1; k < c; ++k) result[k] = old[k];
      continue;
    }
    result[0] = uint8_t(alpha >> shift);
    const uint64_t reciprocal = kAlphaReciprocals[alpha];
    for (int32_t k = 1; k < c; ++k) result[k] = uint8_t((block[k] * reciprocal) >> kAlphaReciprocalShift);
  }
}

template <int F>
void divideAlphaSums(const uint32_t* sums, int32_t n, int32_t c, const uint8_t* old, uint8_t* result) {
  switch (c) {
    case 2: return divideAlphaSums<F, 2>(sums, n, c, old, result);
    case 4: return divideAlphaSums<F, 4>(sums, n, c, old, result);
    case 5: return divideAlphaSums<F, 5>(sums, n, c, old, result);
    default: return divideAlphaSums<F, 0>(sums, n, c, old, result);
  }
}

template <int F>
void alphaKernel(const DownsampleTile& t) {
  const int32_t c = t.channels;
  const int32_t step = chunkPixels(F, c);
  const size_t rowBytes = size_t(t.tileWidth) * F * size_t(c);
  alignas(32) uint32_t sums[kChunkLanes + kPadLanes] = {};
  alignas(32) uint8_t result[kChunkLanes + kPadLanes] = {};
  for (int32_t y = 0; y < t.tileRows; ++y) {
    const Rows rows = superRows<F>(t, y);
    uint8_t* out = t.tile + size_t(y) * size_t(t.tileStride);
    for (int32_t x0 = 0; x0 < t.tileWidth; x0 += step) {
      const int32_t n = std::min(step, t.tileWidth - x0);
      simd::alphaPairSums<F>(rows.row, size_t(x0) * F * c, rowBytes, n * F / 2, c, sums);
      divideAlphaSums<F>(sums, n, c, out + size_t(x0) * c, result);
      simd::storeChanged(out + size_t(x0) * c, result, size_t(n) * c);
    }
  }
}

// Any other factor: plain sums and one division per output byte. 64-bit sums, so even absurd
// factors cannot overflow.
void opaqueAnyFactor(const DownsampleTile& t) {
  const int32_t f = t.factor, c = t.channels;
  const uint64_t area = uint64_t(f) * uint64_t(f);
  for (int32_t y = 0; y < t.tileRows; ++y) {
    uint8_t* out = t.tile + size_t(y) * size_t(t.tileStride);
    for (int32_t x = 0; x < t.tileWidth; ++x)
      for (int32_t k = 0; k < c; ++k) {
        uint64_t sum = 0;
        for (int32_t r = 0; r < f; ++r) {
          const uint8_t* px = t.super + (size_t(f) * y + r) * size_t(t.superStride) + (size_t(f) * x * c + k);
          for (int32_t i = 0; i < f; ++i) sum += px[size_t(i) * c];
        }
        const uint8_t value = uint8_t(sum / area);
        if (out[size_t(x) * c + k] != value) out[size_t(x) * c + k] = value;
      }
  }
}

void alphaAnyFactor(const DownsampleTile& t) {
  const int32_t f = t.factor, c = t.channels;
  const uint64_t area = uint64_t(f) * uint64_t(f);
  uint64_t sums[kMaxSimdChannels];
  for (int32_t y = 0; y < t.tileRows; ++y) {
    uint8_t* out = t.tile + size_t(y) * size_t(t.tileStride);
    for (int32_t x = 0; x < t.tileWidth; ++x) {
      for (int32_t k = 0; k < c; ++k) sums[k] = 0;
      for (int32_t r = 0; r < f; ++r) {
        const uint8_t* px = t.super + (size_t(f) * y + r) * size_t(t.superStride) + size_t(f) * x * c;
        for (int32_t i = 0; i < f; ++i, px += c) {
          const uint64_t alpha = px[0];
          sums[0] += alpha;
          for (int32_t k = 1; k < c; ++k) sums[k] += alpha * px[k];
        }
      }
      uint8_t* o = out + size_t(x) * c;
      const uint8_t alpha = uint8_t(sums[0] / area);
      if (o[0] != alpha) o[0] = alpha;
      if (sums[0] == 0) continue;
      for (int32_t k = 1; k < c; ++k) {
        const uint8_t value = uint8_t(sums[k] / sums[0]);
        if (o[k] != value) o[k] = value;
      }
    }
  }
}

bool usable(const DownsampleTile& t) {
  return t.super && t.tile && t.tileWidth > 0 && t.tileRows > 0 && t.channels > 0 &&
         t.channels <= kMaxSimdChannels && t.factor >= 1;
}

}  // namespace

void downsampleOpaque(const DownsampleTile& t) {
  if (!usable(t)) return;
  switch (t.factor) {
    case 2: return opaqueKernel<2>(t);
    case 4: return opaqueKernel<4>(t);
    default: return opaqueAnyFactor(t);
  }
}

void downsampleWithAlpha(const DownsampleTile& t) {
  if (!usable(t) || t.channels < 2) return;
  switch (t.factor) {
    case 2: return alphaKernel<2>(t);
    case 4: return alphaKernel<4>(t);
    default: return alphaAnyFactor(t);
  }
}

}  // namespace dw
