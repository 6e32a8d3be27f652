#include "fakes/FakeArtHost.h"
#include "shell/ErrorCodes.h"

namespace fake {

namespace {

// Stands in for the rasterize engine: records the request, makes a raster object over the padded
// bounds where it was asked to go, and reports progress until the user stops it.
DWErr fakeRasterize(DWArtSetHandle set, RasterizeSettings* settings, const DWRealRect* bounds, int32_t paintOrder,
                    DWArtHandle prep, DWArtHandle* raster, DWRasterizeProgressProc progress, double padding) {
  FakeArtHost& host = FakeArtHost::current();
  host.engineCalls.push_back(
      {host.contents(set), *settings, *bounds, paintOrder, FakeArtHost::art(prep), padding});
  if (host.engineResult != kDWNoErr) return host.engineResult;

  Art* made = host.add(nullptr, kDWRasterArt, "raster",
                       {bounds->left - padding, bounds->top + padding, bounds->right + padding,
                        bounds->bottom - padding});
  if (const DWErr e = host.insert(made, prep ? int16_t(paintOrder) : int16_t(kDWPlaceAboveAll), FakeArtHost::art(prep)))
    return e;
  for (int32_t step = 1; step <= host.engineSteps; ++step) {
    if (progress && !progress(step, host.engineSteps)) {
      host.detach(made);
      host.kill(made);
      return dw::UserCancelled;
    }
  }
  host.lastRaster = made;
  *raster = FakeArtHost::handle(made);
  return kDWNoErr;
}

}  // namespace

void FakeArtHost::installEngine(dw::PluginGlobals& globals) {
  globals.rasterizeSuite.RasterizeArtWithPadding = fakeRasterize;
}

}  // namespace fake
