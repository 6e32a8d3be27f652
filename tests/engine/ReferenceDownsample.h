#pragma once
#include <cstdint>
#include <vector>

namespace dw::test_support {

// The down-sampler's rule written out plainly, one pixel at a time, as an independent check:
// signed 32-bit sums, truncating division, transparent samples skipped, a fully transparent block
// leaving its colour bytes alone, and only changed bytes stored.
inline void referenceDownsample(bool alpha, int32_t f, int32_t c, const uint8_t* super, int32_t superStride,
                                uint8_t* tile, int32_t tileStride, int32_t width, int32_t rows) {
  for (int32_t y = 0; y < rows; ++y)
    for (int32_t x = 0; x < width; ++x) {
      std::vector<int32_t> s(size_t(c), 0);
      int32_t a = 0;
      for (int32_t by = 0; by < f; ++by)
        for (int32_t bx = 0; bx < f; ++bx) {
          const uint8_t* px = super + (f * y + by) * superStride + (f * x + bx) * c;
          if (!alpha) {
            for (int32_t k = 0; k < c; ++k) s[size_t(k)] += px[k];
            continue;
          }
          if (px[0] == 0) continue;
          a += px[0];
          for (int32_t k = 1; k < c; ++k) s[size_t(k)] += px[0] * px[k];
        }
      uint8_t* out = tile + y * tileStride + x * c;
      auto store = [](uint8_t& byte, int32_t value) {
        if (byte != uint8_t(value)) byte = uint8_t(value);
      };
      if (!alpha) {
        for (int32_t k = 0; k < c; ++k) store(out[k], s[size_t(k)] / (f * f));
      } else if (a < 1) {
        store(out[0], 0);
      } else {
        store(out[0], a / (f * f));
        for (int32_t k = 1; k < c; ++k) store(out[k], s[size_t(k)] / a);
      }
    }
}

}  // namespace dw::test_support
