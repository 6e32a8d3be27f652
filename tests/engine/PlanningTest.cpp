#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "engine/GroupBlend.h"
#include "engine/MemoryBudget.h"
#include "engine/PlanningRules.h"
#include "engine/Resolution.h"
#include "engine/TileSlots.h"
#include "settings/RasterizeSettings.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"
#include "tests/engine/FakeHost.h"

namespace dw {
namespace {

using fake::FakeHost;

TEST(PlanningRules, SupersamplingFactor) {
  EXPECT_EQ(supersamplingFactor(0), 1);
  EXPECT_EQ(supersamplingFactor(1), 1);
  EXPECT_EQ(supersamplingFactor(-4), 1);
  EXPECT_EQ(supersamplingFactor(2), 2);
  EXPECT_EQ(supersamplingFactor(4), 4);
  EXPECT_EQ(factorForWidth(4, 3276), 4);
  EXPECT_EQ(factorForWidth(4, 3277), 2) << "3277 * 20 >= 65536";
  EXPECT_EQ(factorForWidth(2, 9000), 2);
  EXPECT_EQ(factorForWidth(3, 9000), 3) << "only 4 drops";
}

TEST(PlanningRules, PixelGridRounding) {
  const DWRealRect r = snapToPixelGrid(DWRealRect{10.2, 20.00005, 30.7, 5.5});
  EXPECT_EQ(r.left, 10);
  EXPECT_EQ(r.top, 20) << "within 0.0001 above a whole number rounds down";
  EXPECT_EQ(r.right, 31);
  EXPECT_EQ(r.bottom, 5);
  const DWRealRect whole = snapToPixelGrid(DWRealRect{-3, 8, 4, -2});
  EXPECT_EQ(whole.left, -3);
  EXPECT_EQ(whole.top, 8);
  EXPECT_EQ(whole.right, 4);
  EXPECT_EQ(whole.bottom, -2);
  const DWRealRect up = snapToPixelGrid(DWRealRect{0, 7.0002, 1.0002, 0});
  EXPECT_EQ(up.top, 8);
  EXPECT_EQ(up.right, 2);
}

TEST(PlanningRules, PixelSizes) {
  struct Case {
    const char* name;
    DWRealRect bounds;
    double padding, scale;
    DWErr error;
    int32_t width, height;
  };
  const double inf = std::numeric_limits<double>::infinity();
  const Case cases[] = {
      {"padding counts twice", {0, 50, 100, 0}, 10, 1, 0, 120, 70},
      {"300 ppi rounds up", {10.2, 20.00005, 30.7, 5.5}, 0, 300.0 / 72, 0, 86, 61},
      {"32767 high passes", {0, 32767, 100, 0}, 0, 1, 0, 100, 32767},
      {"32768 high", {0, 32768, 100, 0}, 0, 1, TooWideError, 0, 0},
      {"32768 wide", {0, 1, 32768, 0}, 0, 1, TooWideError, 0, 0},
      {"beyond 32 bits", {0, 1, 1e12, 0}, 0, 1e3, TooWideError, 0, 0},
      {"infinite scale", {0, 1, 1, 0}, 0, inf, TooWideError, 0, 0},
      {"inverted horizontally", {10, 1, 0, 0}, 0, 1, BadParameterError, 0, 0},
      {"inverted vertically", {0, 0, 10, 5}, 0, 1, BadParameterError, 0, 0},
      {"negative padding beyond the art", {0, 10, 10, 0}, -6, 1, BadParameterError, 0, 0},
      {"not a number", {0, 10, std::nan(""), 0}, 0, 1, BadParameterError, 0, 0},
      {"empty", {5, 5, 5, 5}, 0, 1, BadParameterError, 0, 0},
      {"empty, padded", {5, 5, 5, 5}, 1, 1, 0, 2, 2},
      {"inverted but padded to a positive size", {10, 5, 8, 5}, 2, 1, 0, 2, 4},
  };
  for (const Case& c : cases) {
    const PixelSize size = pixelSize(c.bounds, c.padding, c.scale);
    EXPECT_EQ(size.error, c.error) << c.name;
    EXPECT_EQ(size.width, c.width) << c.name;
    EXPECT_EQ(size.height, c.height) << c.name;
  }
}

TEST(PlanningRules, SlotsAndTiles) {
  EXPECT_EQ(slotCount(1, true, 8), 1u) << "no supersampling: one slot";
  EXPECT_EQ(slotCount(4, true, 8), 8u);
  EXPECT_EQ(slotCount(4, false, 8), 1u);
  EXPECT_EQ(tileCountFor(1000, 300), 4u);
  EXPECT_EQ(tileCountFor(900, 300), 3u);
  EXPECT_EQ(tileCountFor(1, 174), 1u);
  EXPECT_EQ(tileCountFor(10, 0), 0u);
}

TEST(PlanningRules, PortOptionFlags) {
  RasterizeSettings s{};
  EXPECT_EQ(portOptionFlags(0xFFFFFFFFu, s), 0xFFFFFFFFu & ~0x2D8013u);
  s.antialiasing = 4;
  EXPECT_EQ(portOptionFlags(0, s), 0x200000u);
  s.antialiasing = 1;
  s.options = RasterizeOptions::OutlineText | RasterizeOptions::TypeOptimized;
  EXPECT_EQ(portOptionFlags(0x40000000u, s), 0x40000000u | 0x8u | 0x10013u);
}

TEST(MemoryBudget, Rules) {
  struct Case {
    const char* name;
    uint32_t figure;
    uint64_t physical;
    int32_t preferenceMiB;  // -1: absent
    uint32_t expected;
  };
  const Case cases[] = {
      {"default cap 20 MiB", 512u << 20, 8ull << 30 | (256u << 20), -1, 20u << 20},
      {"host figure below the cap", 5u << 20, 8ull << 30 | (256u << 20), -1, 5u << 20},
      {"at least 1 MiB", 1000, 8ull << 30 | (256u << 20), -1, 1u << 20},
      {"physical low 32 bits", 512u << 20, (16ull << 30) + (3u << 20), -1, 3u << 20},
      {"physical low 32 bits zero: 1 MiB", 512u << 20, 16ull << 30, -1, 1u << 20},
      {"preference 1 MiB", 512u << 20, 8ull << 30 | (256u << 20), 1, 1u << 20},
      {"preference 100 MiB", 512u << 20, 8ull << 30 | (256u << 20), 100, 100u << 20},
      {"preference 0", 512u << 20, 8ull << 30 | (256u << 20), 0, 0},
  };
  for (const Case& c : cases) {
    FakeHost host;
    host.memoryFigure = c.figure;
    engine_testing::setPhysicalMemoryForTesting(&c.physical);
    if (c.preferenceMiB >= 0) host.preferences["Rasterize/rasterizeMemory"] = c.preferenceMiB;
    EXPECT_EQ(rasterMemoryBudget(), c.expected) << c.name;
    engine_testing::setPhysicalMemoryForTesting(nullptr);
  }
  FakeHost host;
  const uint64_t physical = (8ull << 30) + (256u << 20);
  engine_testing::setPhysicalMemoryForTesting(&physical);
  host.failCall("GetIntegerPreference", 1, fourCharError("FAIL"));
  host.preferences["Rasterize/rasterizeMemory"] = 1;
  EXPECT_EQ(rasterMemoryBudget(), 20u << 20) << "an unreadable preference is 20";
  engine_testing::setPhysicalMemoryForTesting(nullptr);
}

TEST(Resolution, Rules) {
  {
    FakeHost host;
    EXPECT_EQ(rasterResolution(0, 0.0), 300.0);
    EXPECT_EQ(rasterResolution(0, 150.0), 150.0);
    EXPECT_EQ(rasterResolution(RasterizeOptions::UseEffectsResolution, 150.0), 72.0)
        << "no document entry, no preference";
  }
  {
    FakeHost host;
    host.preferences["Rasterize/Defaults/DPI"] = 96;
    EXPECT_EQ(rasterResolution(RasterizeOptions::UseEffectsResolution, 150.0), 96.0);
    host.documentHasDpi = true;
    host.documentDpi = 200;
    EXPECT_EQ(rasterResolution(RasterizeOptions::UseEffectsResolution, 150.0), 200.0);
    host.failCall("GetInteger", 2, fourCharError("FAIL"));
    EXPECT_EQ(rasterResolution(RasterizeOptions::UseEffectsResolution, 150.0), 96.0) << "a failing read: preference";
  }
}

TEST(GroupBlend, SetsAndAncestors) {
  FakeHost host;
  const DWArtHandle root = host.layer(host.currentLayer).group;
  const DWArtHandle group = host.addArt(kDWGroupArt, root);
  const DWArtHandle inner = host.addArt(kDWGroupArt, group);
  const DWArtHandle a = host.addArt(kDWPathArt, inner);
  const DWArtHandle b = host.addArt(kDWPathArt, inner);
  const DWArtHandle c = host.addArt(kDWPathArt, group);
  const DWArtHandle loose = host.addArt(kDWPathArt, nullptr);
  host.art(a).blendValue = 11;
  host.art(inner).blendValue = 22;
  host.art(group).blendValue = 33;
  host.art(root).blendValue = 44;

  EXPECT_EQ(groupBlendValue(nullptr), 0u);
  EXPECT_EQ(groupBlendValue(host.addArtSet({})), 0u);
  EXPECT_EQ(groupBlendValue(host.addArtSet({a})), 11u);
  EXPECT_EQ(groupBlendValue(host.addArtSet({a, b})), 22u) << "siblings: their group";
  EXPECT_EQ(groupBlendValue(host.addArtSet({a, b, c})), 33u) << "cousins: the outer group";
  EXPECT_EQ(groupBlendValue(host.addArtSet({a, a})), 11u) << "the same art twice";
  EXPECT_EQ(groupBlendValue(host.addArtSet({a, inner})), 22u) << "an art and its ancestor: the ancestor";
  host.documentBlendValue = 7;
  EXPECT_EQ(groupBlendValue(host.addArtSet({a, loose})), 1u) << "no common ancestor: the document says";
  host.documentBlendValue = 0;
  EXPECT_EQ(groupBlendValue(host.addArtSet({a, loose})), 0u);
  host.documentBlendValue = 5;
  host.failNext("GetArtParent", fourCharError("FAIL"));
  EXPECT_EQ(groupBlendValue(host.addArtSet({a, b})), 1u) << "a failed read: the document says";
  host.failNext("CountArtSet", fourCharError("FAIL"));
  EXPECT_EQ(groupBlendValue(host.addArtSet({a})), 0u);
}

TEST(GroupBlend, SecondAccessorWhenTheFirstGivesNothing) {
  FakeHost host;
  const DWArtHandle a = host.addArt();
  host.art(a).blendValue = 9;
  host.failCall("IndexArtSet", 1, fourCharError("GONE"));
  EXPECT_EQ(groupBlendValue(host.addArtSet({a})), 9u);
  EXPECT_EQ(host.countCalls("GetArtSetEntry"), 1u);
}

}  // namespace
}  // namespace dw
