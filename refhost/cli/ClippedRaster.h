#pragma once
// The pixels `command -o` writes for the raster the command made.
#include "refhost/document/ArtData.h"

namespace refhost {
class Art;

namespace cli {

// The clip group the raster sits in (its nearest clipped ancestor), or null.
const Art* clipGroupOf(const Art& raster);

// The raster as the document shows it inside its clip group: the same pixel grid and colour
// channels plus alpha, each pixel's alpha multiplied by the mask's anti-aliased coverage (a 1-bit
// raster becomes 8-bit gray). Throws ToolError when the raster is not in a clip group.
RasterData clippedRaster(const Art& raster);

}  // namespace cli
}  // namespace refhost
