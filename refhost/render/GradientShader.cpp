#include "refhost/render/GradientShader.h"

#include "refhost/render/InkColor.h"

#include <cmath>
#include <cstring>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace refhost::render {

bool GradientShader::prepare(const Gradient& g, const Rect& artBounds, const Matrix& docToDevice,
                             const Document* document, const ColorSpace& target, double opacity) {
  if (g.stops.empty()) return false;
  const int nc = target.channelCount() - (target.hasAlpha() ? 1 : 0);
  spp_ = nc + 1;
  kind_ = g.kind;
  spread_ = g.spread;

  Matrix gradientToDoc = g.transform;
  if (g.units == Gradient::Units::BoundingBox) {
    if (artBounds.isEmpty()) return false;
    const Matrix unit{artBounds.width(), 0, 0, -artBounds.height(), artBounds.left, artBounds.top};
    gradientToDoc = unit * g.transform;
  }
  const Matrix gradientToDevice = docToDevice * gradientToDoc;
  if (!gradientToDevice.isInvertible()) return false;
  deviceToGradient_ = gradientToDevice.inverted();

  if (kind_ == Gradient::Kind::Linear) {
    sx_ = g.start.x;
    sy_ = g.start.y;
    dx_ = g.end.x - g.start.x;
    dy_ = g.end.y - g.start.y;
    const double len2 = dx_ * dx_ + dy_ * dy_;
    invLen2_ = len2 > 0 ? 1.0 / len2 : 0.0;
  } else {
    fx_ = g.focus.x;
    fy_ = g.focus.y;
    cdx_ = g.center.x - g.focus.x;
    cdy_ = g.center.y - g.focus.y;
    fr_ = g.focusRadius;
    dr_ = g.radius - g.focusRadius;
    a_ = cdx_ * cdx_ + cdy_ * cdy_ - dr_ * dr_;
    if (g.radius <= 0) return false;
  }

  // Stops in target channel values (0..255) and opacity; offsets forced to rise.
  const std::size_t ns = g.stops.size();
  std::vector<double> values(ns * static_cast<std::size_t>(spp_));
  std::vector<double> offsets(ns);
  double last = 0.0;
  for (std::size_t i = 0; i < ns; ++i) {
    const GradientStop& s = g.stops[i];
    double* v = &values[i * static_cast<std::size_t>(spp_)];
    v[0] = clamp01(s.opacity * opacity) * 255.0;
    inkToChannels(resolvePaint(s.color, document, target), target, v + 1);
    last = std::fmax(last, clamp01(s.offset));
    offsets[i] = last;
  }
  lut_.assign(static_cast<std::size_t>(kLutSize) * static_cast<std::size_t>(spp_), 0);
  std::size_t k = 0;
  for (int e = 0; e < kLutSize; ++e) {
    const double t = static_cast<double>(e) / (kLutSize - 1);
    while (k + 1 < ns && offsets[k + 1] < t) ++k;
    const double* a = &values[k * static_cast<std::size_t>(spp_)];
    const double* b = a;
    double f = 0.0;
    if (t <= offsets[0]) {
      a = b = &values[0];
    } else if (k + 1 < ns) {
      b = &values[(k + 1) * static_cast<std::size_t>(spp_)];
      const double span = offsets[k + 1] - offsets[k];
      f = span > 0 ? (t - offsets[k]) / span : 1.0;
    }
    std::uint8_t* out = &lut_[static_cast<std::size_t>(e) * static_cast<std::size_t>(spp_)];
    for (int c = 0; c < spp_; ++c) out[c] = static_cast<std::uint8_t>(a[c] + (b[c] - a[c]) * f + 0.5);
  }
  return true;
}

double GradientShader::parameterAt(double gx, double gy) const {
  return kind_ == Gradient::Kind::Linear ? linearAt(gx, gy) : radialAt(gx, gy);
}

double GradientShader::radialAt(double gx, double gy) const {
  // The circle that moves from the focal circle (t = 0) to the outer circle (t = 1) and passes
  // through the point; the larger t whose radius is not negative.
  const double px = gx - fx_, py = gy - fy_;
  const double b = px * cdx_ + py * cdy_ + fr_ * dr_;
  const double c = px * px + py * py - fr_ * fr_;
  if (std::fabs(a_) < 1e-12) {
    if (std::fabs(b) < 1e-12) return std::nan("");
    const double t = c / (2 * b);
    return fr_ + t * dr_ >= 0 ? t : std::nan("");
  }
  const double disc = b * b - a_ * c;
  if (disc < 0) return std::nan("");
  const double r = std::sqrt(disc);
  const double t1 = (b + r) / a_, t2 = (b - r) / a_;
  const double hi = t1 > t2 ? t1 : t2, lo = t1 > t2 ? t2 : t1;
  if (fr_ + hi * dr_ >= 0) return hi;
  if (fr_ + lo * dr_ >= 0) return lo;
  return std::nan("");
}

// Every pixel's parameter is computed from its own centre with the same operations in the same
// order as parameterAt, so rounding (and with it the table entry) cannot drift along the row.
template <int SPP, Gradient::Spread S, Gradient::Kind K>
void GradientShader::shadeSpan(std::int32_t y, std::int32_t x0, std::int32_t x1, std::uint8_t* out) const {
  const Matrix& m = deviceToGradient_;
  const std::size_t spp = SPP > 0 ? static_cast<std::size_t>(SPP) : static_cast<std::size_t>(spp_);
  const std::uint8_t* lut = lut_.data();
  const double cy = y + 0.5, cyx = m.c * cy, cyy = m.d * cy;
  if constexpr (K == Gradient::Kind::Linear && S == Gradient::Spread::Pad) {
    // Table entries for a stretch of pixels first (-1 for NaN), then the copies.
    constexpr std::int32_t kChunk = 64;
    std::int32_t entry[kChunk];
    for (std::int32_t x = x0; x < x1;) {
      const std::int32_t count = x1 - x < kChunk ? x1 - x : kChunk;
      std::int32_t j = 0;
#ifdef __SSE2__
      // Two pixels per step with the scalar operations' IEEE rounding; max and min clamp as the
      // comparisons do (a negative zero may come out positive, which gives the same entry).
      const __m128d ma = _mm_set1_pd(m.a), mb = _mm_set1_pd(m.b), cx0 = _mm_set1_pd(cyx), cy0 = _mm_set1_pd(cyy);
      const __m128d tx = _mm_set1_pd(m.tx), ty = _mm_set1_pd(m.ty), sx = _mm_set1_pd(sx_), sy = _mm_set1_pd(sy_);
      const __m128d dx = _mm_set1_pd(dx_), dy = _mm_set1_pd(dy_), inv = _mm_set1_pd(invLen2_);
      const __m128d zero = _mm_setzero_pd(), one = _mm_set1_pd(1.0), scale = _mm_set1_pd(kLutSize - 1);
      const __m128d half = _mm_set1_pd(0.5);
      for (; j + 2 <= count; j += 2) {
        const __m128d cx = _mm_add_pd(_mm_cvtepi32_pd(_mm_setr_epi32(x + j, x + j + 1, 0, 0)), half);
        const __m128d gx = _mm_add_pd(_mm_add_pd(_mm_mul_pd(ma, cx), cx0), tx);
        const __m128d gy = _mm_add_pd(_mm_add_pd(_mm_mul_pd(mb, cx), cy0), ty);
        const __m128d t = _mm_mul_pd(
            _mm_add_pd(_mm_mul_pd(_mm_sub_pd(gx, sx), dx), _mm_mul_pd(_mm_sub_pd(gy, sy), dy)), inv);
        const __m128d nan = _mm_cmpunord_pd(t, t);
        const __m128d c = _mm_min_pd(_mm_max_pd(t, zero), one);
        const __m128i e = _mm_cvttpd_epi32(_mm_add_pd(_mm_mul_pd(_mm_andnot_pd(nan, c), scale), half));
        const int nanMask = _mm_movemask_pd(nan);
        entry[j] = nanMask & 1 ? -1 : _mm_cvtsi128_si32(e);
        entry[j + 1] = nanMask & 2 ? -1 : _mm_cvtsi128_si32(_mm_srli_si128(e, 4));
      }
#endif
      for (; j < count; ++j) {
        const double cx = (x + j) + 0.5;
        const double gx = m.a * cx + cyx + m.tx, gy = m.b * cx + cyy + m.ty;
        const double t = linearAt(gx, gy);
        const double c = t < 0 ? 0 : t > 1 ? 1 : t;
        entry[j] = t == t ? static_cast<std::int32_t>(c * (kLutSize - 1) + 0.5) : -1;
      }
      for (std::int32_t k = 0; k < count; ++k, out += spp) {
        if (entry[k] < 0)
          std::memset(out, 0, spp);
        else
          std::memcpy(out, lut + static_cast<std::size_t>(entry[k]) * spp, spp);
      }
      x += count;
    }
    return;
  }
  for (std::int32_t x = x0; x < x1; ++x, out += spp) {
    const double cx = x + 0.5;
    const double gx = m.a * cx + cyx + m.tx, gy = m.b * cx + cyy + m.ty;
    double t = K == Gradient::Kind::Linear ? linearAt(gx, gy) : radialAt(gx, gy);
    if (std::isnan(t)) {
      std::memset(out, 0, spp);
      continue;
    }
    if (S == Gradient::Spread::Repeat) {
      t -= std::floor(t);
    } else if (S == Gradient::Spread::Reflect) {
      t = std::fmod(std::fabs(t), 2.0);
      if (t > 1.0) t = 2.0 - t;
    }
    t = t < 0 ? 0 : t > 1 ? 1 : t;
    const int e = static_cast<int>(t * (kLutSize - 1) + 0.5);
    std::memcpy(out, lut + static_cast<std::size_t>(e) * spp, spp);
  }
}

template <int SPP, Gradient::Spread S>
void GradientShader::shadeSpanOfKind(std::int32_t y, std::int32_t x0, std::int32_t x1, std::uint8_t* out) const {
  if (kind_ == Gradient::Kind::Linear)
    shadeSpan<SPP, S, Gradient::Kind::Linear>(y, x0, x1, out);
  else
    shadeSpan<SPP, S, Gradient::Kind::Radial>(y, x0, x1, out);
}

template <int SPP>
void GradientShader::shadeSpanOfSize(std::int32_t y, std::int32_t x0, std::int32_t x1, std::uint8_t* out) const {
  switch (spread_) {
    case Gradient::Spread::Pad:
      return shadeSpanOfKind<SPP, Gradient::Spread::Pad>(y, x0, x1, out);
    case Gradient::Spread::Repeat:
      return shadeSpanOfKind<SPP, Gradient::Spread::Repeat>(y, x0, x1, out);
    case Gradient::Spread::Reflect:
      return shadeSpanOfKind<SPP, Gradient::Spread::Reflect>(y, x0, x1, out);
  }
}

void GradientShader::shadeRow(std::int32_t y, std::int32_t x0, std::int32_t x1, std::uint8_t* out) const {
  switch (spp_) {
    case 2:
      return shadeSpanOfSize<2>(y, x0, x1, out);
    case 4:
      return shadeSpanOfSize<4>(y, x0, x1, out);
    case 5:
      return shadeSpanOfSize<5>(y, x0, x1, out);
    default:
      return shadeSpanOfSize<0>(y, x0, x1, out);
  }
}

}  // namespace refhost::render
