// The documented conversion formulas between gray, RGB and CMYK, and where paints land in ports.
#include "refhost/document/Document.h"
#include "refhost/render/ColorConversion.h"
#include "refhost/render/InkColor.h"

#include <gtest/gtest.h>

using namespace refhost;
using namespace refhost::render;

TEST(PaintConversion, FormulasOnKnownColours) {
  struct Case {
    const char* name;
    Rgb rgb;
    Cmyk cmyk;    // rgbToCmyk(rgb)
    double gray;  // rgbToGray(rgb), ink
  };
  const Case cases[] = {
      {"white", {1, 1, 1}, {0, 0, 0, 0}, 0.0},
      {"black", {0, 0, 0}, {0, 0, 0, 1}, 1.0},
      {"red", {1, 0, 0}, {0, 1, 1, 0}, 1.0 - 0.30},
      {"green", {0, 1, 0}, {1, 0, 1, 0}, 1.0 - 0.59},
      {"blue", {0, 0, 1}, {1, 1, 0, 0}, 1.0 - 0.11},
      {"half gray", {0.5, 0.5, 0.5}, {0, 0, 0, 0.5}, 0.5},
      {"dark orange", {0.5, 0.25, 0}, {0, 0.5, 1, 0.5}, 1.0 - (0.30 * 0.5 + 0.59 * 0.25)},
  };
  for (const Case& c : cases) {
    const Cmyk k = rgbToCmyk(c.rgb);
    EXPECT_NEAR(k.c, c.cmyk.c, 1e-12) << c.name;
    EXPECT_NEAR(k.m, c.cmyk.m, 1e-12) << c.name;
    EXPECT_NEAR(k.y, c.cmyk.y, 1e-12) << c.name;
    EXPECT_NEAR(k.k, c.cmyk.k, 1e-12) << c.name;
    EXPECT_NEAR(rgbToGray(c.rgb), c.gray, 1e-12) << c.name;
    // CMYK made from RGB converts back to the same light, and CMYK to gray goes through RGB.
    const Rgb back = cmykToRgb(k);
    EXPECT_NEAR(back.r, c.rgb.r, 1e-12) << c.name;
    EXPECT_NEAR(back.g, c.rgb.g, 1e-12) << c.name;
    EXPECT_NEAR(back.b, c.rgb.b, 1e-12) << c.name;
    EXPECT_NEAR(cmykToGray(k), c.gray, 1e-12) << c.name;
  }
  for (double g : {0.0, 0.25, 0.6, 1.0}) {
    EXPECT_NEAR(grayToRgb(g).r, 1.0 - g, 1e-12) << g;
    EXPECT_NEAR(grayToCmyk(g).k, g, 1e-12) << g;
    EXPECT_NEAR(rgbToGray(grayToRgb(g)), g, 1e-12) << g;
  }
}

TEST(PaintConversion, SpotColourLandsInItsChannelOrAsItsAlternate) {
  Document doc;
  CustomColor teal;
  teal.name = "Teal";
  teal.cmyk[0] = 1.0;
  teal.cmyk[2] = 0.4;
  const CustomColorId id = doc.newCustomColor(teal);
  CustomColor other;
  other.name = "Other";
  const CustomColorId otherId = doc.newCustomColor(other);
  const Paint paint = Paint::spotColor(id, 0.5);  // half of the ink
  struct Case {
    const char* name;
    ColorSpace::Ptr space;
    std::vector<int> bytes;
  };
  const Case cases[] = {
      {"cmyk: alternate times the amount", ColorSpace::process(Family::Cmyk, false), {128, 0, 51, 0}},
      {"rgb: the alternate's light", ColorSpace::process(Family::Rgb, false), {128, 255, 204}},
      {"own channel, process knocked out",
       ColorSpace::fromParts({ColorSpace::process(Family::Cmyk, false), ColorSpace::spot(id, false)}, false),
       {0, 0, 0, 0, 128}},
      {"another spot's channel: alternate in process, other spot empty",
       ColorSpace::fromParts({ColorSpace::process(Family::Cmyk, false), ColorSpace::spot(otherId, false)}, false),
       {128, 0, 51, 0, 0}},
      {"alpha is skipped", ColorSpace::spot(id, true), {128}},
  };
  for (const Case& c : cases) {
    std::uint8_t out[32];
    inkToBytes(resolvePaint(paint, &doc, *c.space), *c.space, out);
    for (std::size_t k = 0; k < c.bytes.size(); ++k) EXPECT_EQ(out[k], c.bytes[k]) << c.name << " channel " << k;
  }
}
