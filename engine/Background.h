#pragma once
#include <cstdint>

#include "engine/RasterTypes.h"
#include "host/types.h"

namespace dw {

// The value every pixel of a tile starts from, bytes in pixel order.
struct BackgroundPixel {
  uint8_t bytes[kMaxPixelBytes] = {};
  int32_t size = 0;  // bytes per pixel; 0 for a type outside 0..11
};

// Under the process-wide background lock, because down-sampling workers reach it and, for the
// N-channel types, it asks the host's colour-space suite about the raster's parts. Never throws:
// a failing query leaves the plain pattern of the type (workers must not see exceptions).
BackgroundPixel backgroundPixel(int32_t type, bool black, DWColorSpaceHandle space);

// Writes the background pixel into width pixels of each of rows rows, stride bytes apart. For 1-bit
// types the byte covers the whole stride. Uses the host's fast fills when the accelerator is on;
// the bytes written are the same either way.
void fillBackground(int32_t type, bool black, DWColorSpaceHandle space, int32_t width, int32_t rows, int32_t stride,
                    uint8_t* buffer);

}  // namespace dw
