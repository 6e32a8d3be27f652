#include "SvgTestSupport.h"

#include "refhost/io/CssColor.h"

#include <gtest/gtest.h>

namespace refhost {
namespace {

struct ColorCase {
  const char* text;
  double r, g, b, a;
};

const ColorCase kColors[] = {
    {"red", 1, 0, 0, 1},
    {"green", 0, 128 / 255.0, 0, 1},
    {"grey", 128 / 255.0, 128 / 255.0, 128 / 255.0, 1},
    {"greenyellow", 0xad / 255.0, 1, 0x2f / 255.0, 1},
    {"aliceblue", 0xf0 / 255.0, 0xf8 / 255.0, 1, 1},
    {"yellowgreen", 0x9a / 255.0, 0xcd / 255.0, 0x32 / 255.0, 1},
    {"RebeccaPurple", 0x66 / 255.0, 0x33 / 255.0, 0x99 / 255.0, 1},
    {"lightgoldenrodyellow", 0xfa / 255.0, 0xfa / 255.0, 0xd2 / 255.0, 1},
    {"transparent", 0, 0, 0, 0},
    {"#f80", 1, 0x88 / 255.0, 0, 1},
    {"#F80C", 1, 0x88 / 255.0, 0, 0xcc / 255.0},
    {"#12ab34", 0x12 / 255.0, 0xab / 255.0, 0x34 / 255.0, 1},
    {"#12ab3480", 0x12 / 255.0, 0xab / 255.0, 0x34 / 255.0, 0x80 / 255.0},
    {"rgb(255, 128, 0)", 1, 128 / 255.0, 0, 1},
    {"rgb(100%, 50%, 0%)", 1, 0.5, 0, 1},
    {"rgba(0, 0, 255, 0.5)", 0, 0, 1, 0.5},
    {"rgba(0,0,255,50%)", 0, 0, 1, 0.5},
    {"rgb(0 0 255 / 0.25)", 0, 0, 1, 0.25},
    {"rgb(0 50% 0)", 0, 0.5, 0, 1},
    {"rgb(300, -5, 0)", 1, 0, 0, 1},
    {"hsl(0, 100%, 50%)", 1, 0, 0, 1},
    {"hsl(120, 100%, 25%)", 0, 0.5, 0, 1},
    {"hsl(240deg 100% 50%)", 0, 0, 1, 1},
    {"hsla(0.5turn, 100%, 50%, 0.3)", 0, 1, 1, 0.3},
    {"hsl(0, 0%, 40%)", 0.4, 0.4, 0.4, 1},
    {" Blue ", 0, 0, 1, 1},
};

TEST(CssColors, EverySyntax) {
  for (const ColorCase& c : kColors) {
    auto got = io::svg::parseCssColor(c.text);
    ASSERT_TRUE(got.has_value()) << c.text;
    EXPECT_NEAR(got->r, c.r, 1e-9) << c.text;
    EXPECT_NEAR(got->g, c.g, 1e-9) << c.text;
    EXPECT_NEAR(got->b, c.b, 1e-9) << c.text;
    EXPECT_NEAR(got->a, c.a, 1e-9) << c.text;
  }
}

TEST(CssColors, MalformedAreRefused) {
  for (const char* bad : {"", "#12", "#12345", "#ggg", "notacolor", "rgb(1,2)", "rgb(1,2,3,4,5)", "hsl(0, 50, 50)", "rgb(1px,2,3)",
                          "rgba(0, 50%, 0, 0.5)", "rgb(100%, 0, 0)"}) {
    EXPECT_FALSE(io::svg::parseCssColor(bad).has_value()) << bad;
  }
}

TEST(CssColors, AlphaOfAColourMultipliesTheOpacity) {
  auto r = testing::importSvg(testing::svgDoc("<rect id='r' width='1' height='1' fill='rgba(255,0,0,0.5)' fill-opacity='0.5' "
                                              "stroke='#0000ff80'/>"));
  const PathStyle& s = testing::findArt(*r.document, "r")->pathStyle();
  EXPECT_NEAR(s.fillOpacity, 0.25, 1e-12);
  EXPECT_NEAR(s.strokeOpacity, 0x80 / 255.0, 1e-12);
  EXPECT_TRUE(s.strokePaint);
}

}  // namespace
}  // namespace refhost
