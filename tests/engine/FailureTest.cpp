// Every host call of a rasterization made to fail in turn: the call either succeeds (a failure the
// engine ignores) or returns an error and leaves no raster art; nothing it took stays held.
#include <string>
#include <vector>

#include "shell/ErrorCodes.h"
#include "tests/engine/EngineFixture.h"

namespace dw {
namespace {

using fake::ColorUse;
using fake::spotColor;
using test_support::EngineTest;
using test_support::makeSettings;

constexpr DWErr kInjected = fourCharError("INJ!");

struct Scenario {
  const char* name;
  RasterizeSettings settings;
  bool spots;
  uint32_t processors;
};

class FailureSweep : public EngineTest {
 protected:
  DWErr runScenario(const Scenario& s) {
    engine_testing::setProcessorCount(s.processors);
    h().preferences["Rasterize/rasterizeMemory"] = 1;
    settings = s.settings;
    const DWArtHandle root = h().layer(h().currentLayer).group;
    DWArtHandle group = h().addArt(kDWGroupArt, root);
    DWArtHandle a = h().addPaintedArt({1, 90, 70, 10}, {0xFF, 0x80, 0x40, 0x20, 0x10}, group);
    DWArtHandle b = h().addPaintedArt({30, 60, 99, 2}, {0x80, 0x11, 0x22, 0x33, 0x44});
    h().art(a).userAttr = 0x10000;
    if (s.spots) {
      h().art(a).colors = {ColorUse{kDWUsesSpot, {0, 0, 0, 0}, spotColor(1)},
                           ColorUse{kDWUsesSpot, {0, 0, 0, 0}, spotColor(2)}};
      h().art(b).colors = {ColorUse{kDWUsesProcessInks, {0, 1, 0, 0}, nullptr}};
    }
    h().symbolEditing = 1;
    DWArtHandle prep = h().addArt(kDWPathArt, root);
    return rasterize(h().addArtSet({group, a, b}), {0, 100, 600, 0}, 1.0, prep,
                     [](int32_t, int32_t) { return int32_t(1); });
  }
};

TEST_F(FailureSweep, EveryCallFailsInTurn) {
  const Scenario scenarios[] = {
      {"RGB, factor 4, three slots, device drawing",
       makeSettings(kRasterTypeRgb, 72.0, 4, RasterizeOptions::DrawPortDevice), false, 3},
      {"process plus spots, transparent, factor 2",
       [] {
         RasterizeSettings s = makeSettings(kRasterTypeCmykTransparent, 72.0, 2, RasterizeOptions::AllowNChannelRaster);
         s.preserveSpotColors = 1;
         return s;
       }(),
       true, 2},
      {"gray, no supersampling", makeSettings(kRasterTypeGrayscale, 150.0, 0), false, 2},
  };
  for (const Scenario& s : scenarios) {
    reset();
    ASSERT_EQ(runScenario(s), kDWNoErr) << s.name;
    const size_t total = h().calls().size();
    ASSERT_GT(total, 50u) << s.name;
    size_t failures = 0;
    for (size_t nth = 1; nth <= total; ++nth) {
      reset();
      h().failNthCall(nth, kInjected);
      const DWErr code = runScenario(s);
      const std::string failed = nth <= h().calls().size() ? h().calls()[nth - 1] : std::string("?");
      const std::string context = std::string(s.name) + ", call " + std::to_string(nth) + " (" + failed + ")";
      if (code != kDWNoErr) {
        ++failures;
        EXPECT_TRUE(h().liveRasters().empty()) << context;
        if (failed == "AllocateBlock")
          EXPECT_EQ(code, OutOfMemoryError) << context;
        else
          EXPECT_EQ(code, kInjected) << "host errors come back unchanged: " << context;
        EXPECT_EQ(result, nullptr) << context;
      } else {
        EXPECT_EQ(h().liveRasters().size(), 1u) << context;
      }
      expectNothingHeld(context);
      if (HasFailure()) return;
    }
    EXPECT_GT(failures, 20u) << s.name;
  }
}

TEST_F(FailureSweep, OutOfMemoryAtEachAllocation) {
  const Scenario s{"RGB factor 4", makeSettings(kRasterTypeRgb, 72.0, 4), false, 3};
  ASSERT_EQ(runScenario(s), kDWNoErr);
  const size_t allocations = h().countCalls("AllocateBlock");
  ASSERT_EQ(allocations, 6u) << "tile and supersampled buffer for each of three slots";
  for (size_t n = 1; n <= allocations; ++n) {
    reset();
    // A refused buffer is tried again with half the rows; refuse every try from the nth on.
    h().failAllocationsFrom = n;
    const DWErr code = runScenario(s);
    const std::string context = "allocation " + std::to_string(n);
    EXPECT_EQ(code, OutOfMemoryError) << context;
    EXPECT_TRUE(h().liveRasters().empty()) << context;
    expectNothingHeld(context);
  }
}

}  // namespace
}  // namespace dw
