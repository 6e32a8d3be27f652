#pragma once

#include "host/raster.h"
#include "refhost/document/ArtData.h"
#include "refhost/render/ColorSpace.h"

#include <string>

namespace refhost::render {

// Checks a raster description: bounds from (0, 0), a known colour-space code, 1 bit per pixel
// for gray without alpha or 8 bits per channel otherwise (multi-channel rasters any multiple of
// 8), and rows of at least the pixel bytes. Empty when acceptable, otherwise the reason.
std::string validateRasterRecord(const RasterRecord& record);

// Gives a multi-channel raster its channels; the channel count must match the pixel depth.
std::string setRasterChannels(RasterData& raster, const ColorSpace& space);

// Copies a slice between raster storage and caller memory. The slices name rows, columns and the
// bytes of each pixel (front .. back - 1); both must have the same size and lie inside their
// image. Byte k of the raster slice pairs with byte channelInterleave[tileSlice.front + k] of the
// tile pixel. 1-bit rasters copy single bits (front 0, back 1). Only interleaved tiles (planeBytes
// 0) are handled. Empty on success, otherwise the reason.
std::string writeRasterTile(RasterData& raster, const DWSlice& rasterSlice, const DWTile& tile, const DWSlice& tileSlice);
std::string readRasterTile(const RasterData& raster, const DWSlice& rasterSlice, const DWTile& tile, const DWSlice& tileSlice);

}  // namespace refhost::render
