#pragma once
#include <cstdint>

#include "host/types.h"

namespace dw {

// The largest raster side, in pixels.
constexpr int32_t kMaxRasterSide = 32767;

// antialiasing 2 or more is the supersampling factor; anything less means none.
int16_t supersamplingFactor(int16_t antialiasing);

// Supersampling drops from 4 to 2 for rasters 3277 pixels wide or more (width * 20 >= 65536).
int16_t factorForWidth(int16_t factor, int32_t width);

// Whole-pixel bounds at 72 ppi: left and bottom round down; right and top round up unless they
// lie within 0.0001 above a whole number.
DWRealRect snapToPixelGrid(const DWRealRect& bounds);

struct PixelSize {
  DWErr error = kDWNoErr;
  int32_t width = 0;
  int32_t height = 0;
};

// ceil((extent + 2 * padding) * scale) per axis. A size that is negative or not a number (inverted
// bounds, negative padding) gives BadParameterError; one above 32767, including any that does not
// fit 32 bits, gives TooWideError; an empty one (0) gives BadParameterError, since a raster needs
// at least one pixel on each side.
PixelSize pixelSize(const DWRealRect& pixelBounds, double padding, double scale);

// One slot per processor when supersampling with multithreading on; otherwise one.
uint32_t slotCount(int16_t factor, bool multithreading, uint32_t processors);

// ceil(height / tileRows); 0 when tileRows is not positive.
uint32_t tileCountFor(int32_t height, int32_t tileRows);

}  // namespace dw
