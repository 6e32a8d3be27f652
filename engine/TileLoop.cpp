#include "engine/TileLoop.h"

#include <vector>

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include "basic_thread.h"
#include "engine/Background.h"
#include "engine/Downsampler.h"
#include "engine/Multithreading.h"
#include "engine/RasterizeTile.h"
#include "settings/RasterizeSettings.h"
#include "shell/ErrorCodes.h"
#include "windows_compat.h"

namespace dw {

namespace {

DWErr writeTile(const RasterPlan& plan, uint32_t tileIndex, const TileSlot& slot) {
  const TileGeometry& g = plan.geometry;
  return updateRasterTile(plan.rasterArt, tileIndex, plan.width, plan.height, plan.channels, g.tileWidth, g.tileRows,
                          g.tileStride, slot.tileBuffer);
}

DWErr runWithoutSupersampling(const RasterRequest& request, RasterPlan& plan) {
  const TileDrawing drawing = makeTileDrawing(request, plan);
  const TileSlot& slot = plan.slots[0];
  for (uint32_t i = 0; i < plan.tileCount; ++i) {
    if (DWErr error = rasterizeTile(drawing, i, slot.port, slot.tileBuffer, true)) return error;
    if (DWErr error = writeTile(plan, i, slot)) return error;
  }
  return kDWNoErr;
}

Downsampler makeDownsampler(RasterPlan& plan, TileSlot& slot, bool refill) {
  TileGeometry& g = plan.geometry;
  return Downsampler(&plan.settings, &plan.factor, &plan.channels, &plan.colorSpace, refill, &g.tileWidth,
                     &g.tileRows, &g.tileStride, slot.tileBuffer, &g.superWidth, &g.superRows, &g.superStride,
                     slot.superBuffer);
}

// Reduces the batch's tiles next .. next + batch - 1, slot s holding tile next + s. A slot whose
// drawing is not its last clears its supersampled tile for the next one.
void downSampleBatch(RasterPlan& plan, uint32_t next, uint32_t batch) {
  const uint32_t slots = uint32_t(plan.slots.size());
  auto refill = [&](uint32_t s) { return next + s + slots < plan.tileCount; };
  if (!multithreadingEnabled()) {
    for (uint32_t s = 0; s < batch; ++s) makeDownsampler(plan, plan.slots[s], refill(s)).run();
    return;
  }
  // Everything is built before anything starts, so a failed allocation leaves no thread running.
  std::vector<boost::shared_ptr<Downsampler>> work;
  std::vector<boost::shared_ptr<basic::thread>> threads;
  work.reserve(batch);
  threads.reserve(batch);
  for (uint32_t s = 0; s < batch; ++s) {
    work.push_back(boost::make_shared<Downsampler>(makeDownsampler(plan, plan.slots[s], refill(s))));
    threads.push_back(boost::make_shared<basic::thread>(kDownsampleStackSize));
    threads.back()->set_function(work.back().get());
  }
  for (auto& thread : threads) thread->start();
  for (auto& thread : threads) thread->join();
  threads.clear();
  work.clear();
}

DWErr runSupersampled(const RasterRequest& request, RasterPlan& plan) {
  const TileDrawing drawing = makeTileDrawing(request, plan);
  const TileGeometry& g = plan.geometry;
  const bool black = (plan.settings.options & RasterizeOptions::BlackBackground) != 0;
  const uint32_t slots = uint32_t(plan.slots.size());
  for (TileSlot& slot : plan.slots)
    fillBackground(plan.settings.type, black, plan.colorSpace.get(), g.superWidth, g.superRows, g.superStride,
                   slot.superBuffer);

  uint32_t next = 0;
  while (next < plan.tileCount) {
    DWErr error = kDWNoErr;
    DWORD start = GetTickCount();
    uint32_t batch = 0;
    for (; batch < slots && next + batch < plan.tileCount; ++batch) {
      const TileSlot& slot = plan.slots[batch];
      if ((error = rasterizeTile(drawing, next + batch, slot.port, slot.superBuffer, false))) break;
    }
    plan.times.rasterizeTile += GetTickCount() - start;
    if (error) return error;

    start = GetTickCount();
    downSampleBatch(plan, next, batch);
    plan.times.downSample += GetTickCount() - start;

    start = GetTickCount();
    for (uint32_t s = 0; s < slots && next < plan.tileCount; ++s, ++next)
      if ((error = writeTile(plan, next, plan.slots[s]))) break;
    plan.times.updateRasterTile += GetTickCount() - start;
    if (error) return error;
  }
  return kDWNoErr;
}

}  // namespace

DWErr runTileLoop(const RasterRequest& request, RasterPlan& plan) {
  // Planning never gets here without rows to draw; refuse rather than report an empty raster as done.
  if (plan.slots.empty() || plan.geometry.tileRows <= 0) return BadParameterError;
  return plan.factor > 1 ? runSupersampled(request, plan) : runWithoutSupersampling(request, plan);
}

}  // namespace dw
