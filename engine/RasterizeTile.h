#pragma once
#include <cstdint>

#include "engine/RasterPlan.h"
#include "host/suites/draw_art_suite.h"

namespace dw {

// What drawing one tile needs from the call, fixed for the whole tile loop.
struct TileDrawing {
  DWArtSetHandle artSet = nullptr;
  const RasterizeSettings* settings = nullptr;  // the call's copy
  int32_t* callerReserved = nullptr;            // the caller's reserved field, for finish drawing
  DWColorSpaceHandle colorSpace = nullptr;
  DWRasterizeProgressProc progress = nullptr;
  double padding = 0.0;
  double scale = 1.0;
  int16_t factor = 1;
  DWRealRect bounds{};  // rounded, before padding
  uint32_t tileCount = 0;
  int32_t portWidth = 0;
  int32_t portRows = 0;
  int32_t portStride = 0;
  uint32_t groupBlendValue = 0;
};

TileDrawing makeTileDrawing(const RasterRequest& request, const RasterPlan& plan);

// The host's description of drawing tile i into port.
DWDrawRecord makeDrawRecord(const TileDrawing& drawing, uint32_t tileIndex, DWPort port);

// "rasterizeTile": optionally clears the buffer to the background, draws the art (or every layer
// without an art set) into the port for tile i, finishes drawing, and inverts 1-bit buffers.
DWErr rasterizeTile(const TileDrawing& drawing, uint32_t tileIndex, DWPort port, uint8_t* buffer, bool clearFirst);

// "updateRasterTile": writes the rows of tile i from tileBuffer into the raster art.
DWErr updateRasterTile(DWArtHandle raster, uint32_t tileIndex, int32_t width, int32_t height, int32_t channels,
                       int32_t tileWidth, int32_t tileRows, int32_t tileStride, uint8_t* tileBuffer);

}  // namespace dw
