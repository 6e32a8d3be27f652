#include "refhost/render/ColorConversion.h"

#include <algorithm>

namespace refhost::render {

double clamp01(double v) { return v < 0.0 ? 0.0 : v > 1.0 ? 1.0 : v; }

Rgb grayToRgb(double grayInk) {
  const double l = 1.0 - clamp01(grayInk);
  return Rgb{l, l, l};
}

Cmyk grayToCmyk(double grayInk) { return Cmyk{0, 0, 0, clamp01(grayInk)}; }

double rgbToGray(const Rgb& c) {
  return clamp01(1.0 - (0.30 * clamp01(c.r) + 0.59 * clamp01(c.g) + 0.11 * clamp01(c.b)));
}

Cmyk rgbToCmyk(const Rgb& in) {
  const double r = clamp01(in.r), g = clamp01(in.g), b = clamp01(in.b);
  const double k = 1.0 - std::max({r, g, b});
  if (k >= 1.0) return Cmyk{0, 0, 0, 1};
  const double w = 1.0 - k;
  return Cmyk{clamp01((1.0 - r - k) / w), clamp01((1.0 - g - k) / w), clamp01((1.0 - b - k) / w), k};
}

Rgb cmykToRgb(const Cmyk& in) {
  const double k = 1.0 - clamp01(in.k);
  return Rgb{(1.0 - clamp01(in.c)) * k, (1.0 - clamp01(in.m)) * k, (1.0 - clamp01(in.y)) * k};
}

double cmykToGray(const Cmyk& c) { return rgbToGray(cmykToRgb(c)); }

Cmyk overprint(const Cmyk& a, const Cmyk& b) {
  auto o = [](double x, double y) { return 1.0 - (1.0 - clamp01(x)) * (1.0 - clamp01(y)); };
  return Cmyk{o(a.c, b.c), o(a.m, b.m), o(a.y, b.y), o(a.k, b.k)};
}

}  // namespace refhost::render
