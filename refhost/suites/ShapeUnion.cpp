#include "refhost/suites/ShapeUnion.h"

#include <clipper.hpp>

#include <algorithm>
#include <cmath>

namespace refhost {

namespace {

// Clipper works in integers: 4096 units per point keep binary fractions down to 1/4096 exact.
constexpr double kUnitsPerPoint = 4096.0;
constexpr int kMaxChords = 4096;

// Chords that keep a cubic within the flatness: the curve strays at most 3/4 of its largest second
// difference divided by the square of the chord count.
int chordCount(Point p0, Point p1, Point p2, Point p3, double flatness) {
  const double ax = p0.x - 2 * p1.x + p2.x, ay = p0.y - 2 * p1.y + p2.y;
  const double bx = p1.x - 2 * p2.x + p3.x, by = p1.y - 2 * p2.y + p3.y;
  const double spread = std::max(std::hypot(ax, ay), std::hypot(bx, by));
  const double n = std::ceil(std::sqrt(0.75 * spread / flatness));
  return n < 1 ? 1 : n > kMaxChords ? kMaxChords : int(n);
}

bool straight(const PathSegment& from, const PathSegment& to) { return from.out == from.p && to.in == to.p; }

void appendCurve(Contour& out, const PathSegment& from, const PathSegment& to, double flatness) {
  if (straight(from, to)) {
    out.push_back(to.p);
    return;
  }
  const Point p0 = from.p, p1 = from.out, p2 = to.in, p3 = to.p;
  const int n = chordCount(p0, p1, p2, p3, flatness);
  for (int i = 1; i <= n; ++i) {
    const double t = double(i) / n, u = 1 - t;
    const double a = u * u * u, b = 3 * u * u * t, c = 3 * u * t * t, d = t * t * t;
    out.push_back(Point{a * p0.x + b * p1.x + c * p2.x + d * p3.x, a * p0.y + b * p1.y + c * p2.y + d * p3.y});
  }
}

ClipperLib::Path toClipper(const Contour& contour) {
  ClipperLib::Path path;
  path.reserve(contour.size());
  for (const Point& p : contour)
    path.push_back(ClipperLib::IntPoint(ClipperLib::cInt(std::llround(p.x * kUnitsPerPoint)),
                                        ClipperLib::cInt(std::llround(p.y * kUnitsPerPoint))));
  return path;
}

Contour fromClipper(const ClipperLib::Path& path) {
  Contour contour;
  contour.reserve(path.size());
  for (const ClipperLib::IntPoint& p : path)
    contour.push_back(Point{double(p.X) / kUnitsPerPoint, double(p.Y) / kUnitsPerPoint});
  return contour;
}

void addPaths(const Art& compound, std::vector<Contour>& contours) {
  for (const Art* c = compound.firstChild(); c; c = c->nextSibling()) {
    if (c->isHidden()) continue;
    if (const PathData* p = c->path())
      contours.push_back(flattenPath(*p));
    else if (c->kind() == ArtKind::CompoundPath)
      addPaths(*c, contours);
  }
}

}  // namespace

Contour flattenPath(const PathData& path, double flatness) {
  Contour out;
  const std::vector<PathSegment>& s = path.segments;
  if (s.empty()) return out;
  out.push_back(s[0].p);
  for (size_t i = 1; i < s.size(); ++i) appendCurve(out, s[i - 1], s[i], flatness);
  if (path.closed && s.size() > 1) appendCurve(out, s.back(), s.front(), flatness);
  return out;
}

void collectShapes(const Art& art, std::vector<FilledShape>& shapes) {
  if (!art.isAlive() || art.isHidden()) return;
  switch (art.kind()) {
    case ArtKind::Path:
      shapes.push_back(FilledShape{{flattenPath(*art.path())}, art.pathStyle().fillRule});
      return;
    case ArtKind::CompoundPath: {
      FilledShape shape{{}, art.pathStyle().fillRule};
      addPaths(art, shape.contours);
      shapes.push_back(std::move(shape));
      return;
    }
    case ArtKind::Group:
    case ArtKind::Unknown:
      for (const Art* c = art.firstChild(); c; c = c->nextSibling()) collectShapes(*c, shapes);
      return;
    default: return;
  }
}

std::vector<Contour> uniteShapes(const std::vector<FilledShape>& shapes) {
  ClipperLib::Clipper all;
  for (const FilledShape& shape : shapes) {
    ClipperLib::Paths paths;
    for (const Contour& contour : shape.contours)
      if (contour.size() >= 3) paths.push_back(toClipper(contour));
    const ClipperLib::PolyFillType rule =
        shape.rule == FillRule::EvenOdd ? ClipperLib::pftEvenOdd : ClipperLib::pftNonZero;
    ClipperLib::Paths filled;
    ClipperLib::SimplifyPolygons(paths, filled, rule);
    all.AddPaths(filled, ClipperLib::ptSubject, true);
  }
  ClipperLib::PolyTree tree;
  all.Execute(ClipperLib::ctUnion, tree, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
  ClipperLib::Paths united;
  ClipperLib::PolyTreeToPaths(tree, united);
  ClipperLib::CleanPolygons(united);
  std::vector<Contour> contours;
  for (const ClipperLib::Path& path : united)
    if (path.size() >= 3) contours.push_back(fromClipper(path));
  return contours;
}

}  // namespace refhost
