#pragma once
#include <cstdint>

#include "engine/ColorUsage.h"
#include "host/types.h"

namespace dw {

struct RasterTypeChoice {
  DWErr error = kDWNoErr;  // UserCancelled when the user cancels the spot-colour warning
  int32_t type = 0;        // the effective type
  DWCustomColorHandle spot = nullptr;  // the colour of a single-spot raster
};

// Decides what the engine produces for the requested type: a single-spot or process-plus-spots
// raster when the art's spot colours can be kept, otherwise the type as requested. Surveys the art
// set into usage when spot colours matter. May show the question alert about too many spot colours.
RasterTypeChoice chooseRasterType(int32_t type, uint32_t options, int32_t preserveSpotColors, DWArtSetHandle artSet,
                                  ColorUsage& usage);

// An N-channel raster holds at most 27 spot colours and 31 colour channels.
constexpr int32_t kMaxSpotChannels = 27;
constexpr int32_t kMaxColorChannels = 31;

}  // namespace dw
