#pragma once
#include <cstdint>
#include <vector>

#include "engine/ColorSpace.h"
#include "engine/ColorUsage.h"
#include "engine/PerformanceLog.h"
#include "host/suites/rasterize_suite.h"
#include "host/types.h"

namespace dw {

// The arguments of one RasterizeArtWithPadding call.
struct RasterRequest {
  DWArtSetHandle artSet = nullptr;
  RasterizeSettings* callerSettings = nullptr;  // read at entry; its reserved field goes to the host
  DWRealRect bounds{};
  int32_t paintOrder = 0;
  DWArtHandle prep = nullptr;
  DWRasterizeProgressProc progress = nullptr;
  double padding = 0.0;
};

// One parallel worker's memory: a final-resolution tile, a supersampled tile (factor > 1 only) and
// the port that drawing lands in.
struct TileSlot {
  uint8_t* tileBuffer = nullptr;
  uint8_t* superBuffer = nullptr;
  DWPort port = nullptr;
};

// Tile sizes shared by every slot.
struct TileGeometry {
  int32_t tileWidth = 0;
  int32_t tileRows = 0;
  int32_t tileStride = 0;
  int32_t superWidth = 0;
  int32_t superRows = 0;
  int32_t superStride = 0;
};

// Everything one rasterization decides before and uses during its tile loop. Owned by the call.
struct RasterPlan {
  RasterizeSettings settings{};  // the copy; its type is the effective type
  ColorUsage usage;
  DWCustomColorHandle spot = nullptr;  // the colour of a single-spot raster
  ColorSpace colorSpace;
  int32_t channels = 0;      // the colour space's channel count: bytes per pixel
  int16_t bitsPerPixel = 0;
  double resolution = 0.0;
  double scale = 0.0;        // pixels per point
  int16_t factor = 1;        // supersampling factor
  DWRealRect pixelBounds{};  // the bounds after pixel-grid rounding, before padding
  int32_t width = 0;
  int32_t height = 0;
  DWArtHandle rasterArt = nullptr;
  uint32_t groupBlendValue = 0;
  std::vector<TileSlot> slots;
  TileGeometry geometry;
  uint32_t tileCount = 0;
  StageTimes times;
};

}  // namespace dw
