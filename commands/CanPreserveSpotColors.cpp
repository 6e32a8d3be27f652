#include "commands/RasterizeSuite.h"
#include "engine/ColorUsage.h"
#include "engine/RasterTypeChoice.h"
#include "host/suites/color_space_suite.h"
#include "settings/DocumentQueries.h"
#include "settings/RasterizeSettings.h"
#include "shell/ErrorCodes.h"

// Slot 6 of "DW Rasterize Suite": whether one raster could carry every spot colour of a set as a
// channel of its own, next to the process channels the set needs.
namespace dw {

namespace {

// RGB documents keep RGB channels; CMYK is the answer for every other mode, and when the document
// cannot say.
int32_t processFamily() {
  int32_t mode = kUnknownColorMode;
  if (getDocumentColorMode(mode) == kDWNoErr && mode == int32_t(DocumentColorMode::Rgb)) return kDWRGBFamily;
  return kDWCMYKFamily;
}

}  // namespace

DWErr CanPreserveSpotColors(DWArtSetHandle art, DWBool* canPreserve) {
  if (!canPreserve) return BadParameterError;
  *canPreserve = 0;
  try {
    ColorUsage usage;
    if (art) surveyColorUsage(art, usage);
    if (usage.spotCount == 0) return kDWNoErr;
    const int32_t process = processChannelCount(usage, processFamily());
    *canPreserve = process + usage.spotCount <= kMaxColorChannels && usage.spotCount <= kMaxSpotChannels;
    return kDWNoErr;
  } catch (...) {
    *canPreserve = 0;
    return CannotError;
  }
}

}  // namespace dw
