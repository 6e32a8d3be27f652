#include "SvgTestSupport.h"

#include <gtest/gtest.h>

namespace refhost {
namespace {

using testing::findArt;
using testing::importSvg;
using testing::svgDoc;

void expectRgb(const Paint& p, double r, double g, double b, const std::string& what) {
  ASSERT_EQ(p.type, Paint::Type::Rgb) << what;
  EXPECT_NEAR(p.v[0], r, 1e-9) << what;
  EXPECT_NEAR(p.v[1], g, 1e-9) << what;
  EXPECT_NEAR(p.v[2], b, 1e-9) << what;
}

TEST(Styles, DefaultsAreBlackFillAndNoStroke) {
  auto r = importSvg(svgDoc("<rect id='r' width='1' height='1'/>"));
  const PathStyle& s = findArt(*r.document, "r")->pathStyle();
  EXPECT_TRUE(s.fillPaint);
  expectRgb(s.fill, 0, 0, 0, "default fill");
  EXPECT_FALSE(s.strokePaint);
  EXPECT_EQ(s.fillRule, FillRule::NonZero);
}

TEST(Styles, InheritanceThroughGroups) {
  auto r = importSvg(svgDoc("<g fill='red' stroke='blue' stroke-width='4' opacity='0.5'>"
                            "<g style='stroke-linejoin:round;stroke-linecap:square'><rect id='r' width='1' height='1' fill='inherit'/>"
                            "<rect id='s' width='1' height='1' fill='none' stroke-miterlimit='9' fill-rule='evenodd'/></g></g>"));
  const Art* rect = findArt(*r.document, "r");
  const PathStyle& a = rect->pathStyle();
  expectRgb(a.fill, 1, 0, 0, "inherited fill");
  expectRgb(a.stroke, 0, 0, 1, "inherited stroke");
  EXPECT_NEAR(a.strokeWidth, 3, 1e-9);
  EXPECT_EQ(a.lineJoin, LineJoin::Round);
  EXPECT_EQ(a.lineCap, LineCap::Projecting);
  EXPECT_EQ(a.opacity, 1.0) << "opacity is not inherited";
  EXPECT_EQ(rect->parent()->parent()->pathStyle().opacity, 0.5) << "it is on the group";
  const PathStyle& b = findArt(*r.document, "s")->pathStyle();
  EXPECT_FALSE(b.fillPaint);
  EXPECT_EQ(b.miterLimit, 9);
  EXPECT_EQ(b.fillRule, FillRule::EvenOdd);
}

TEST(Styles, StyleAttributeBeatsPresentationAttribute) {
  auto r = importSvg(svgDoc("<rect id='r' width='1' height='1' fill='red' style='fill: lime; fill-opacity: .25'/>"));
  const PathStyle& s = findArt(*r.document, "r")->pathStyle();
  expectRgb(s.fill, 0, 1, 0, "style wins");
  EXPECT_EQ(s.fillOpacity, 0.25);
}

struct SelectorCase {
  const char* name;
  const char* css;
  const char* body;
  double wantRed;  // red channel of #r's fill
};

const SelectorCase kSelectors[] = {
    {"type", "rect { fill: #f00 }", "<rect id='r' width='1' height='1'/>", 1},
    {"class", ".hot { fill: #f00 }", "<rect id='r' class='x hot' width='1' height='1'/>", 1},
    {"id", "#r { fill: #f00 }", "<rect id='r' width='1' height='1'/>", 1},
    {"compound", "rect.hot#r { fill: #f00 }", "<rect id='r' class='hot' width='1' height='1'/>", 1},
    {"compound not matching", "circle.hot { fill: #f00 }", "<rect id='r' class='hot' width='1' height='1'/>", 0},
    {"descendant", "g.layer rect { fill: #f00 }", "<g class='layer'><g><rect id='r' width='1' height='1'/></g></g>", 1},
    {"child", "g.layer > rect { fill: #f00 }", "<g class='layer'><g><rect id='r' width='1' height='1'/></g></g>", 0},
    {"child matching", "g.layer > rect { fill: #f00 }", "<g class='layer'><rect id='r' width='1' height='1'/></g>", 1},
    {"comma list", "circle, rect { fill: #f00 }", "<rect id='r' width='1' height='1'/>", 1},
    {"universal", "* { fill: #f00 }", "<rect id='r' width='1' height='1'/>", 1},
    {"id beats class", "#r { fill: #f00 } .c { fill: #000 }", "<rect id='r' class='c' width='1' height='1'/>", 1},
    {"class beats type", "rect.c { fill: #f00 } rect { fill: #000 }", "<rect id='r' class='c' width='1' height='1'/>", 1},
    {"later wins at equal specificity", ".a { fill: #000 } .b { fill: #f00 }", "<rect id='r' class='a b' width='1' height='1'/>", 1},
    {"sheet beats presentation attribute", "rect { fill: #f00 }", "<rect id='r' fill='black' width='1' height='1'/>", 1},
    {"style attribute beats sheet", "#r { fill: #f00 }", "<rect id='r' style='fill:black' width='1' height='1'/>", 0},
    {"important beats style attribute", "rect { fill: #f00 !important }", "<rect id='r' style='fill:black' width='1' height='1'/>", 1},
    {"comments and at-rules", "/* x */ @media print { rect { fill: #000 } } rect { fill: #f00 }", "<rect id='r' width='1' height='1'/>", 1},
    {"inherited from a styled group", ".g { fill: #f00 }", "<g class='g'><rect id='r' width='1' height='1'/></g>", 1},
};

TEST(Styles, CssSelectors) {
  for (const SelectorCase& c : kSelectors) {
    auto r = importSvg(svgDoc(std::string("<style>") + c.css + "</style>" + c.body));
    const Art* a = findArt(*r.document, "r");
    ASSERT_NE(a, nullptr) << c.name;
    ASSERT_EQ(a->pathStyle().fill.type, Paint::Type::Rgb) << c.name;
    EXPECT_NEAR(a->pathStyle().fill.v[0], c.wantRed, 1e-9) << c.name;
  }
}

TEST(Styles, UnsupportedSelectorsAreWarnedOnce) {
  auto r = importSvg(svgDoc("<style>rect:hover { fill: red } rect[x] { fill: red } rect { fill: blue }</style>"
                            "<rect id='r' width='1' height='1'/>"));
  expectRgb(findArt(*r.document, "r")->pathStyle().fill, 0, 0, 1, "supported rule still applies");
  ASSERT_EQ(r.warnings.size(), 1u);
  EXPECT_NE(r.warnings[0].find("rect:hover"), std::string::npos) << r.warnings[0];
}

TEST(Styles, StyleSheetInCdata) {
  auto r = importSvg(svgDoc("<defs><style type='text/css'><![CDATA[ .a { fill: #00f } ]]></style></defs>"
                            "<rect id='r' class='a' width='1' height='1'/>"));
  expectRgb(findArt(*r.document, "r")->pathStyle().fill, 0, 0, 1, "CDATA sheet");
}

TEST(Styles, CurrentColorUsesTheElementsColour) {
  auto r = importSvg(svgDoc("<g color='red' fill='currentColor'><rect id='a' width='1' height='1' color='blue'/>"
                            "<rect id='b' width='1' height='1' stroke='currentColor'/></g>"));
  expectRgb(findArt(*r.document, "a")->pathStyle().fill, 0, 0, 1, "currentColor with the element's colour");
  expectRgb(findArt(*r.document, "b")->pathStyle().stroke, 1, 0, 0, "inherited colour");
}

TEST(Styles, DisplayAndVisibility) {
  auto r = importSvg(svgDoc("<rect id='a' width='1' height='1' display='none'/>"
                            "<g visibility='hidden'><rect id='b' width='1' height='1'/>"
                            "<rect id='c' width='1' height='1' visibility='visible'/></g>"
                            "<g style='display:none'><rect id='d' width='1' height='1'/></g>"
                            "<rect id='e' width='1' height='1'/><g><g id='f' style='display:none'/></g>"));
  EXPECT_TRUE(findArt(*r.document, "f")->isHidden()) << "display:none hides a group";
  EXPECT_TRUE(findArt(*r.document, "a")->isHidden());
  EXPECT_TRUE(findArt(*r.document, "b")->isHidden());
  EXPECT_FALSE(findArt(*r.document, "c")->isHidden()) << "visibility can be turned back on";
  EXPECT_FALSE(findArt(*r.document, "d")->layer()->isShown()) << "a top-level group is a layer: the layer is hidden";
}

TEST(Styles, InvalidValuesAreIgnored) {
  auto r = importSvg(svgDoc("<g fill='red' stroke-width='3'><rect id='r' width='1' height='1' fill='bogus' "
                            "stroke-width='-2' fill-opacity='x'/></g>"));
  const PathStyle& s = findArt(*r.document, "r")->pathStyle();
  expectRgb(s.fill, 1, 0, 0, "the inherited fill stays");
  EXPECT_NEAR(s.strokeWidth, 3 * 0.75, 1e-9);
  EXPECT_EQ(s.fillOpacity, 1.0);
}

TEST(Styles, OpacitiesAndFontSizes) {
  auto r = importSvg(svgDoc("<g font-size='20'><text id='t' x='0' y='10' style='font-size:150%;font-family:Serif'>Hi</text>"
                            "<rect id='r' width='2em' height='1' opacity='50%' stroke='black' stroke-opacity='0.3'/></g>"));
  const Art* t = findArt(*r.document, "t");
  EXPECT_NEAR(t->text()->fontSize, 30 * 0.75, 1e-9);
  EXPECT_EQ(t->text()->fontFamily, "Serif");
  const Art* rect = findArt(*r.document, "r");
  EXPECT_NEAR(rect->path()->segments[1].p.x, 40 * 0.75, 1e-9) << "em of the inherited font size";
  EXPECT_EQ(rect->pathStyle().opacity, 0.5);
  EXPECT_NEAR(rect->pathStyle().strokeOpacity, 0.3, 1e-12);
}

}  // namespace
}  // namespace refhost
