#pragma once
#include <cstdint>

#include "host/types.h"

namespace dw {

// How resampleRasterArt computes each new pixel; any other value samples like Nearest.
enum ResampleMethod : int32_t { ResampleNearest = 0, ResampleAverage = 1, ResampleBicubic = 2 };

// Creates a new raster art at (paintOrder, prep) holding the source's picture at a resolution
// no higher than its own (pixels per inch), same colour space and depth, placed over the same
// area. The source is left as it is; the new art is the caller's, also after a failure once it
// exists. Returns 0 (also when the source's layer is locked: nothing is made), the host's code,
// UnsupportedResampleError (1-bit source, a resolution above the source's, or a new size outside
// 1 .. 32767 pixels), OutOfMemoryError, or BadParameterError for a null result.
DWErr resampleRasterArt(DWArtHandle source, int32_t method, double resolution, int32_t paintOrder, DWArtHandle prep,
                        DWArtHandle* result);

}  // namespace dw
