#pragma once
#include <cstdint>

#include "engine/RasterPlan.h"
#include "host/raster.h"

namespace dw {

// The raster description of a new raster art. A single-spot raster is described as the gray type
// underneath it, with the spot flag.
DWRasterRecord makeRasterRecord(int32_t effectiveType, bool singleSpot, int32_t width, int32_t height,
                                int32_t bitsPerPixel);

// Layer test, creation of the raster art at the paint order, style reset, raster description and
// blend flag. On failure nothing is left in the document and art is null.
DWErr createRasterArt(const RasterRequest& request, const RasterPlan& plan, DWArtHandle& art);

// A scale of 1 / scale, then a translation to the top-left corner of the padded, rounded bounds.
DWErr setRasterMatrix(const RasterRequest& request, const RasterPlan& plan);

// After success: carries user flag 0x10000 and its value pair over from a single source object.
// Every failure here is ignored.
void copyUserValuePair(DWArtSetHandle artSet, DWArtHandle raster);

// After success: tells the host about a raster made inside a symbol being edited, and stores the
// raster in result when there is one. Failures of the notification are ignored.
void handBackRaster(DWArtHandle prep, DWArtHandle raster, DWArtHandle* result);

}  // namespace dw
