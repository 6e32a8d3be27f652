#include "SvgTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>

namespace refhost {
namespace {

using testing::docPoint;
using testing::expectPoint;
using testing::findArt;
using testing::importSvg;
using testing::svgDoc;

const double kKappa = 4.0 / 3.0 * std::tan(M_PI / 8);  // quarter-circle handle length / radius

// Expected anchors in SVG user units, converted here to document points.
struct Anchor {
  Point p, in, out;
};

void expectAnchors(const Art* art, const std::vector<Anchor>& want, bool closed, const std::string& what) {
  ASSERT_NE(art, nullptr) << what;
  ASSERT_EQ(art->kind(), ArtKind::Path) << what;
  const PathData& path = *art->path();
  EXPECT_EQ(path.closed, closed) << what;
  ASSERT_EQ(path.segments.size(), want.size()) << what;
  for (std::size_t i = 0; i < want.size(); ++i) {
    const std::string where = what + " anchor " + std::to_string(i);
    expectPoint(path.segments[i].p, docPoint(want[i].p.x, want[i].p.y), where);
    expectPoint(path.segments[i].in, docPoint(want[i].in.x, want[i].in.y), where + " in");
    expectPoint(path.segments[i].out, docPoint(want[i].out.x, want[i].out.y), where + " out");
  }
}

Anchor corner(double x, double y) { return Anchor{{x, y}, {x, y}, {x, y}}; }

// An ellipse starts at its right extreme and goes clockwise on screen, one smooth anchor per quarter.
std::vector<Anchor> ellipse(double cx, double cy, double rx, double ry) {
  const double kx = rx * kKappa, ky = ry * kKappa;
  return {{{cx + rx, cy}, {cx + rx, cy - ky}, {cx + rx, cy + ky}},
          {{cx, cy + ry}, {cx + kx, cy + ry}, {cx - kx, cy + ry}},
          {{cx - rx, cy}, {cx - rx, cy + ky}, {cx - rx, cy - ky}},
          {{cx, cy - ry}, {cx - kx, cy - ry}, {cx + kx, cy - ry}}};
}

TEST(Shapes, RoundedRectangle) {
  auto r = importSvg(svgDoc("<rect id='r' x='10' y='20' width='40' height='30' rx='5' ry='4'/>"));
  const double kx = 5 * kKappa, ky = 4 * kKappa;
  // Starts after the top-left corner and goes clockwise on screen: line, arc, line, arc ...
  expectAnchors(findArt(*r.document, "r"),
                {
                    {{15, 20}, {15 - kx, 20}, {15, 20}},
                    {{45, 20}, {45, 20}, {45 + kx, 20}},
                    {{50, 24}, {50, 24 - ky}, {50, 24}},
                    {{50, 46}, {50, 46}, {50, 46 + ky}},
                    {{45, 50}, {45 + kx, 50}, {45, 50}},
                    {{15, 50}, {15, 50}, {15 - kx, 50}},
                    {{10, 46}, {10, 46 + ky}, {10, 46}},
                    {{10, 24}, {10, 24}, {10, 24 - ky}},
                },
                true, "rounded rect");
}

TEST(Shapes, RoundedRectangleRadiiRules) {
  // Only rx given: ry follows. A radius beyond half the side is clamped, and the straight sides it
  // leaves at zero length vanish.
  auto r = importSvg(svgDoc("<rect id='a' width='40' height='20' rx='5'/><rect id='b' width='40' height='20' rx='5' ry='30'/>"));
  const PathData& a = *findArt(*r.document, "a")->path();
  ASSERT_EQ(a.segments.size(), 8u);
  EXPECT_NEAR(a.segments[2].p.y, testing::docPoint(0, 5).y, 1e-9) << "ry = rx = 5";
  const PathData& b = *findArt(*r.document, "b")->path();
  EXPECT_EQ(b.segments.size(), 6u);
  const Rect box = testing::anchorBounds(findArt(*r.document, "b"));
  EXPECT_NEAR(box.width(), 30.0, 1e-9);
  EXPECT_NEAR(box.height(), 15.0, 1e-9);
  EXPECT_NEAR(b.segments[2].p.y, testing::docPoint(0, 10).y, 1e-9) << "ry clamped to half the height";
}

TEST(Shapes, CircleAndEllipse) {
  auto r = importSvg(svgDoc("<circle id='c' cx='50' cy='40' r='10'/><ellipse id='e' cx='50' cy='40' rx='20' ry='10'/>"));
  expectAnchors(findArt(*r.document, "c"), ellipse(50, 40, 10, 10), true, "circle");
  expectAnchors(findArt(*r.document, "e"), ellipse(50, 40, 20, 10), true, "ellipse");
  for (const PathSegment& s : findArt(*r.document, "c")->path()->segments) EXPECT_FALSE(s.corner);
}

TEST(Shapes, RectangleLinePolylinePolygon) {
  auto r = importSvg(svgDoc("<rect id='r' x='10' y='20' width='30' height='40'/>"
                            "<line id='l' x1='1' y1='2' x2='30' y2='40' stroke='black'/>"
                            "<polyline id='pl' points='0,0 10,0 10,10'/>"
                            "<polygon id='pg' points='0 0, 10 0 5 8'/>"));
  expectAnchors(findArt(*r.document, "r"), {corner(10, 20), corner(40, 20), corner(40, 60), corner(10, 60)}, true, "rect");
  expectAnchors(findArt(*r.document, "l"), {corner(1, 2), corner(30, 40)}, false, "line");
  EXPECT_FALSE(findArt(*r.document, "l")->pathStyle().fillPaint) << "a line has no fill";
  expectAnchors(findArt(*r.document, "pl"), {corner(0, 0), corner(10, 0), corner(10, 10)}, false, "polyline");
  expectAnchors(findArt(*r.document, "pg"), {corner(0, 0), corner(10, 0), corner(5, 8)}, true, "polygon");
}

TEST(Shapes, DegenerateShapesDrawNothing) {
  auto r = importSvg(svgDoc("<rect id='a' width='0' height='10'/><circle id='b' r='0'/><ellipse id='c' rx='-1' ry='2'/>"
                            "<polygon id='d' points='1 1'/>"));
  for (const char* n : {"a", "b", "c", "d"}) EXPECT_EQ(findArt(*r.document, n), nullptr) << n;
}

TEST(Shapes, PathWithSeveralSubpathsIsACompoundPath) {
  auto r = importSvg(svgDoc("<path id='p' fill-rule='evenodd' d='M0 0 H10 V10 H0 Z M2 2 H8 V8 H2 Z'/>"));
  Art* p = findArt(*r.document, "p");
  ASSERT_EQ(p->kind(), ArtKind::CompoundPath);
  ASSERT_EQ(p->childCount(), 2u);
  EXPECT_EQ(p->pathStyle().fillRule, FillRule::EvenOdd);
  EXPECT_EQ(p->firstChild()->path()->segments.size(), 4u);
  expectPoint(p->lastChild()->path()->segments[0].p, docPoint(2, 2), "second subpath start");
}

TEST(Shapes, PathDataErrorIsWarnedAndDrawnUpToIt) {
  auto r = importSvg(svgDoc("<path id='p' d='M0 0 L10 0 L10 10 oops'/>"));
  ASSERT_NE(findArt(*r.document, "p"), nullptr);
  EXPECT_EQ(findArt(*r.document, "p")->path()->segments.size(), 3u);
  ASSERT_EQ(r.warnings.size(), 1u);
  EXPECT_NE(r.warnings[0].find("test.svg:1: path data"), std::string::npos) << r.warnings[0];
}

}  // namespace
}  // namespace refhost
