#include "refhost/render/Compositor.h"

#include <cstring>

namespace refhost::render {

namespace {

// N colour channels; with N = 0 the run-time n says how many.
template <int N>
inline void blendOverN(std::uint8_t* d, const std::uint8_t* s, std::uint32_t a, int n = N) {
  const int count = N > 0 ? N : n;
  const std::uint32_t na = 255 - a;
  for (int k = 0; k < count; ++k) d[k] = static_cast<std::uint8_t>(div255(s[k] * a + d[k] * na));
}

inline void blendOver(std::uint8_t* d, const std::uint8_t* s, std::uint32_t a, int n) { blendOverN<0>(d, s, a, n); }

// d points at the alpha byte of an unassociated alpha-first pixel; s at the colour bytes.
template <int N>
inline void blendAlphaN(std::uint8_t* d, const std::uint8_t* s, std::uint32_t a, int n = N) {
  const int count = N > 0 ? N : n;
  const std::uint32_t da = d[0];
  if (a == 255 || da == 0) {
    d[0] = static_cast<std::uint8_t>(a);
    std::memcpy(d + 1, s, static_cast<std::size_t>(count));
    return;
  }
  if (da == 255) {
    blendOverN<N>(d + 1, s, a, count);
    return;
  }
  const std::uint32_t ws = 255 * a, wd = da * (255 - a), den = ws + wd, half = den / 2;
  d[0] = static_cast<std::uint8_t>(a + div255(da * (255 - a)));
  for (int k = 0; k < count; ++k)
    d[1 + k] = static_cast<std::uint8_t>((s[k] * ws + d[1 + k] * wd + half) / den);
}

inline void blendAlpha(std::uint8_t* d, const std::uint8_t* s, std::uint32_t a, int n) { blendAlphaN<0>(d, s, a, n); }

inline void blendBit(std::uint8_t* row, std::int32_t x, std::uint8_t gray, std::uint32_t a) {
  std::uint8_t& byte = row[x >> 3];
  const std::uint8_t bit = static_cast<std::uint8_t>(0x80u >> (x & 7));
  const std::uint32_t g = (byte & bit) ? 255u : 0u;
  const std::uint32_t r = div255(gray * a + g * (255 - a));
  if (r >= 128)
    byte = static_cast<std::uint8_t>(byte | bit);
  else
    byte = static_cast<std::uint8_t>(byte & ~bit);
}

// Length of the run of zero coverage starting at i (at most n - i).
inline std::int32_t zeroRun(const std::uint8_t* c, std::int32_t i, std::int32_t n) {
  const std::int32_t start = i;
  while (i + 8 <= n) {
    std::uint64_t w;
    std::memcpy(&w, c + i, 8);
    if (w != 0) break;
    i += 8;
  }
  while (i < n && c[i] == 0) ++i;
  return i - start;
}

// Length of the run of full coverage starting at i (at most n - i).
inline std::int32_t fullRun(const std::uint8_t* c, std::int32_t i, std::int32_t n) {
  const std::int32_t start = i;
  while (i + 8 <= n) {
    std::uint64_t w;
    std::memcpy(&w, c + i, 8);
    if (w != ~std::uint64_t(0)) break;
    i += 8;
  }
  while (i < n && c[i] == 255) ++i;
  return i - start;
}

// Sixteen copies of one pixel, so runs of it are stored by wide copies instead of pixel by pixel.
template <int N>
struct PixelPattern {
  std::uint8_t bytes[N * 16];
  explicit PixelPattern(const std::uint8_t* pixel) {
    for (int i = 0; i < 16; ++i) std::memcpy(bytes + i * N, pixel, N);
  }
  void fill(std::uint8_t* d, std::int32_t count) const {
    if (N == 1) {
      std::memset(d, bytes[0], static_cast<std::size_t>(count));
      return;
    }
    for (; count >= 16; count -= 16, d += N * 16) std::memcpy(d, bytes, N * 16);
    std::memcpy(d, bytes, static_cast<std::size_t>(count) * N);
  }
};

template <int N>
void solidOpaqueDst(std::uint8_t* p, std::int32_t n, const std::uint8_t* cov, const SolidSource& src, int bpp) {
  const std::uint32_t sa = src.alpha;
  if (N > 0 && sa == 255) {
    // Opaque paint: spans of full coverage are runs of the colour, spans of none are skipped,
    // and only the edge pixels between them are blended.
    const PixelPattern<N> pattern(src.color);
    if (!cov) {
      pattern.fill(p, n);
      return;
    }
    for (std::int32_t i = 0; i < n;) {
      if (const std::int32_t z = zeroRun(cov, i, n)) {
        i += z;
        continue;
      }
      if (const std::int32_t f = fullRun(cov, i, n)) {
        pattern.fill(p + static_cast<std::ptrdiff_t>(i) * N, f);
        i += f;
        continue;
      }
      blendOverN<N>(p + static_cast<std::ptrdiff_t>(i) * N, src.color, cov[i]);
      ++i;
    }
    return;
  }
  if (N > 0) {
    // Translucent paint: inside full coverage a is the paint's alpha (div255(255 * sa) == sa).
    for (std::int32_t i = 0; i < n;) {
      std::int32_t f = n - i;
      if (cov) {
        if (const std::int32_t z = zeroRun(cov, i, n)) {
          i += z;
          continue;
        }
        f = fullRun(cov, i, n);
      }
      if (f) {
        for (const std::int32_t end = i + f; i < end; ++i) blendOverN<N>(p + static_cast<std::ptrdiff_t>(i) * N, src.color, sa);
        continue;
      }
      if (const std::uint32_t a = div255(cov[i] * sa)) blendOverN<N>(p + static_cast<std::ptrdiff_t>(i) * N, src.color, a);
      ++i;
    }
    return;
  }
  for (std::int32_t i = 0; i < n;) {
    if (cov) {
      const std::int32_t z = zeroRun(cov, i, n);
      if (z) {
        i += z;
        continue;
      }
    }
    const std::uint32_t a = cov ? div255(cov[i] * sa) : sa;
    std::uint8_t* d = p + static_cast<std::ptrdiff_t>(i) * bpp;
    if (a == 255) {
      if (N > 0)
        std::memcpy(d, src.color, N);
      else
        std::memcpy(d, src.color, static_cast<std::size_t>(bpp));
    } else if (a != 0) {
      if (N > 0)
        blendOverN<N>(d, src.color, a);
      else
        blendOver(d, src.color, a, bpp);
    }
    ++i;
  }
}

// Source pixels (alpha first, N colour channels; N = 0: nc at run time) over a surface of the same
// colour channels, with an alpha byte first when AlphaDst. Inside a run of full coverage the
// coverage factor is exactly 1 (div255(a * 255) == a) and is skipped.
template <int N, bool AlphaDst>
void pixelsOver(std::uint8_t* p, std::int32_t n, const std::uint8_t* cov, const std::uint8_t* pixels,
                std::uint32_t opacity, int ncRuntime) {
  const int nc = N > 0 ? N : ncRuntime;
  const std::ptrdiff_t spp = nc + 1, bpp = AlphaDst ? spp : nc;
  for (std::int32_t i = 0; i < n;) {
    std::int32_t end = n;
    bool full = true;
    if (cov) {
      if (const std::int32_t z = zeroRun(cov, i, n)) {
        i += z;
        continue;
      }
      const std::int32_t f = fullRun(cov, i, n);
      full = f != 0;
      end = full ? i + f : i + 1;
    }
    for (; i < end; ++i) {
      const std::uint8_t* src = pixels + i * spp;
      std::uint8_t* d = p + i * bpp;
      std::uint32_t a = src[0];
      if (opacity != 255) a = div255(a * opacity);
      if (!full) a = div255(a * cov[i]);
      if (a == 0) continue;
      if (AlphaDst) {
        // a is 255 only where the source alpha is, so the pixel becomes the source pixel.
        if (a == 255)
          std::memcpy(d, src, static_cast<std::size_t>(spp));
        else
          blendAlphaN<N>(d, src + 1, a, nc);
      } else if (a == 255) {
        std::memcpy(d, src + 1, static_cast<std::size_t>(nc));
      } else {
        blendOverN<N>(d, src + 1, a, nc);
      }
    }
  }
}

template <bool AlphaDst>
void pixelsOverAny(std::uint8_t* p, std::int32_t n, const std::uint8_t* cov, const std::uint8_t* pixels,
                   std::uint32_t opacity, int nc) {
  switch (nc) {
    case 1:
      return pixelsOver<1, AlphaDst>(p, n, cov, pixels, opacity, nc);
    case 3:
      return pixelsOver<3, AlphaDst>(p, n, cov, pixels, opacity, nc);
    case 4:
      return pixelsOver<4, AlphaDst>(p, n, cov, pixels, opacity, nc);
    default:
      return pixelsOver<0, AlphaDst>(p, n, cov, pixels, opacity, nc);
  }
}
}  // namespace

void compositeSolid(const Surface& s, std::int32_t y, std::int32_t x0, std::int32_t x1, const std::uint8_t* coverage,
                    const SolidSource& src) {
  if (x1 <= x0 || src.alpha == 0) return;
  std::uint8_t* row = s.row(y);
  const std::int32_t n = x1 - x0;
  if (s.oneBit) {
    for (std::int32_t i = 0; i < n; ++i) {
      const std::uint32_t a = coverage ? div255(coverage[i] * src.alpha) : src.alpha;
      if (a) blendBit(row, x0 + i - s.area.left, src.color[0], a);
    }
    return;
  }
  std::uint8_t* p = row + static_cast<std::ptrdiff_t>(x0 - s.area.left) * s.bytesPerPixel;
  if (!s.alpha) {
    switch (s.bytesPerPixel) {
      case 1:
        solidOpaqueDst<1>(p, n, coverage, src, 1);
        return;
      case 3:
        solidOpaqueDst<3>(p, n, coverage, src, 3);
        return;
      case 4:
        solidOpaqueDst<4>(p, n, coverage, src, 4);
        return;
      default:
        solidOpaqueDst<0>(p, n, coverage, src, s.bytesPerPixel);
        return;
    }
  }
  const int bpp = s.bytesPerPixel, nc = bpp - 1;
  for (std::int32_t i = 0; i < n;) {
    if (coverage) {
      const std::int32_t z = zeroRun(coverage, i, n);
      if (z) {
        i += z;
        continue;
      }
    }
    const std::uint32_t a = coverage ? div255(coverage[i] * src.alpha) : src.alpha;
    if (a) blendAlpha(p + static_cast<std::ptrdiff_t>(i) * bpp, src.color, a, nc);
    ++i;
  }
}

void compositePixels(const Surface& s, std::int32_t y, std::int32_t x0, std::int32_t x1, const std::uint8_t* coverage,
                     const std::uint8_t* pixels, std::uint8_t opacity) {
  if (x1 <= x0 || opacity == 0) return;
  std::uint8_t* row = s.row(y);
  const std::int32_t n = x1 - x0;
  const int nc = s.colorChannels();
  if (!s.oneBit) {
    std::uint8_t* p = row + static_cast<std::ptrdiff_t>(x0 - s.area.left) * s.bytesPerPixel;
    if (s.alpha)
      pixelsOverAny<true>(p, n, coverage, pixels, opacity, nc);
    else
      pixelsOverAny<false>(p, n, coverage, pixels, opacity, nc);
    return;
  }
  for (std::int32_t i = 0; i < n;) {
    if (coverage) {
      const std::int32_t z = zeroRun(coverage, i, n);
      if (z) {
        i += z;
        continue;
      }
    }
    const std::uint8_t* src = pixels + static_cast<std::ptrdiff_t>(i) * 2;
    std::uint32_t a = src[0];
    if (opacity != 255) a = div255(a * opacity);
    if (coverage) a = div255(a * coverage[i]);
    if (a) blendBit(row, x0 + i - s.area.left, src[1], a);
    ++i;
  }
}

void fillSpan(const Surface& s, std::int32_t y, std::int32_t x0, std::int32_t x1, const std::uint8_t* pixel) {
  if (x1 <= x0) return;
  std::uint8_t* row = s.row(y);
  if (s.oneBit) {
    for (std::int32_t x = x0; x < x1; ++x) {
      const std::int32_t i = x - s.area.left;
      const std::uint8_t bit = static_cast<std::uint8_t>(0x80u >> (i & 7));
      row[i >> 3] = static_cast<std::uint8_t>(pixel[0] >= 128 ? (row[i >> 3] | bit) : (row[i >> 3] & ~bit));
    }
    return;
  }
  const int bpp = s.bytesPerPixel;
  std::uint8_t* p = row + static_cast<std::ptrdiff_t>(x0 - s.area.left) * bpp;
  if (bpp == 1) {
    std::memset(p, pixel[0], static_cast<std::size_t>(x1 - x0));
    return;
  }
  std::memcpy(p, pixel, static_cast<std::size_t>(bpp));
  // Doubling copies fill the span in log steps.
  std::size_t have = static_cast<std::size_t>(bpp), total = static_cast<std::size_t>(x1 - x0) * bpp;
  while (have < total) {
    const std::size_t n = have < total - have ? have : total - have;
    std::memcpy(p + have, p, n);
    have += n;
  }
}

}  // namespace refhost::render
