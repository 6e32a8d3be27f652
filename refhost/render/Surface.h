#pragma once

#include "refhost/document/Geometry.h"

#include <cstdint>

namespace refhost::render {

// Pixels that drawing composites into: a port's buffer or a group layer. `area` is where the
// buffer lies in device pixels; one byte per channel, alpha first when present, or one bit per
// pixel (gray, most significant bit first, white is 1).
struct Surface {
  std::uint8_t* data = nullptr;
  std::int32_t stride = 0;
  IntRect area;
  int bytesPerPixel = 0;  // alpha included; 0 for 1-bit surfaces
  bool alpha = false;
  bool oneBit = false;

  int colorChannels() const { return oneBit ? 1 : bytesPerPixel - (alpha ? 1 : 0); }
  std::uint8_t* row(std::int32_t y) const { return data + static_cast<std::ptrdiff_t>(y - area.top) * stride; }
};

inline IntRect intersect(const IntRect& a, const IntRect& b) {
  IntRect r{a.left > b.left ? a.left : b.left, a.top > b.top ? a.top : b.top, a.right < b.right ? a.right : b.right,
            a.bottom < b.bottom ? a.bottom : b.bottom};
  if (r.right < r.left) r.right = r.left;
  if (r.bottom < r.top) r.bottom = r.top;
  return r;
}
inline bool isEmpty(const IntRect& r) { return r.right <= r.left || r.bottom <= r.top; }

}  // namespace refhost::render
