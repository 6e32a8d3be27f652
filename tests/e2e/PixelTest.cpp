// Pixels of the real plug-in in the reference host, against a model of supersampling that knows
// nothing of either: each final pixel is f x f samples, a sample takes the topmost rectangle whose
// cell it lies in (edges sit on sample boundaries, so coverage is exact), and the box filter sums
// bytes and divides with truncation, weighting colour by alpha where there is alpha.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "refhost/render/Accelerator.h"
#include "tests/e2e/PluginHost.h"

namespace e2e {
namespace {

using Bytes = std::vector<int>;

struct Shape {
  Box box;
  std::vector<double> color;  // gray ink, RGB light or CMYK ink, by the number of values
  Bytes bytes;                // that colour in the port's channels, alpha first where there is alpha
};

Paint paintOf(const std::vector<double>& v) {
  if (v.size() == 1) return Paint::gray(v[0]);
  if (v.size() == 3) return Paint::rgb(v[0], v[1], v[2]);
  return Paint::cmyk(v[0], v[1], v[2], v[3]);
}

// Who reduces the supersampled tiles: the host's accelerator a whole pixel at a time or channel by
// channel, or the plug-in's own down-sampler when the host offers no accelerator.
enum class Reduction { Pixels, Channels, Plugin };

struct PixelCase {
  const char* name;
  int32_t type;
  int16_t antialiasing;
  int factor;  // what the engine must use
  Reduction reduction;
  Bytes background;
  std::vector<Shape> shapes;
};

constexpr double kWidth = 40, kHeight = 16;

Bytes sampleAt(const PixelCase& c, int f, int sx, int sy) {
  const double x = (sx + 0.5) / f, y = kHeight - (sy + 0.5) / f;
  for (auto s = c.shapes.rbegin(); s != c.shapes.rend(); ++s)
    if (x > s->box.left && x < s->box.right && y > s->box.bottom && y < s->box.top) return s->bytes;
  return c.background;
}

Bytes expectedPixel(const PixelCase& c, int x, int y) {
  const int f = c.factor, n = f * f;
  const size_t channels = c.background.size();
  const bool alpha = c.type >= 4 && c.type <= 6;
  Bytes sum(channels, 0);
  int alphaSum = 0;
  for (int sy = y * f; sy < (y + 1) * f; ++sy)
    for (int sx = x * f; sx < (x + 1) * f; ++sx) {
      const Bytes s = sampleAt(c, f, sx, sy);
      if (!alpha) {
        for (size_t k = 0; k < channels; ++k) sum[k] += s[k];
        continue;
      }
      if (s[0] == 0) continue;
      alphaSum += s[0];
      for (size_t k = 1; k < channels; ++k) sum[k] += s[0] * s[k];
    }
  Bytes out(channels);
  if (!alpha) {
    for (size_t k = 0; k < channels; ++k) out[k] = sum[k] / n;
    return out;
  }
  if (alphaSum == 0) return c.background;  // a transparent block keeps the background's colour
  out[0] = alphaSum / n;
  for (size_t k = 1; k < channels; ++k) out[k] = sum[k] / alphaSum;
  return out;
}

const PixelCase kCases[] = {
    {"factor 1, whole pixels", kRasterTypeRgb, 0, 1, Reduction::Pixels, {255, 255, 255}, {{{10, 4, 30, 12}, {1, 0, 0}, {255, 0, 0}}}},
    {"factor 2, half pixels", kRasterTypeRgb, 2, 2, Reduction::Pixels, {255, 255, 255},
     {{{10.5, 4.5, 29.5, 11.5}, {1, 0, 0}, {255, 0, 0}}}},
    {"factor 3, third pixels, gray", kRasterTypeGrayscale, 3, 3, Reduction::Plugin, {255},
     {{{10 + 1.0 / 3, 4 + 2.0 / 3, 20 + 2.0 / 3, 12}, {1}, {0}}}},
    {"factor 4, quarter pixels", kRasterTypeRgb, 4, 4, Reduction::Pixels, {255, 255, 255},
     {{{10.25, 4.25, 29.75, 11.5}, {0, 0, 0}, {0, 0, 0}}}},
    {"factor 4, quarter pixels, channel by channel", kRasterTypeRgb, 4, 4, Reduction::Channels, {255, 255, 255},
     {{{10.25, 4.25, 29.75, 11.5}, {0, 0, 0}, {0, 0, 0}}}},
    {"transparent: colour weighted by alpha", kRasterTypeRgbTransparent, 4, 4, Reduction::Pixels, {0, 255, 255, 255},
     {{{10.25, 4.25, 20.5, 11.75}, {1, 0, 0}, {255, 255, 0, 0}}, {{20.5, 4, 20.75, 12}, {0, 0, 1}, {255, 0, 0, 255}}}},
    {"transparent: colour weighted by alpha, channel by channel", kRasterTypeRgbTransparent, 4, 4, Reduction::Channels,
     {0, 255, 255, 255},
     {{{10.25, 4.25, 20.5, 11.75}, {1, 0, 0}, {255, 255, 0, 0}}, {{20.5, 4, 20.75, 12}, {0, 0, 1}, {255, 0, 0, 255}}}},
    {"transparent gray", kRasterTypeGrayscaleTransparent, 4, 4, Reduction::Pixels, {0, 255},
     {{{3.75, 0.5, 9.25, 15.25}, {1}, {255, 0}}}},
    {"transparent, the plug-in's down-sampler", kRasterTypeRgbTransparent, 4, 4, Reduction::Plugin, {0, 255, 255, 255},
     {{{10.25, 4.25, 20.5, 11.75}, {1, 0, 0}, {255, 255, 0, 0}}, {{20.5, 4, 20.75, 12}, {0, 0, 1}, {255, 0, 0, 255}}}},
    {"factor 4, quarter pixels, the plug-in's down-sampler", kRasterTypeRgb, 4, 4, Reduction::Plugin, {255, 255, 255},
     {{{10.25, 4.25, 29.75, 11.5}, {0, 0, 0}, {0, 0, 0}}}},
    {"factor 2, half pixels, the plug-in's down-sampler", kRasterTypeRgb, 2, 2, Reduction::Plugin, {255, 255, 255},
     {{{10.5, 4.5, 29.5, 11.5}, {1, 0, 0}, {255, 0, 0}}}},
    {"factor 8, eighth pixels", kRasterTypeRgb, 8, 8, Reduction::Pixels, {255, 255, 255},
     {{{10.125, 4.375, 29.625, 11.875}, {0, 0, 1}, {0, 0, 255}}}},
    {"factor 8, eighth pixels, gray, the plug-in's down-sampler", kRasterTypeGrayscale, 8, 8, Reduction::Plugin, {255},
     {{{10.125, 4.375, 29.625, 11.875}, {1}, {0}}}},
    {"transparent at factor 8, channel by channel", kRasterTypeRgbTransparent, 8, 8, Reduction::Channels,
     {0, 255, 255, 255},
     {{{10.125, 4.375, 20.5, 11.875}, {1, 0, 0}, {255, 255, 0, 0}}, {{20.5, 4, 20.625, 12}, {0, 1, 0}, {255, 0, 255, 0}}}},
    {"transparent at factor 8, the plug-in's down-sampler", kRasterTypeRgbTransparent, 8, 8, Reduction::Plugin,
     {0, 255, 255, 255},
     {{{10.125, 4.375, 20.5, 11.875}, {1, 0, 0}, {255, 255, 0, 0}}, {{20.5, 4, 20.625, 12}, {0, 1, 0}, {255, 0, 255, 0}}}},
    {"transparent CMYK", kRasterTypeCmykTransparent, 4, 4, Reduction::Channels, {0, 0, 0, 0, 0},
     {{{10.25, 4.25, 20.5, 11.75}, {1, 0, 0, 0}, {255, 255, 0, 0, 0}},
      {{20.5, 4, 20.75, 12}, {0, 1, 0, 0}, {255, 0, 255, 0, 0}}}},
};

TEST(Pixels, RectanglesGiveTheExactSupersampledPixels) {
  for (const PixelCase& c : kCases) {
    render::acceleratorSwitches().pixelRoutines = c.reduction == Reduction::Pixels;
    render::acceleratorSwitches().enabled = c.reduction != Reduction::Plugin;
    PluginHost p;
    std::vector<Art*> art;
    for (const Shape& s : c.shapes) art.push_back(p.add(s.box, paintOf(s.color)));
    p.host.controls().traceCalls(true);
    const PluginHost::Result r =
        p.rasterize(p.artSet(art), settingsFor(c.type, c.antialiasing), Rect{0, kHeight, kWidth, 0});
    render::acceleratorSwitches().pixelRoutines = true;
    render::acceleratorSwitches().enabled = true;
    const std::vector<std::string> calls = p.host.controls().calls();
    const bool accelerated = std::any_of(calls.begin(), calls.end(), [](const std::string& call) {
      return call.rfind(std::string(kDWHVExtensionSuite) + "/Reduce", 0) == 0;
    });
    EXPECT_EQ(accelerated, c.factor > 1 && c.reduction != Reduction::Plugin) << c.name << ": who reduced";
    ASSERT_EQ(r.code, 0) << c.name;
    ASSERT_NE(r.raster, nullptr) << c.name;
    const RasterData& raster = *r.raster->raster();
    ASSERT_EQ(raster.width(), kWidth) << c.name;
    ASSERT_EQ(raster.height(), kHeight) << c.name;
    int mismatches = 0;
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x) {
        const Bytes want = expectedPixel(c, x, y);
        Bytes got(want.size());
        for (size_t k = 0; k < want.size(); ++k) got[k] = pixelByte(raster, x, y, int32_t(k));
        if (got != want && ++mismatches <= 3)
          ADD_FAILURE() << c.name << ": pixel (" << x << ", " << y << ") is "
                        << ::testing::PrintToString(got) << ", expected " << ::testing::PrintToString(want);
      }
    EXPECT_EQ(mismatches, 0) << c.name;
  }
}

TEST(Pixels, BitmapStoresBlackAsOne) {
  PluginHost p;
  const Box black{10, 4, 30, 12};
  Art* art = p.add(black, Paint::rgb(0, 0, 0));
  const PluginHost::Result r = p.rasterize(p.artSet({art}), settingsFor(kRasterTypeBitmap, 4),
                                           Rect{0, kHeight, kWidth, 0});
  ASSERT_EQ(r.code, 0);
  const RasterData& raster = *r.raster->raster();
  EXPECT_EQ(raster.record.bitsPerPixel, 1);
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x) {
      const bool inside = x >= black.left && x < black.right && kHeight - y - 1 >= black.bottom && kHeight - y <= black.top;
      EXPECT_EQ(pixelByte(raster, x, y, 0), inside ? 1 : 0) << "pixel (" << x << ", " << y << ")";
    }
}

}  // namespace
}  // namespace e2e
