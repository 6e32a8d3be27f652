#include "SvgTestSupport.h"

#include <gtest/gtest.h>

namespace refhost {
namespace {

using testing::findArt;
using testing::importSvg;

struct SizeCase {
  const char* width;
  const char* height;
  const char* extra;
  double wantWidthPt;
  double wantHeightPt;
};

// 1 px = 0.75 pt; 1 in = 96 px = 72 pt.
const SizeCase kSizes[] = {
    {"100", "50", "", 75, 37.5},
    {"100px", "50px", "", 75, 37.5},
    {"72pt", "36pt", "", 72, 36},
    {"6pc", "3pc", "", 72, 36},
    {"25.4mm", "12.7mm", "", 72, 36},
    {"2.54cm", "1.27cm", "", 72, 36},
    {"1in", "2in", "", 72, 144},
    {"2em", "1em", "", 24, 12},
    {"50%", "25%", "viewBox='0 0 200 400'", 75, 75},
};

TEST(Units, RootSizeBecomesTheArtboard) {
  for (const SizeCase& c : kSizes) {
    const std::string svg = std::string("<svg xmlns='http://www.w3.org/2000/svg' width='") + c.width + "' height='" +
                            c.height + "' " + c.extra + "/>";
    auto r = importSvg(svg);
    ASSERT_EQ(r.document->artboards().size(), 1u) << c.width;
    const Rect b = r.document->artboards()[0].bounds;
    testing::expectPoint({b.left, b.bottom}, {0, 0}, c.width);
    testing::expectPoint({b.right, b.top}, {c.wantWidthPt, c.wantHeightPt}, c.width);
  }
}

TEST(Units, LengthsOfShapes) {
  auto r = importSvg(
      "<svg xmlns='http://www.w3.org/2000/svg' width='200' height='100'>"
      "<rect id='a' x='1in' y='0' width='10mm' height='50%'/>"
      "<rect id='b' x='10%' y='10pt' width='2cm' height='1pc' style='stroke:black;stroke-width:1mm'/></svg>");
  const Rect a = testing::anchorBounds(findArt(*r.document, "a"));
  EXPECT_NEAR(a.left, 72, 1e-9);
  EXPECT_NEAR(a.width(), 10 / 25.4 * 72, 1e-9);
  EXPECT_NEAR(a.height(), 50 * 0.75, 1e-9) << "50% of the 100 px viewport height";
  const PathData& b = *findArt(*r.document, "b")->path();
  EXPECT_NEAR(b.segments[0].p.x, 20 * 0.75, 1e-9) << "10% of the 200 px viewport width";
  EXPECT_NEAR(b.segments[0].p.y, (100 - 10 * 96.0 / 72) * 0.75, 1e-9);
  EXPECT_NEAR(findArt(*r.document, "b")->pathStyle().strokeWidth, 1 / 25.4 * 72, 1e-9);
}

struct AspectCase {
  const char* par;
  // Where viewBox (0,0)-(100,50) lands in a 200 x 200 px viewport, in px.
  double x0, y0, x1, y1;
};

const AspectCase kAspects[] = {
    {"", 0, 50, 200, 150},
    {"xMidYMid meet", 0, 50, 200, 150},
    {"xMinYMin meet", 0, 0, 200, 100},
    {"xMaxYMax meet", 0, 100, 200, 200},
    {"none", 0, 0, 200, 200},
    {"xMinYMin slice", 0, 0, 400, 200},
    {"xMidYMid slice", -100, 0, 300, 200},
    {"xMaxYMid slice", -200, 0, 200, 200},
};

TEST(Units, ViewBoxAndPreserveAspectRatio) {
  for (const AspectCase& c : kAspects) {
    const std::string svg = std::string("<svg xmlns='http://www.w3.org/2000/svg' width='200' height='200' viewBox='0 0 100 50' "
                                        "preserveAspectRatio='") + c.par + "'><rect id='r' width='100' height='50'/></svg>";
    auto r = importSvg(svg);
    const PathData& p = *findArt(*r.document, "r")->path();
    testing::expectPoint(p.segments[0].p, testing::docPoint(c.x0, c.y0, 200), c.par);
    testing::expectPoint(p.segments[2].p, testing::docPoint(c.x1, c.y1, 200), c.par);
  }
}

TEST(Units, ViewBoxOffsetAndDefaultSize) {
  // Without width and height the viewBox gives the size.
  auto r = importSvg("<svg xmlns='http://www.w3.org/2000/svg' viewBox='10 20 40 80'><rect id='r' x='10' y='20' width='4' height='8'/></svg>");
  EXPECT_NEAR(r.document->artboards()[0].bounds.right, 30, 1e-9);
  EXPECT_NEAR(r.document->artboards()[0].bounds.top, 60, 1e-9);
  const PathData& p = *findArt(*r.document, "r")->path();
  testing::expectPoint(p.segments[0].p, {0, 60}, "the viewBox top-left is the artboard's top-left");
}

}  // namespace
}  // namespace refhost
