#include "refhost/render/Accelerator.h"

#include <cstring>
#include <vector>

namespace refhost::render {

namespace {

constexpr DWErr kBadDescriptor = 0x50524D21;  // 'PRM!'

bool usable(const DWImageDescriptor& d) { return d.base && d.rows >= 0 && d.columns >= 0 && d.pixelBytes > 0; }

// Source and destination must agree on the block geometry.
bool fits(const DWImageDescriptor& src, const DWImageDescriptor& dst, std::int32_t f) {
  return usable(src) && usable(dst) && f >= 1 && f <= 16 && src.rows >= dst.rows * f && src.columns >= dst.columns * f;
}

inline const std::uint8_t* at(const DWImageDescriptor& d, std::int32_t x, std::int32_t y) {
  return d.base + static_cast<std::ptrdiff_t>(y) * d.rowBytes + static_cast<std::ptrdiff_t>(x) * d.pixelBytes;
}

// Weighted mean of one byte offset over a block; false for a fully transparent block.
inline bool weighted(const DWImageDescriptor& src, const DWImageDescriptor& alpha, std::int32_t x, std::int32_t y,
                     std::int32_t f, std::int32_t offset, std::uint8_t* out) {
  std::int32_t a = 0, s = 0;
  for (std::int32_t j = 0; j < f; ++j)
    for (std::int32_t i = 0; i < f; ++i) {
      const std::int32_t w = *at(alpha, x * f + i, y * f + j);
      if (w == 0) continue;
      a += w;
      s += w * at(src, x * f + i, y * f + j)[offset];
    }
  if (a < 1) return false;
  *out = static_cast<std::uint8_t>(s / a);
  return true;
}

// Row-wise reductions for the layouts the engine hands over (factor 2 or 4, whole pixels of up to
// 8 bytes, the alpha descriptor on the source's first byte): the f source rows of an output row
// are summed column by column first, a loop the compiler turns into wide vector adds, and then
// each output pixel adds f column sums. Same sums and divisions as the generic loops, so the same
// bytes. The column sums live in a buffer per thread that only grows.
std::vector<std::uint32_t>& columnSums() {
  thread_local std::vector<std::uint32_t> sums;
  return sums;
}

template <int F, int N>
void reduceRows(const DWImageDescriptor& src, const DWImageDescriptor& dst, std::uint32_t* sums) {
  constexpr int kShift = F == 2 ? 2 : 4;
  const std::size_t bytes = static_cast<std::size_t>(dst.columns) * F * N;
  for (std::int32_t y = 0; y < dst.rows; ++y) {
    const std::uint8_t* s = at(src, 0, y * F);
    for (std::size_t i = 0; i < bytes; ++i) sums[i] = s[i];
    for (int j = 1; j < F; ++j) {
      s += src.rowBytes;
      for (std::size_t i = 0; i < bytes; ++i) sums[i] += s[i];
    }
    std::uint8_t* d = const_cast<std::uint8_t*>(at(dst, 0, y));
    const std::uint32_t* c = sums;
    for (std::int32_t x = 0; x < dst.columns; ++x, d += dst.pixelBytes, c += F * N)
      for (int k = 0; k < N; ++k) {
        std::uint32_t t = 0;
        for (int i = 0; i < F; ++i) t += c[i * N + k];
        d[k] = static_cast<std::uint8_t>(t >> kShift);
      }
  }
}

// Alpha first: per column the alpha sum and, for each colour byte, the sum of alpha times value.
template <int F, int N>
void reduceRowsWithAlpha(const DWImageDescriptor& src, const DWImageDescriptor& dst, std::uint32_t* sums) {
  constexpr int kShift = F == 2 ? 2 : 4;
  const std::size_t pixels = static_cast<std::size_t>(dst.columns) * F;
  for (std::int32_t y = 0; y < dst.rows; ++y) {
    for (int j = 0; j < F; ++j) {
      const std::uint8_t* s = at(src, 0, y * F + j);
      std::uint32_t* c = sums;
      if (j == 0) {
        for (std::size_t i = 0; i < pixels; ++i, s += src.pixelBytes, c += N) {
          const std::uint32_t a = s[0];
          c[0] = a;
          for (int k = 1; k < N; ++k) c[k] = a * s[k];
        }
      } else {
        for (std::size_t i = 0; i < pixels; ++i, s += src.pixelBytes, c += N) {
          const std::uint32_t a = s[0];
          c[0] += a;
          for (int k = 1; k < N; ++k) c[k] += a * s[k];
        }
      }
    }
    std::uint8_t* d = const_cast<std::uint8_t*>(at(dst, 0, y));
    const std::uint32_t* c = sums;
    for (std::int32_t x = 0; x < dst.columns; ++x, d += dst.pixelBytes, c += F * N) {
      std::uint32_t t[N] = {};
      for (int i = 0; i < F; ++i)
        for (int k = 0; k < N; ++k) t[k] += c[i * N + k];
      if (t[0] < 1) {
        d[0] = 0;
        continue;
      }
      d[0] = static_cast<std::uint8_t>(t[0] >> kShift);
      for (int k = 1; k < N; ++k) d[k] = static_cast<std::uint8_t>(t[k] / t[0]);
    }
  }
}

template <bool Alpha, int F>
bool reduceFastF(const DWImageDescriptor& src, const DWImageDescriptor& dst, std::uint32_t* sums) {
  switch (src.pixelBytes) {
#define DW_REDUCE_CASE(n)                                  \
  case n:                                                  \
    if (Alpha)                                             \
      reduceRowsWithAlpha<F, n>(src, dst, sums);           \
    else                                                   \
      reduceRows<F, n>(src, dst, sums);                    \
    return true;
    DW_REDUCE_CASE(1)
    DW_REDUCE_CASE(2)
    DW_REDUCE_CASE(3)
    DW_REDUCE_CASE(4)
    DW_REDUCE_CASE(5)
    DW_REDUCE_CASE(6)
    DW_REDUCE_CASE(7)
    DW_REDUCE_CASE(8)
#undef DW_REDUCE_CASE
    default:
      return false;
  }
}

template <bool Alpha>
bool reduceFast(const DWImageDescriptor& src, const DWImageDescriptor& dst, std::int32_t f) {
  if ((f != 2 && f != 4) || src.pixelBytes > 8 || (Alpha && src.pixelBytes < 2) || dst.pixelBytes < src.pixelBytes)
    return false;
  if (src.rowBytes < src.columns * src.pixelBytes) return false;
  if (dst.rows == 0 || dst.columns == 0) return true;
  std::vector<std::uint32_t>& sums = columnSums();
  const std::size_t need = static_cast<std::size_t>(dst.columns) * static_cast<std::size_t>(f) * static_cast<std::size_t>(src.pixelBytes);
  if (sums.size() < need) sums.resize(need);
  return f == 2 ? reduceFastF<Alpha, 2>(src, dst, sums.data()) : reduceFastF<Alpha, 4>(src, dst, sums.data());
}

}  // namespace

AcceleratorSwitches& acceleratorSwitches() {
  static AcceleratorSwitches switches;
  return switches;
}

void fillBytes(std::uint8_t* buffer, std::int32_t rows, std::int32_t rowBytes, std::int32_t count, std::uint8_t value) {
  if (!buffer || rows <= 0 || count <= 0) return;
  for (std::int32_t y = 0; y < rows; ++y) std::memset(buffer + static_cast<std::ptrdiff_t>(y) * rowBytes, value, static_cast<std::size_t>(count));
}

void fillPixels32(std::uint8_t* buffer, std::int32_t count, std::uint8_t b0, std::uint8_t b1, std::uint8_t b2, std::uint8_t b3) {
  if (!buffer || count <= 0) return;
  const std::uint8_t pixel[4] = {b0, b1, b2, b3};
  std::memcpy(buffer, pixel, 4);
  std::size_t have = 4;
  const std::size_t total = static_cast<std::size_t>(count) * 4;
  while (have < total) {
    const std::size_t n = have < total - have ? have : total - have;
    std::memcpy(buffer + have, buffer, n);
    have += n;
  }
}

DWErr reducePixels(const DWImageDescriptor& src, const DWImageDescriptor& dst, std::int32_t f) {
  if (!acceleratorSwitches().pixelRoutines) return kReductionNotHandled;
  if (!fits(src, dst, f) || src.pixelBytes != dst.pixelBytes) return kReductionNotHandled;
  if (reduceFast<false>(src, dst, f)) return kDWNoErr;
  const std::int32_t n = src.pixelBytes, area = f * f;
  std::int32_t sum[64];
  if (n > 64) return kReductionNotHandled;
  for (std::int32_t y = 0; y < dst.rows; ++y)
    for (std::int32_t x = 0; x < dst.columns; ++x) {
      std::memset(sum, 0, sizeof(std::int32_t) * static_cast<std::size_t>(n));
      for (std::int32_t j = 0; j < f; ++j)
        for (std::int32_t i = 0; i < f; ++i) {
          const std::uint8_t* p = at(src, x * f + i, y * f + j);
          for (std::int32_t k = 0; k < n; ++k) sum[k] += p[k];
        }
      std::uint8_t* d = const_cast<std::uint8_t*>(at(dst, x, y));
      for (std::int32_t k = 0; k < n; ++k) d[k] = static_cast<std::uint8_t>(sum[k] / area);
    }
  return kDWNoErr;
}

DWErr reducePixelsWithAlpha(const DWImageDescriptor& src, const DWImageDescriptor& alpha, const DWImageDescriptor& dst,
                            std::int32_t f) {
  if (!acceleratorSwitches().pixelRoutines) return kReductionNotHandled;
  if (!fits(src, dst, f) || !fits(alpha, dst, f) || src.pixelBytes != dst.pixelBytes) return kReductionNotHandled;
  const bool alphaOnSource = alpha.base == src.base && alpha.rowBytes == src.rowBytes && alpha.pixelBytes == src.pixelBytes;
  if (alphaOnSource && reduceFast<true>(src, dst, f)) return kDWNoErr;
  const std::int32_t n = src.pixelBytes, area = f * f;
  for (std::int32_t y = 0; y < dst.rows; ++y)
    for (std::int32_t x = 0; x < dst.columns; ++x) {
      std::int32_t a = 0;
      for (std::int32_t j = 0; j < f; ++j)
        for (std::int32_t i = 0; i < f; ++i) a += *at(alpha, x * f + i, y * f + j);
      std::uint8_t* d = const_cast<std::uint8_t*>(at(dst, x, y));
      if (a < 1) {
        d[0] = 0;
        continue;
      }
      d[0] = static_cast<std::uint8_t>(a / area);
      for (std::int32_t k = 1; k < n; ++k) weighted(src, alpha, x, y, f, k, d + k);
    }
  return kDWNoErr;
}

DWErr reduceChannel(const DWImageDescriptor& src, const DWImageDescriptor& dst, std::int32_t f) {
  if (!fits(src, dst, f)) return kBadDescriptor;
  const std::int32_t area = f * f;
  for (std::int32_t y = 0; y < dst.rows; ++y)
    for (std::int32_t x = 0; x < dst.columns; ++x) {
      std::int32_t s = 0;
      for (std::int32_t j = 0; j < f; ++j)
        for (std::int32_t i = 0; i < f; ++i) s += *at(src, x * f + i, y * f + j);
      *const_cast<std::uint8_t*>(at(dst, x, y)) = static_cast<std::uint8_t>(s / area);
    }
  return kDWNoErr;
}

DWErr reduceChannelWeighted(const DWImageDescriptor& src, const DWImageDescriptor& alpha, const DWImageDescriptor& dst,
                            std::int32_t f) {
  if (!fits(src, dst, f) || !fits(alpha, dst, f)) return kBadDescriptor;
  for (std::int32_t y = 0; y < dst.rows; ++y)
    for (std::int32_t x = 0; x < dst.columns; ++x) weighted(src, alpha, x, y, f, 0, const_cast<std::uint8_t*>(at(dst, x, y)));
  return kDWNoErr;
}

}  // namespace refhost::render
