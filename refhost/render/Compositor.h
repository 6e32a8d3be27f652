#pragma once

#include "refhost/render/Surface.h"

#include <cstdint>

namespace refhost::render {

// Source-over compositing of one row span. Alphas and coverage are bytes (255 = 1); every
// division rounds to nearest, so full coverage of an opaque source stores the source exactly.
//
// Effective source alpha:  a = round(coverage * sourceAlpha / 255)
// Surface without alpha:   d' = round((s * a + d * (255 - a)) / 255)
// Surface with alpha (unassociated, alpha first), weights ws = 255 a and wd = da (255 - a):
//                          da' = a + round(da (255 - a) / 255)
//                          d'  = round((s ws + d wd) / (ws + wd)); colour kept when both are 0
// 1-bit surface (white 1): the gray light g = 255 or 0 is composited as without alpha and the bit
//                          is set when the result is 128 or more.
// Because colour is mixed linearly, ink channels (CMYK, spots) and light channels (gray, RGB)
// use the same formulas.

inline std::uint32_t div255(std::uint32_t x) {
  x += 128;
  return (x + (x >> 8)) >> 8;
}

struct SolidSource {
  std::uint8_t color[32] = {};  // colour channels of the surface, no alpha
  std::uint8_t alpha = 255;
};

// coverage[i] belongs to pixel x0 + i; null means full coverage.
void compositeSolid(const Surface& s, std::int32_t y, std::int32_t x0, std::int32_t x1, const std::uint8_t* coverage,
                    const SolidSource& source);

// Source pixels alpha first with the surface's colour channels (colorChannels() + 1 bytes each),
// pixel x0 first; `opacity` scales their alpha.
void compositePixels(const Surface& s, std::int32_t y, std::int32_t x0, std::int32_t x1, const std::uint8_t* coverage,
                     const std::uint8_t* pixels, std::uint8_t opacity);

// Fills [x0, x1) of row y with a colour at full alpha (used to clear layers and ports).
void fillSpan(const Surface& s, std::int32_t y, std::int32_t x0, std::int32_t x1, const std::uint8_t* pixel);

}  // namespace refhost::render
