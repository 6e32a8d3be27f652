#include "refhost/render/Accelerator.h"

#include <cstring>

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
