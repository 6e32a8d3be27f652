#pragma once
#include "engine/RasterPlan.h"

namespace dw {

// Produces the raster's pixels tile by tile, from the top down: draw ("rasterizeTile"), reduce
// supersampled tiles in parallel batches ("downSample"), write into the raster art
// ("updateRasterTile"). The first error of drawing or writing ends the loop and is returned.
DWErr runTileLoop(const RasterRequest& request, RasterPlan& plan);

// Stack bytes of each down-sampling thread.
constexpr uint32_t kDownsampleStackSize = 524288;

}  // namespace dw
