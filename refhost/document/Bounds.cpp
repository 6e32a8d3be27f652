#include "refhost/document/Bounds.h"

#include "refhost/document/Symbol.h"

#include <cmath>

namespace refhost {

namespace {

// Roots in (0, 1) of the derivative of one coordinate of a cubic Bezier.
int extremaParameters(double p0, double p1, double p2, double p3, double t[2]) {
  // B'(t)/3 = a t^2 + b t + c
  const double a = -p0 + 3 * p1 - 3 * p2 + p3;
  const double b = 2 * (p0 - 2 * p1 + p2);
  const double c = p1 - p0;
  int n = 0;
  auto keep = [&](double v) {
    if (v > 0.0 && v < 1.0) t[n++] = v;
  };
  const double eps = 1e-12;
  if (std::fabs(a) < eps) {
    if (std::fabs(b) > eps) keep(-c / b);
    return n;
  }
  const double disc = b * b - 4 * a * c;
  if (disc < 0) return 0;
  const double s = std::sqrt(disc);
  // The stable form avoids cancellation when b and s are close.
  const double q = -0.5 * (b + (b < 0 ? -s : s));
  keep(q / a);
  if (q != 0.0) keep(c / q);
  return n;
}

double cubicAt(double p0, double p1, double p2, double p3, double t) {
  const double u = 1 - t;
  return u * u * u * p0 + 3 * u * u * t * p1 + 3 * u * t * t * p2 + t * t * t * p3;
}

// Symbols may (wrongly) contain instances of themselves; nesting deeper than this counts as empty.
constexpr int kMaxSymbolDepth = 64;

Rect boundsAt(const Art& art, const Matrix& m, const BoundsOptions& o, int depth);

Rect containerBounds(const Art& art, const Matrix& m, const BoundsOptions& o, int depth) {
  Rect content = Rect::none();
  Rect clip = Rect::none();
  bool hasClip = false;
  for (const Art* c = art.firstChild(); c; c = c->nextSibling()) {
    if (c->isHidden() && !o.includeHidden) continue;
    const Rect b = boundsAt(*c, m, o, depth);
    if (art.isClipped() && c->pathStyle().clipping) {
      hasClip = true;
      clip = clip.united(b);
    } else {
      content = content.united(b);
    }
  }
  if (art.isClipped() && hasClip) return content.intersected(clip);
  return content;
}

}  // namespace

Rect bezierBounds(Point p0, Point p1, Point p2, Point p3) {
  Rect r = Rect::none();
  r.add(p0);
  r.add(p3);
  double t[2];
  int n = extremaParameters(p0.x, p1.x, p2.x, p3.x, t);
  for (int i = 0; i < n; ++i) r.add(Point{cubicAt(p0.x, p1.x, p2.x, p3.x, t[i]), cubicAt(p0.y, p1.y, p2.y, p3.y, t[i])});
  n = extremaParameters(p0.y, p1.y, p2.y, p3.y, t);
  for (int i = 0; i < n; ++i) r.add(Point{cubicAt(p0.x, p1.x, p2.x, p3.x, t[i]), cubicAt(p0.y, p1.y, p2.y, p3.y, t[i])});
  return r;
}

Rect pathBounds(const PathData& path, const Matrix& m) {
  Rect r = Rect::none();
  const std::size_t n = path.segments.size();
  if (n == 0) return r;
  if (n == 1) {
    r.add(m.apply(path.segments[0].p));
    return r;
  }
  const std::size_t curves = path.closed ? n : n - 1;
  for (std::size_t i = 0; i < curves; ++i) {
    const PathSegment& a = path.segments[i];
    const PathSegment& b = path.segments[(i + 1) % n];
    // An affine map of a Bezier is the Bezier of the mapped control points.
    r = r.united(bezierBounds(m.apply(a.p), m.apply(a.out), m.apply(b.in), m.apply(b.p)));
  }
  return r;
}

namespace {

Rect boundsAt(const Art& art, const Matrix& m, const BoundsOptions& o, int depth) {
  switch (art.kind()) {
    case ArtKind::Path: {
      Rect r = pathBounds(*art.path(), m);
      const PathStyle& style = art.pathStyle();
      if (o.includeStroke && style.strokePaint && !style.stroke.isNone() && !r.isEmpty()) {
        const double scale = std::sqrt(std::fabs(m.determinant()));
        const double half = 0.5 * style.strokeWidth * scale;
        r = Rect{r.left - half, r.top + half, r.right + half, r.bottom - half};
      }
      return r;
    }
    case ArtKind::Group:
    case ArtKind::CompoundPath:
    case ArtKind::Unknown:
      return containerBounds(art, m, o, depth);
    case ArtKind::Placed: {
      const PlacedData& p = *art.placed();
      return (m * p.matrix).applyToRect(p.bounds);
    }
    case ArtKind::Raster: {
      const RasterData& r = *art.raster();
      const double w = r.width(), h = r.height();
      if (w <= 0 || h <= 0) return Rect::none();
      return (m * r.matrix).applyToRect(Rect{0, 0, w, -h});
    }
    case ArtKind::Mesh: {
      Rect r = Rect::none();
      for (const Point& p : art.mesh()->vertices) r.add(m.apply(p));
      return r;
    }
    case ArtKind::TextFrame: {
      const TextData& t = *art.text();
      if (t.text.empty()) return Rect::none();
      const double w = t.estimatedWidth();
      const double x0 = t.anchor == TextAnchor::Start ? 0.0 : (t.anchor == TextAnchor::Middle ? -w / 2 : -w);
      return (m * t.matrix).applyToRect(Rect{x0, 0.8 * t.fontSize, x0 + w, -0.2 * t.fontSize});
    }
    case ArtKind::SymbolInstance: {
      const SymbolInstanceData& s = *art.symbolInstance();
      if (!s.symbol || !s.symbol->isAlive() || !s.symbol->definition() || depth >= kMaxSymbolDepth) return Rect::none();
      return boundsAt(*s.symbol->definition(), m * s.matrix, o, depth + 1);
    }
    case ArtKind::PluginGroup: {
      const PluginGroupData& p = *art.pluginGroup();
      return p.resultArt ? boundsAt(*p.resultArt, m, o, depth) : Rect::none();
    }
  }
  return Rect::none();
}

}  // namespace

Rect artBounds(const Art& art, const Matrix& m, const BoundsOptions& o) { return boundsAt(art, m, o, 0); }

}  // namespace refhost
