// The compositing formulas against a floating-point source-over, over thousands of seeded cases.
#include "refhost/render/Compositor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

using namespace refhost;
using namespace refhost::render;

namespace {

Surface surfaceOver(std::vector<std::uint8_t>& px, int bpp, bool alpha, int width) {
  Surface s;
  s.data = px.data();
  s.stride = bpp * width;
  s.area = IntRect{0, 0, width, 1};
  s.bytesPerPixel = bpp;
  s.alpha = alpha;
  return s;
}

}  // namespace

TEST(Compositor, MatchesFloatingSourceOver) {
  std::mt19937 rng(20240611);
  std::uniform_int_distribution<int> byte(0, 255);
  for (int bpp : {1, 3, 4, 5, 2}) {
    for (bool alpha : {false, true}) {
      if (alpha && bpp < 2) continue;
      for (int i = 0; i < 4000; ++i) {
        std::vector<std::uint8_t> px(static_cast<std::size_t>(bpp));
        for (auto& b : px) b = static_cast<std::uint8_t>(byte(rng));
        const std::vector<std::uint8_t> before = px;
        SolidSource src;
        const int nc = bpp - (alpha ? 1 : 0);
        for (int k = 0; k < nc; ++k) src.color[k] = static_cast<std::uint8_t>(byte(rng));
        src.alpha = static_cast<std::uint8_t>(byte(rng));
        const std::uint8_t cov = static_cast<std::uint8_t>(byte(rng));
        const Surface s = surfaceOver(px, bpp, alpha, 1);
        compositeSolid(s, 0, 0, 1, &cov, src);
        const double a = cov / 255.0 * src.alpha / 255.0;
        const std::string name = "bpp " + std::to_string(bpp) + (alpha ? " alpha" : "") + " case " + std::to_string(i);
        if (!alpha) {
          for (int k = 0; k < nc; ++k)
            ASSERT_NEAR(px[k], src.color[k] * a + before[k] * (1 - a), 1.0) << name;
          continue;
        }
        const double da = before[0] / 255.0;
        const double ra = a + da * (1 - a);
        ASSERT_NEAR(px[0], ra * 255, 1.0) << name;
        if (ra * 255 < 1) continue;
        for (int k = 0; k < nc; ++k) {
          const double expected = (src.color[k] * a + before[1 + k] * da * (1 - a)) / ra;
          // Colour is rounded after alpha was: when alpha is small, one step of it moves colour more.
          ASSERT_NEAR(px[1 + k], expected, 1.0 + 255.0 / std::max(1.0, ra * 255)) << name << " channel " << k;
        }
      }
    }
  }
}

TEST(Compositor, FullCoverageOfOpaquePaintIsExact) {
  for (int bpp : {1, 2, 3, 4, 5, 7}) {
    for (bool alpha : {false, true}) {
      std::vector<std::uint8_t> px(static_cast<std::size_t>(bpp) * 9, 77);
      SolidSource src;
      for (int k = 0; k < 32; ++k) src.color[k] = static_cast<std::uint8_t>(13 * k + 5);
      const Surface s = surfaceOver(px, bpp, alpha, 9);
      std::vector<std::uint8_t> cov(9, 255);
      compositeSolid(s, 0, 0, 9, cov.data(), src);
      for (int x = 0; x < 9; ++x) {
        const std::uint8_t* p = &px[static_cast<std::size_t>(x * bpp)];
        if (alpha) {
          ASSERT_EQ(p[0], 255) << "bpp " << bpp << " x " << x;
        }
        for (int k = 0; k < bpp - (alpha ? 1 : 0); ++k)
          ASSERT_EQ(p[k + (alpha ? 1 : 0)], src.color[k]) << "bpp " << bpp << (alpha ? " alpha" : "") << " x " << x;
      }
    }
  }
}

TEST(Compositor, PartialCoverageOverTransparencyKeepsTheColour) {
  std::vector<std::uint8_t> px = {0, 9, 9, 9};
  SolidSource src;
  src.color[0] = 200, src.color[1] = 10, src.color[2] = 90;
  for (int cov = 1; cov < 255; cov += 17) {
    px = {0, 9, 9, 9};
    const std::uint8_t c = static_cast<std::uint8_t>(cov);
    compositeSolid(surfaceOver(px, 4, true, 1), 0, 0, 1, &c, src);
    EXPECT_EQ(px[0], cov) << cov;
    EXPECT_EQ(px[1], 200) << cov;
    EXPECT_EQ(px[2], 10) << cov;
    EXPECT_EQ(px[3], 90) << cov;
  }
}

// Long rows whose coverage comes in runs of none, full and partial, as shape interiors and edges
// give them: the span paths must store what the per-pixel formula gives for every pixel.
TEST(Compositor, RunsOfCoverageMatchThePixelFormula) {
  std::mt19937 rng(977);
  std::uniform_int_distribution<int> byte(0, 255), kind(0, 2), length(0, 40);
  const int width = 301;
  for (int bpp : {1, 3, 4, 5}) {
    for (int sourceAlpha : {255, 200}) {
      for (bool pixels : {false, true}) {
        std::vector<std::uint8_t> coverage(static_cast<std::size_t>(width));
        for (int x = 0; x < width;) {
          const int k = kind(rng), n = length(rng);
          for (int i = 0; i < n && x < width; ++i, ++x)
            coverage[static_cast<std::size_t>(x)] = static_cast<std::uint8_t>(k == 0 ? 0 : k == 1 ? 255 : byte(rng));
        }
        std::vector<std::uint8_t> px(static_cast<std::size_t>(width * bpp));
        for (auto& b : px) b = static_cast<std::uint8_t>(byte(rng));
        std::vector<std::uint8_t> expected = px;
        // Source pixels: alpha first, then bpp colour bytes; a solid source repeats one colour.
        SolidSource solid;
        for (int k = 0; k < bpp; ++k) solid.color[k] = static_cast<std::uint8_t>(byte(rng));
        solid.alpha = static_cast<std::uint8_t>(sourceAlpha);
        std::vector<std::uint8_t> source(static_cast<std::size_t>(width * (bpp + 1)));
        for (int x = 0; x < width; ++x) {
          std::uint8_t* s = &source[static_cast<std::size_t>(x * (bpp + 1))];
          s[0] = x % 7 == 0 ? 255 : static_cast<std::uint8_t>(byte(rng));
          for (int k = 0; k < bpp; ++k) s[1 + k] = pixels ? static_cast<std::uint8_t>(byte(rng)) : solid.color[k];
          if (!pixels) s[0] = solid.alpha;
        }
        for (int x = 0; x < width; ++x) {
          const std::uint8_t* s = &source[static_cast<std::size_t>(x * (bpp + 1))];
          std::uint32_t a = pixels ? div255(std::uint32_t(s[0]) * std::uint32_t(sourceAlpha)) : s[0];
          a = div255(a * coverage[static_cast<std::size_t>(x)]);
          for (int k = 0; k < bpp; ++k) {
            std::uint8_t& d = expected[static_cast<std::size_t>(x * bpp + k)];
            d = static_cast<std::uint8_t>(div255(s[1 + k] * a + d * (255 - a)));
          }
        }
        const Surface surface = surfaceOver(px, bpp, false, width);
        if (pixels)
          compositePixels(surface, 0, 0, width, coverage.data(), source.data(), static_cast<std::uint8_t>(sourceAlpha));
        else
          compositeSolid(surface, 0, 0, width, coverage.data(), solid);
        EXPECT_EQ(px, expected) << "bpp " << bpp << " source alpha " << sourceAlpha << (pixels ? " pixels" : " solid");
      }
    }
  }
}

// Source pixels over an alpha-first surface (group layers, ports with alpha), in runs of coverage
// and without coverage, against the formulas of Compositor.h pixel by pixel.
TEST(Compositor, PixelRunsOverAlphaMatchThePixelFormula) {
  std::mt19937 rng(4411);
  std::uniform_int_distribution<int> byte(0, 255), kind(0, 2), length(0, 40);
  const int width = 257;
  for (int nc : {1, 3, 4, 5}) {
    for (int opacity : {255, 140}) {
      for (bool withCoverage : {true, false}) {
        const int spp = nc + 1;
        std::vector<std::uint8_t> coverage(static_cast<std::size_t>(width), 255);
        for (int x = 0; withCoverage && x < width;) {
          const int k = kind(rng), n = length(rng);
          for (int i = 0; i < n && x < width; ++i, ++x)
            coverage[static_cast<std::size_t>(x)] = static_cast<std::uint8_t>(k == 0 ? 0 : k == 1 ? 255 : byte(rng));
        }
        std::vector<std::uint8_t> px(static_cast<std::size_t>(width * spp)), source(px.size());
        for (auto& b : px) b = static_cast<std::uint8_t>(byte(rng));
        for (auto& b : source) b = static_cast<std::uint8_t>(byte(rng));
        for (int x = 0; x < width; ++x) {
          // Opaque and transparent pixels on both sides, as shapes and cleared layers have them.
          if (x % 5 == 0) source[static_cast<std::size_t>(x * spp)] = 255;
          if (x % 11 == 0) px[static_cast<std::size_t>(x * spp)] = 0;
          if (x % 13 == 0) px[static_cast<std::size_t>(x * spp)] = 255;
        }
        std::vector<std::uint8_t> expected = px;
        for (int x = 0; x < width; ++x) {
          const std::uint8_t* s = &source[static_cast<std::size_t>(x * spp)];
          std::uint8_t* d = &expected[static_cast<std::size_t>(x * spp)];
          const std::uint32_t a =
              div255(div255(std::uint32_t(s[0]) * std::uint32_t(opacity)) * coverage[static_cast<std::size_t>(x)]);
          if (a == 0) continue;
          const std::uint32_t ws = 255 * a, wd = d[0] * (255 - a), den = ws + wd;
          for (int k = 1; k <= nc; ++k) d[k] = static_cast<std::uint8_t>((s[k] * ws + d[k] * wd + den / 2) / den);
          d[0] = static_cast<std::uint8_t>(a + div255(d[0] * (255 - a)));
        }
        const Surface surface = surfaceOver(px, spp, true, width);
        compositePixels(surface, 0, 0, width, withCoverage ? coverage.data() : nullptr, source.data(),
                        static_cast<std::uint8_t>(opacity));
        EXPECT_EQ(px, expected) << "colour channels " << nc << " opacity " << opacity
                                << (withCoverage ? " coverage runs" : " no coverage");
      }
    }
  }
}
