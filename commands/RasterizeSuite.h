#pragma once
#include "host/messages.h"
#include "host/suites/rasterize_suite.h"

namespace dw {

// The seven functions of "DW Rasterize Suite", in slot order. Each room implements its own:
// bounds and mask in commands/, the rasterize entries in engine/, resampling in image_streams/.
DWErr GetArtBounds(DWArtSetHandle art, DWRealRect* bounds, DWBool useArtboard);
DWErr RasterizeArt(DWArtSetHandle art, RasterizeSettings* settings, const DWRealRect* bounds, int32_t paintOrder,
                   DWArtHandle prep, DWArtHandle* raster, DWRasterizeProgressProc progress);
DWErr CreateClippingMask(DWArtSetHandle art, int16_t paintOrder, DWArtHandle raster, DWArtHandle* clipGroup);
DWErr RasterizeArtWithPadding(DWArtSetHandle art, RasterizeSettings* settings, const DWRealRect* bounds,
                              int32_t paintOrder, DWArtHandle prep, DWArtHandle* raster,
                              DWRasterizeProgressProc progress, double padding);
DWErr RasterizeDocument(RasterizeSettings* settings, int32_t paintOrder, DWArtHandle prep, DWArtHandle* raster,
                        DWRasterizeProgressProc progress);
DWErr resampleRasterArt(DWArtHandle source, int32_t method, double resolution, int32_t paintOrder, DWArtHandle prep,
                        DWArtHandle* result);
DWErr CanPreserveSpotColors(DWArtSetHandle art, DWBool* canPreserve);

// Writes the seven slots with this library's current addresses (start-up and every reload).
void fillRasterizeSuite(DWRasterizeSuite& table);
// Nulls the seven slots (unload: the host's copy must not point into an unloaded library).
void clearRasterizeSuite(DWRasterizeSuite& table);
// Fills PluginGlobals.rasterizeSuite and adds it to the host as "DW Rasterize Suite" v10, internal 1.
DWErr AddRasterizeSuite(const MessageHeader& message);

}  // namespace dw
