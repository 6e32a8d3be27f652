#include "refhost/io/SvgPathData.h"

#include <gtest/gtest.h>

#include <cmath>

namespace refhost::io::svg {
namespace {

void expectPoint(Point p, double x, double y, const std::string& what, double tol = 1e-9) {
  EXPECT_NEAR(p.x, x, tol) << what;
  EXPECT_NEAR(p.y, y, tol) << what;
}

Point cubicAt(Point p0, Point p1, Point p2, Point p3, double t) {
  const double u = 1 - t;
  return Point{u * u * u * p0.x + 3 * u * u * t * p1.x + 3 * u * t * t * p2.x + t * t * t * p3.x,
               u * u * u * p0.y + 3 * u * u * t * p1.y + 3 * u * t * t * p2.y + t * t * t * p3.y};
}

// Pairs of path data that must give the same geometry.
struct Equivalent {
  const char* name;
  const char* a;
  const char* b;
};

const Equivalent kEquivalent[] = {
    {"relative lines", "M10 10 l 20 0 l 0 20", "M10 10 L 30 10 L 30 30"},
    {"implicit lineto after moveto", "M10 10 30 10 30 30", "M10 10 L30 10 L30 30"},
    {"relative implicit lineto", "m10 10 20 0 0 20", "M10 10 L30 10 L30 30"},
    {"horizontal and vertical", "M0 0 H10 V10 h-10 v-10", "M0 0 L10 0 L10 10 L0 10 L0 0"},
    {"relative cubic", "M10 10 c 0 10 10 10 10 0", "M10 10 C 10 20 20 20 20 10"},
    {"smooth cubic reflects", "M0 0 C 0 10 10 10 10 0 S 20 -10 20 0", "M0 0 C 0 10 10 10 10 0 C 10 -10 20 -10 20 0"},
    {"smooth cubic without a cubic before", "M0 0 S 10 10 20 0", "M0 0 C 0 0 10 10 20 0"},
    {"quadratic", "M0 0 Q 15 30 30 0", "M0 0 C 10 20 20 20 30 0"},
    {"smooth quadratic reflects", "M0 0 Q 15 30 30 0 T 60 0", "M0 0 C 10 20 20 20 30 0 C 40 -20 50 -20 60 0"},
    {"compact numbers", "M.5.5L1e1-2", "M0.5 0.5 L10 -2"},
    {"comma separated", "M1,2L3,4", "M1 2 L3 4"},
    {"arc flags run together", "M0 0 a10 10 0 0010 10", "M0 0 A10 10 0 0 0 10 10"},
    {"relative arc", "M5 5 a10 10 0 0 1 10 10", "M5 5 A10 10 0 0 1 15 15"},
    {"zero radius arc is a line", "M0 0 A0 5 0 0 1 10 10", "M0 0 L10 10"},
};

TEST(PathData, EquivalentSpellingsGiveTheSameGeometry) {
  for (const Equivalent& c : kEquivalent) {
    const PathParseResult a = parsePathData(c.a, 1000);
    const PathParseResult b = parsePathData(c.b, 1000);
    EXPECT_TRUE(a.error.empty()) << c.name << ": " << a.error;
    ASSERT_EQ(a.subpaths.size(), b.subpaths.size()) << c.name;
    for (std::size_t i = 0; i < a.subpaths.size(); ++i) {
      ASSERT_EQ(a.subpaths[i].anchors.size(), b.subpaths[i].anchors.size()) << c.name;
      for (std::size_t k = 0; k < a.subpaths[i].anchors.size(); ++k) {
        const PathSegment& x = a.subpaths[i].anchors[k];
        const PathSegment& y = b.subpaths[i].anchors[k];
        const std::string where = std::string(c.name) + " anchor " + std::to_string(k);
        expectPoint(x.p, y.p.x, y.p.y, where);
        expectPoint(x.in, y.in.x, y.in.y, where + " in");
        expectPoint(x.out, y.out.x, y.out.y, where + " out");
      }
    }
  }
}

TEST(PathData, CubicAnchorsCarryTheControlPoints) {
  const PathParseResult r = parsePathData("M0 0 C 1 2 3 4 5 6 Z", 100);
  ASSERT_EQ(r.subpaths.size(), 1u);
  const Subpath& s = r.subpaths[0];
  EXPECT_TRUE(s.closed);
  ASSERT_EQ(s.anchors.size(), 2u);
  expectPoint(s.anchors[0].out, 1, 2, "first out");
  expectPoint(s.anchors[1].in, 3, 4, "second in");
  expectPoint(s.anchors[1].p, 5, 6, "second point");
  expectPoint(s.anchors[1].out, 5, 6, "closing side is straight");
}

TEST(PathData, ClosingOnTheStartMergesTheLastAnchor) {
  const PathParseResult r = parsePathData("M0 0 L10 0 L10 10 L0 0 Z M20 20 L30 20 z", 100);
  ASSERT_EQ(r.subpaths.size(), 2u);
  EXPECT_EQ(r.subpaths[0].anchors.size(), 3u);
  EXPECT_EQ(r.subpaths[1].anchors.size(), 2u);
  // A command after closepath starts at the subpath's start.
  const PathParseResult again = parsePathData("M5 5 L10 5 Z L5 10", 100);
  ASSERT_EQ(again.subpaths.size(), 2u);
  expectPoint(again.subpaths[1].anchors[0].p, 5, 5, "restart point");
}

struct ArcCase {
  const char* name;
  Point from;
  double rx, ry, rotation;
  bool large, sweep;
  Point to;
  std::size_t curves;  // quarter turns needed
};

const ArcCase kArcs[] = {
    {"quarter circle", {10, 0}, 10, 10, 0, false, true, {0, 10}, 1},
    {"half circle", {10, 0}, 10, 10, 0, false, true, {-10, 0}, 2},
    {"large three quarters", {10, 0}, 10, 10, 0, true, false, {0, 10}, 3},
    {"rotated ellipse", {0, 0}, 20, 10, 30, false, true, {15, 12}, 1},
    {"radii too small are scaled up", {0, 0}, 1, 1, 0, false, true, {40, 0}, 2},
    {"ellipse large sweep", {0, 0}, 30, 15, -45, true, true, {10, 20}, 3},
};

TEST(PathData, ArcsBecomeCubicsOnTheEllipse) {
  for (const ArcCase& c : kArcs) {
    Subpath s;
    s.anchors.push_back(PathSegment::at(c.from));
    appendArc(s, c.from, c.rx, c.ry, c.rotation, c.large, c.sweep, c.to);
    ASSERT_EQ(s.anchors.size(), c.curves + 1) << c.name;
    expectPoint(s.anchors.back().p, c.to.x, c.to.y, c.name);
    // The ellipse is rebuilt here from the SVG endpoint parameters (radii scaled up when too
    // small); samples of every curve must lie on it: (u/rx)^2 + (v/ry)^2 = 1 in its own axes.
    const double phi = c.rotation * M_PI / 180.0;
    const double dx = (c.from.x - c.to.x) / 2, dy = (c.from.y - c.to.y) / 2;
    const double x1 = std::cos(phi) * dx + std::sin(phi) * dy, y1 = -std::sin(phi) * dx + std::cos(phi) * dy;
    const double scale = std::max(1.0, std::sqrt(x1 * x1 / (c.rx * c.rx) + y1 * y1 / (c.ry * c.ry)));
    const double rx = c.rx * scale, ry = c.ry * scale;
    std::vector<Point> samples;
    for (std::size_t i = 0; i + 1 < s.anchors.size(); ++i) {
      for (double t : {0.0, 0.25, 0.5, 0.75}) {
        samples.push_back(cubicAt(s.anchors[i].p, s.anchors[i].out, s.anchors[i + 1].in, s.anchors[i + 1].p, t));
      }
    }
    samples.push_back(c.to);
    // Of the two centres that fit the endpoints, the samples must lie on one.
    bool onEllipse = false;
    for (int sign : {-1, 1}) {
      const double num = rx * rx * ry * ry - rx * rx * y1 * y1 - ry * ry * x1 * x1;
      const double den = rx * rx * y1 * y1 + ry * ry * x1 * x1;
      const double k = sign * std::sqrt(std::max(0.0, num / den));
      const double cxp = k * rx * y1 / ry, cyp = -k * ry * x1 / rx;
      const double cx = std::cos(phi) * cxp - std::sin(phi) * cyp + (c.from.x + c.to.x) / 2;
      const double cy = std::sin(phi) * cxp + std::cos(phi) * cyp + (c.from.y + c.to.y) / 2;
      double worst = 0;
      for (const Point& p : samples) {
        const double u = std::cos(phi) * (p.x - cx) + std::sin(phi) * (p.y - cy);
        const double v = -std::sin(phi) * (p.x - cx) + std::cos(phi) * (p.y - cy);
        worst = std::max(worst, std::fabs(std::sqrt(u * u / (rx * rx) + v * v / (ry * ry)) - 1.0));
      }
      // A cubic per quarter turn stays within 0.03% of the radius.
      if (worst < 3e-4) onEllipse = true;
    }
    EXPECT_TRUE(onEllipse) << c.name;
  }
}

TEST(PathData, QuarterArcHandlesHaveTheCircleConstant) {
  Subpath s;
  s.anchors.push_back(PathSegment::at(10, 0));
  appendArc(s, {10, 0}, 10, 10, 0, false, true, {0, 10});
  const double k = 4.0 / 3.0 * std::tan(M_PI / 8) * 10;  // 5.5228...
  expectPoint(s.anchors[0].out, 10, k, "first handle");
  expectPoint(s.anchors[1].in, k, 10, "second handle");
}

struct BadCase {
  const char* name;
  const char* data;
  std::size_t subpaths;  // kept before the error
};

const BadCase kBad[] = {
    {"no moveto", "L10 10", 0},
    {"unknown command", "M0 0 L10 0 X 5", 1},
    {"missing number", "M0 0 L10 0 L 5", 1},
    {"numbers after close", "M0 0 L10 0 Z 5 5", 1},
    {"bad arc flag", "M0 0 L5 5 A10 10 0 2 1 20 20", 1},
};

TEST(PathData, ErrorsKeepWhatCameBefore) {
  for (const BadCase& c : kBad) {
    const PathParseResult r = parsePathData(c.data, 100);
    EXPECT_FALSE(r.error.empty()) << c.name;
    EXPECT_EQ(r.subpaths.size(), c.subpaths) << c.name;
  }
}

TEST(PathData, TooManyPointsStops) {
  std::string big = "M0 0";
  for (int i = 0; i < 1000; ++i) big += " L" + std::to_string(i) + " 1";
  const PathParseResult r = parsePathData(big, 100);
  EXPECT_NE(r.error.find("too many"), std::string::npos);
}

TEST(PathData, CornerFlagsFollowTheHandles) {
  const PathParseResult r = parsePathData("M0 0 C 0 10 10 10 10 0 C 10 -10 20 -10 20 0 L 30 0", 100);
  ASSERT_EQ(r.subpaths[0].anchors.size(), 4u);
  EXPECT_TRUE(r.subpaths[0].anchors[0].corner);
  EXPECT_FALSE(r.subpaths[0].anchors[1].corner) << "collinear opposite handles are smooth";
  EXPECT_TRUE(r.subpaths[0].anchors[2].corner);
}

}  // namespace
}  // namespace refhost::io::svg
