// A row shaded in one call against the same pixels shaded one at a time: long rows go through the
// stepped paths (stretches of pixels, two per step), a single pixel through the plain one, and
// both must pick the same table entry for every pixel.
#include "refhost/render/GradientShader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace refhost;
using namespace refhost::render;

namespace {

struct RowCase {
  const char* name;
  Gradient::Kind kind;
  Gradient::Spread spread;
  Matrix docToDevice;
  std::int32_t x0, width;
};

const RowCase kRows[] = {
    {"linear pad, scaled", Gradient::Kind::Linear, Gradient::Spread::Pad, {3.7, 0, 0, 3.7, 0, 0}, -7, 203},
    {"linear pad, rotated and skewed", Gradient::Kind::Linear, Gradient::Spread::Pad, {2.1, 0.7, -0.4, 1.9, -13, 7}, 3, 130},
    {"linear pad, row far past both ends", Gradient::Kind::Linear, Gradient::Spread::Pad, {0.9, 0, 0, 0.9, 0, 0}, -500, 1201},
    {"linear repeat", Gradient::Kind::Linear, Gradient::Spread::Repeat, {1.3, 0.2, 0, 1.3, 5, 0}, -40, 301},
    {"linear reflect", Gradient::Kind::Linear, Gradient::Spread::Reflect, {1.3, -0.2, 0.1, 1.3, 0, 9}, -40, 301},
    {"radial pad", Gradient::Kind::Radial, Gradient::Spread::Pad, {2.5, 0, 0, 2.5, 0, 0}, -11, 257},
};

}  // namespace

TEST(GradientRow, RowsMatchPixelsShadedOneByOne) {
  for (const RowCase& c : kRows) {
    for (Family family : {Family::Gray, Family::Rgb, Family::Cmyk}) {
      Gradient g;
      g.kind = c.kind;
      g.spread = c.spread;
      g.start = {10, 5};
      g.end = {90, 40};
      g.center = {50, 20};
      g.radius = 45;
      g.focus = {40, 25};
      g.stops = {GradientStop{0.0, Paint::rgb(0, 0, 0), 1.0}, GradientStop{0.4, Paint::rgb(1, 0.2, 0), 0.6},
                 GradientStop{1.0, Paint::rgb(1, 1, 1), 1.0}};
      GradientShader shader;
      const ColorSpace::Ptr space = ColorSpace::process(family, false);
      ASSERT_TRUE(shader.prepare(g, Rect::none(), c.docToDevice, nullptr, *space, 1.0)) << c.name;
      const std::size_t spp = static_cast<std::size_t>(shader.bytesPerPixel());
      const std::string name = std::string(c.name) + ", family " + std::to_string(static_cast<int>(family));
      for (std::int32_t y : {-3, 17, 64}) {
        std::vector<std::uint8_t> row(static_cast<std::size_t>(c.width) * spp), one(spp);
        shader.shadeRow(y, c.x0, c.x0 + c.width, row.data());
        for (std::int32_t i = 0; i < c.width; ++i) {
          shader.shadeRow(y, c.x0 + i, c.x0 + i + 1, one.data());
          const std::vector<std::uint8_t> got(row.begin() + static_cast<std::ptrdiff_t>(i * spp),
                                              row.begin() + static_cast<std::ptrdiff_t>((i + 1) * spp));
          ASSERT_EQ(got, one) << name << ", row " << y << ", x " << c.x0 + i;
        }
      }
    }
  }
}
