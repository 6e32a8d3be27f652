#include "SvgTestSupport.h"

#include <gtest/gtest.h>

namespace refhost {
namespace {

using testing::docPoint;
using testing::expectPoint;
using testing::findArt;
using testing::importSvg;
using testing::svgDoc;

const Gradient& gradientOf(const Art* a) {
  EXPECT_EQ(a->pathStyle().fill.type, Paint::Type::Gradient);
  return *a->pathStyle().fill.gradient;
}

TEST(Gradients, LinearInBoundingBoxUnits) {
  auto r = importSvg(svgDoc("<defs><linearGradient id='g' x1='0' y1='0' x2='100%' y2='0'>"
                            "<stop offset='0' stop-color='red'/><stop offset='50%' stop-color='blue' stop-opacity='0.5'/>"
                            "</linearGradient></defs><rect id='r' x='10' y='20' width='40' height='10' fill='url(#g)'/>"));
  const Gradient& g = gradientOf(findArt(*r.document, "r"));
  EXPECT_EQ(g.kind, Gradient::Kind::Linear);
  EXPECT_EQ(g.units, Gradient::Units::UserSpace) << "resolved against the box on import";
  EXPECT_EQ(g.start, (Point{0, 0}));
  EXPECT_EQ(g.end, (Point{1, 0}));
  // The unit square lands on the rectangle.
  expectPoint(g.transform.apply({0, 0}), docPoint(10, 20), "box origin");
  expectPoint(g.transform.apply({1, 1}), docPoint(50, 30), "box corner");
  ASSERT_EQ(g.stops.size(), 2u);
  EXPECT_EQ(g.stops[1].offset, 0.5);
  EXPECT_EQ(g.stops[1].opacity, 0.5);
  EXPECT_EQ(g.stops[1].color, Paint::rgb(0, 0, 1));
}

TEST(Gradients, UserSpaceWithTransformAndSpread) {
  auto r = importSvg(svgDoc("<linearGradient id='g' gradientUnits='userSpaceOnUse' x1='10' y1='0' x2='90' y2='0' "
                            "gradientTransform='translate(0 5)' spreadMethod='reflect'>"
                            "<stop offset='0' stop-color='#000'/><stop offset='1' stop-color='#fff'/></linearGradient>"
                            "<g transform='scale(0.5)'><rect id='r' width='100' height='100' fill='url(#g)'/></g>"));
  const Gradient& g = gradientOf(findArt(*r.document, "r"));
  EXPECT_EQ(g.spread, Gradient::Spread::Reflect);
  EXPECT_EQ(g.start, (Point{10, 0}));
  // Gradient point (10, 0): translated to (10, 5), then the group's scale: (5, 2.5).
  expectPoint(g.transform.apply({10, 0}), docPoint(5, 2.5), "user space through both transforms");
}

TEST(Gradients, HrefInheritsAttributesAndStops) {
  auto r = importSvg(svgDoc("<radialGradient id='base' cx='0.25' r='0.4' spreadMethod='repeat'>"
                            "<stop offset='0.2' stop-color='lime'/><stop offset='0.1' stop-color='red'/></radialGradient>"
                            "<radialGradient id='g' xlink:href='#base' fx='0.3'/>"
                            "<rect id='r' width='20' height='20' fill='url(#g) red'/>"));
  const Gradient& g = gradientOf(findArt(*r.document, "r"));
  EXPECT_EQ(g.kind, Gradient::Kind::Radial);
  EXPECT_EQ(g.spread, Gradient::Spread::Repeat);
  EXPECT_EQ(g.center, (Point{0.25, 0.5}));
  EXPECT_EQ(g.radius, 0.4);
  EXPECT_EQ(g.focus, (Point{0.3, 0.5}));
  ASSERT_EQ(g.stops.size(), 2u);
  EXPECT_EQ(g.stops[1].offset, 0.2) << "offsets never go back";
}

TEST(Gradients, ARadialGradientTakesOnlySharedAttributesFromALinearOne) {
  auto r = importSvg(svgDoc("<linearGradient id='lin' cx='1' x2='0.5' spreadMethod='reflect'/>"
                            "<radialGradient id='g' xlink:href='#lin'>"
                            "<stop offset='0' stop-color='white'/><stop offset='1'/></radialGradient>"
                            "<rect id='r' width='20' height='20' fill='url(#g)'/>"));
  const Gradient& g = gradientOf(findArt(*r.document, "r"));
  EXPECT_EQ(g.kind, Gradient::Kind::Radial);
  EXPECT_EQ(g.spread, Gradient::Spread::Reflect) << "spread is shared by both kinds";
  EXPECT_EQ(g.center, (Point{0.5, 0.5})) << "cx of a linear gradient is not inherited";
}

TEST(Gradients, DegenerateCases) {
  auto r = importSvg(svgDoc("<linearGradient id='one'><stop offset='0' stop-color='blue'/></linearGradient>"
                            "<linearGradient id='none'/>"
                            "<linearGradient id='g'><stop offset='0'/><stop offset='1' stop-color='white'/></linearGradient>"
                            "<rect id='a' width='5' height='5' fill='url(#one)'/>"
                            "<rect id='b' width='5' height='5' fill='url(#none)'/>"
                            "<line id='c' x1='0' y1='0' x2='10' y2='0' stroke='url(#g)'/>"
                            "<rect id='d' width='5' height='5' fill='url(#missing) green'/>"));
  EXPECT_EQ(findArt(*r.document, "a")->pathStyle().fill, Paint::rgb(0, 0, 1)) << "one stop paints its colour";
  EXPECT_FALSE(findArt(*r.document, "b")->pathStyle().fillPaint) << "no stops paints nothing";
  EXPECT_FALSE(findArt(*r.document, "c")->pathStyle().strokePaint) << "a box without height cannot hold box units";
  EXPECT_EQ(findArt(*r.document, "d")->pathStyle().fill.type, Paint::Type::Rgb) << "the fallback colour";
}

TEST(Gradients, StopsInheritFromTheGradientNotFromThePaintedElement) {
  // The painted group's colour and stop-color must not reach the stops.
  auto r = importSvg(svgDoc("<g color='green' stop-color='lime'><linearGradient id='g' color='blue' stop-color='red'>"
                            "<stop offset='0' stop-color='currentColor'/><stop offset='1' stop-color='inherit'/>"
                            "</linearGradient></g>"
                            "<g color='yellow' stop-color='yellow'><rect id='r' width='5' height='5' fill='url(#g)'/></g>"));
  const Gradient& g = gradientOf(findArt(*r.document, "r"));
  ASSERT_EQ(g.stops.size(), 2u);
  EXPECT_EQ(g.stops[0].color, Paint::rgb(0, 0, 1)) << "currentColor of the gradient element";
  EXPECT_EQ(g.stops[1].color, Paint::rgb(1, 0, 0)) << "inherit takes the gradient's stop-color";
}

TEST(Gradients, StopsTakeStyleFromTheSheet) {
  auto r = importSvg(svgDoc("<style>.s { stop-color: #00f; stop-opacity: .5 }</style>"
                            "<linearGradient id='g'><stop class='s' offset='0'/><stop offset='1' style='stop-color:red'/>"
                            "</linearGradient><rect id='r' width='5' height='5' fill='url(#g)'/>"));
  const Gradient& g = gradientOf(findArt(*r.document, "r"));
  EXPECT_EQ(g.stops[0].color, Paint::rgb(0, 0, 1));
  EXPECT_EQ(g.stops[0].opacity, 0.5);
  EXPECT_EQ(g.stops[1].color, Paint::rgb(1, 0, 0));
}

}  // namespace
}  // namespace refhost
