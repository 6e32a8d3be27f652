// Whatever stops a rasterization after its raster art exists, the document is left without it: a
// failing host call at each step from there on, and a progress callback that says stop at each
// of its calls.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/e2e/PluginHost.h"

namespace e2e {
namespace {

constexpr DWErr kInjected = hostCode("XFAL");

// Supersampled, transparent, several objects and, with a 1 MiB budget per slot, several tiles in
// two batches: every stage of the tile loop runs more than once.
struct FailureFixture {
  PluginHost p;
  DWArtSetHandle set;
  RasterizeSettings settings = settingsFor(kRasterTypeRgbTransparent, 4);
  Rect bounds{0, 300, 200, 0};

  FailureFixture() {
    p.host.preferences().setInteger("Rasterize", "rasterizeMemory", 1);
    std::vector<Art*> art;
    for (int i = 0; i < 3; ++i) art.push_back(p.add({10.0 + 50 * i, 10, 60.0 + 50 * i, 290}, Paint::rgb(1, 0, 0.5 * i)));
    set = p.artSet(art);
  }
  PluginHost::Result run(DWRasterizeProgressProc progress = nullptr) { return p.rasterize(set, settings, bounds, progress); }
};

TEST(Failures, AFailingHostCallAfterTheRasterExistsLeavesNoRaster) {
  FailureFixture f;
  ASSERT_EQ(f.run().code, 0);  // the process-wide lookups happen once, so the next run is typical
  f.p.doc->disposeArt(f.p.rasters().at(0));
  f.p.host.controls().traceCalls(true);
  ASSERT_EQ(f.run().code, 0);
  const std::vector<std::string> calls = f.p.host.controls().calls();
  f.p.host.controls().traceCalls(false);
  const RasterData clean = *f.p.rasters().at(0)->raster();
  f.p.doc->disposeArt(f.p.rasters().at(0));
  const auto created = std::find(calls.begin(), calls.end(), std::string(kDWArtSuite) + "/NewArt");
  ASSERT_NE(created, calls.end());
  const uint64_t first = uint64_t(created - calls.begin()) + 2;  // the call after the creation, 1-based
  ASSERT_GT(calls.size(), first + 20) << "the run should have many steps after the raster's creation";

  int failed = 0;
  for (uint64_t k = first; k <= calls.size(); ++k) {
    const std::string step = "call " + std::to_string(k) + " (" + calls[k - 1] + ")";
    f.p.host.controls().failCall(k, kInjected);
    const PluginHost::Result r = f.run();
    EXPECT_TRUE(f.p.host.controls().failureDelivered()) << step;
    f.p.host.controls().clearFailure();
    const std::vector<Art*> rasters = f.p.rasters();
    if (r.code == 0) {
      // Some failures are ignored by design: clean-up, reads with a fallback (the memory preference,
      // the group blend walk, the member test of the art visit), a refused accelerator routine.
      ASSERT_EQ(rasters.size(), 1u) << step;
      EXPECT_TRUE(rasters[0]->raster()->samePixels(clean)) << step << " was ignored but changed the pixels";
      f.p.doc->disposeArt(rasters[0]);
      continue;
    }
    ++failed;
    EXPECT_TRUE(rasters.empty()) << step << " left its raster art";
    EXPECT_EQ(r.raster, nullptr) << step;
  }
  EXPECT_GT(failed, 0);
}

int gStopAt = 0;
int gCalls = 0;
int32_t stopAtTheNthCall(int32_t, int32_t) { return ++gCalls == gStopAt ? 0 : 1; }

TEST(Failures, AProgressCallbackThatStopsLeavesNoRaster) {
  FailureFixture f;
  gStopAt = 0;
  gCalls = 0;
  ASSERT_EQ(f.run(stopAtTheNthCall).code, 0);
  f.p.doc->disposeArt(f.p.rasters().at(0));
  const int total = gCalls;
  ASSERT_GE(total, 6) << "three objects in at least two tiles";
  for (gStopAt = 1; gStopAt <= total; ++gStopAt) {
    gCalls = 0;
    const PluginHost::Result r = f.run(stopAtTheNthCall);
    EXPECT_EQ(r.code, kUserCancelled) << "stopped at progress call " << gStopAt;
    EXPECT_EQ(gCalls, gStopAt) << "no progress call after the stop";
    EXPECT_TRUE(f.p.rasters().empty()) << "stopped at progress call " << gStopAt;
  }
}

}  // namespace
}  // namespace e2e
