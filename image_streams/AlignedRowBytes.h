#pragma once
#include <cstdint>

namespace dw {

// The pitch of every raster row the resampling service allocates or creates: whole bytes,
// padded to a multiple of 4.
constexpr uint32_t alignedRowBytes(uint32_t width, uint32_t bitsPerPixel) {
  const uint32_t bytes = bitsPerPixel == 1 ? (width + 7) / 8 : uint32_t(uint64_t(width) * bitsPerPixel / 8);
  return (bytes + 3) & ~uint32_t(3);
}

}  // namespace dw
