#include "commands/RasterizeSuite.h"

// Slot 1 of "DW Rasterize Suite": the engine without padding.
namespace dw {

DWErr RasterizeArt(DWArtSetHandle art, RasterizeSettings* settings, const DWRealRect* bounds, int32_t paintOrder,
                   DWArtHandle prep, DWArtHandle* raster, DWRasterizeProgressProc progress) {
  return RasterizeArtWithPadding(art, settings, bounds, paintOrder, prep, raster, progress, 0.0);
}

}  // namespace dw
