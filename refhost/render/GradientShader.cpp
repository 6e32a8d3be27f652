#include "refhost/render/GradientShader.h"

#include "refhost/render/InkColor.h"

#include <cmath>
#include <cstring>

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
  if (kind_ == Gradient::Kind::Linear) return ((gx - sx_) * dx_ + (gy - sy_) * dy_) * invLen2_;
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

void GradientShader::shadeRow(std::int32_t y, std::int32_t x0, std::int32_t x1, std::uint8_t* out) const {
  const Matrix& m = deviceToGradient_;
  const double cy = y + 0.5;
  for (std::int32_t x = x0; x < x1; ++x, out += spp_) {
    const double cx = x + 0.5;
    double t = parameterAt(m.a * cx + m.c * cy + m.tx, m.b * cx + m.d * cy + m.ty);
    if (std::isnan(t)) {
      std::memset(out, 0, static_cast<std::size_t>(spp_));
      continue;
    }
    switch (spread_) {
      case Gradient::Spread::Pad:
        break;
      case Gradient::Spread::Repeat:
        t -= std::floor(t);
        break;
      case Gradient::Spread::Reflect:
        t = std::fmod(std::fabs(t), 2.0);
        if (t > 1.0) t = 2.0 - t;
        break;
    }
    t = t < 0 ? 0 : t > 1 ? 1 : t;
    const int e = static_cast<int>(t * (kLutSize - 1) + 0.5);
    std::memcpy(out, &lut_[static_cast<std::size_t>(e) * static_cast<std::size_t>(spp_)], static_cast<std::size_t>(spp_));
  }
}

}  // namespace refhost::render
