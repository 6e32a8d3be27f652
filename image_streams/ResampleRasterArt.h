#pragma once
#include <cstdint>

#include "host/types.h"

namespace dw {

// How resampleRasterArt computes each new pixel; any other value samples like Nearest.
enum ResampleMethod : int32_t { ResampleNearest = 0, ResampleAverage = 1, ResampleBicubic = 2 };

// Creates a new raster art at (paintOrder, prep) holding the source's picture at a resolution
// no higher than its own (pixels per inch), same colour space and depth, placed over the same
// area. The source is left as it is; the new art is the caller's. Returns 0, the host's code,
// UnsupportedResampleError or OutOfMemoryError. result must not be null.
DWErr resampleRasterArt(DWArtHandle source, int32_t method, double resolution, int32_t paintOrder, DWArtHandle prep,
                        DWArtHandle* result);

}  // namespace dw
