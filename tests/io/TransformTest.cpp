#include "SvgTestSupport.h"

#include "refhost/io/SvgTransform.h"

#include <gtest/gtest.h>

#include <cmath>

namespace refhost {
namespace {

using testing::findArt;
using testing::importSvg;
using testing::svgDoc;

// Applies a transform to a point the way SVG defines each form, written out independently.
Point translate(Point p, double x, double y) { return Point{p.x + x, p.y + y}; }
Point scale(Point p, double sx, double sy) { return Point{p.x * sx, p.y * sy}; }
Point rotate(Point p, double deg) {
  const double a = deg * M_PI / 180;
  return Point{p.x * std::cos(a) - p.y * std::sin(a), p.x * std::sin(a) + p.y * std::cos(a)};
}

struct TransformCase {
  const char* text;
  Point (*apply)(Point);
};

const TransformCase kTransforms[] = {
    {"translate(10)", [](Point p) { return translate(p, 10, 0); }},
    {"translate(10, -5)", [](Point p) { return translate(p, 10, -5); }},
    {"scale(2)", [](Point p) { return scale(p, 2, 2); }},
    {"scale(2 3)", [](Point p) { return scale(p, 2, 3); }},
    {"rotate(90)", [](Point p) { return rotate(p, 90); }},
    {"rotate(30 5 7)", [](Point p) { return translate(rotate(translate(p, -5, -7), 30), 5, 7); }},
    {"skewX(45)", [](Point p) { return Point{p.x + p.y, p.y}; }},
    {"skewY(45)", [](Point p) { return Point{p.x, p.y + p.x}; }},
    {"matrix(1 2 3 4 5 6)", [](Point p) { return Point{1 * p.x + 3 * p.y + 5, 2 * p.x + 4 * p.y + 6}; }},
    // A list applies right to left to the point.
    {"translate(10,0) scale(2)", [](Point p) { return translate(scale(p, 2, 2), 10, 0); }},
    {"scale(2),translate(10,0)", [](Point p) { return scale(translate(p, 10, 0), 2, 2); }},
    {"rotate(90) translate(1 2) scale(3)", [](Point p) { return rotate(translate(scale(p, 3, 3), 1, 2), 90); }},
};

TEST(Transforms, EveryFormMatchesItsDefinition) {
  const Point probes[] = {{0, 0}, {1, 0}, {0, 1}, {3.5, -2}};
  for (const TransformCase& c : kTransforms) {
    auto m = io::svg::parseTransform(c.text);
    ASSERT_TRUE(m.has_value()) << c.text;
    for (Point p : probes) {
      testing::expectPoint(m->apply(p), c.apply(p), c.text);
    }
  }
}

TEST(Transforms, MalformedListsAreRefused) {
  for (const char* bad : {"translate(", "rotate(1 2)", "scale()", "skewX(1 2)", "foo(1)", "matrix(1 2 3)", "translate(1) x"}) {
    EXPECT_FALSE(io::svg::parseTransform(bad).has_value()) << bad;
  }
  EXPECT_TRUE(io::svg::parseTransform("").has_value());
}

TEST(Transforms, NestedGroupsCompose) {
  auto r = importSvg(svgDoc("<g transform='translate(10 20)'><g transform='rotate(90)'>"
                            "<rect id='r' transform='scale(2)' x='1' y='0' width='1' height='1'/></g></g>"));
  const PathData& p = *findArt(*r.document, "r")->path();
  // (1,0) scaled -> (2,0), rotated -> (0,2), translated -> (10,22) in SVG user units.
  testing::expectPoint(p.segments[0].p, testing::docPoint(10, 22));
}

TEST(Transforms, StrokeWidthScalesWithTheUserSpace) {
  auto r = importSvg(svgDoc("<g transform='scale(4)'><rect id='r' width='5' height='5' stroke='red' stroke-width='2' "
                            "stroke-dasharray='1 2 3'/></g>"));
  const PathStyle& s = findArt(*r.document, "r")->pathStyle();
  EXPECT_NEAR(s.strokeWidth, 2 * 4 * 0.75, 1e-9);
  // An odd dash list repeats to make it even.
  ASSERT_EQ(s.dashArray.size(), 6u);
  EXPECT_NEAR(s.dashArray[3], 1 * 4 * 0.75, 1e-9);
}

TEST(Transforms, MalformedTransformIsWarnedAndIgnored) {
  auto r = importSvg(svgDoc("<rect id='r' transform='rotate(' width='5' height='5'/>"));
  EXPECT_NEAR(findArt(*r.document, "r")->path()->segments[1].p.x, 3.75, 1e-9);
  ASSERT_EQ(r.warnings.size(), 1u);
  EXPECT_NE(r.warnings[0].find("transform"), std::string::npos);
}

}  // namespace
}  // namespace refhost
