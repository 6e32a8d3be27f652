#pragma once
#include <cstdint>
#include <set>

#include "host/types.h"

namespace dw {

// The colours one art set uses, as the host's colour visit reports them. One per rasterization.
struct ColorUsage {
  DWArtSetHandle artSet = nullptr;
  bool fullProcess = false;  // a kind-2 use with a non-zero value
  bool rasterFlag = false;   // a kind-4 use with a non-zero value; handed on to the raster
  bool kind1Seen = false;    // a kind-1 use with a non-zero value; kept for completeness only
  uint32_t processMask = 0;  // bit k: component k of some four-component use was non-zero
  // Distinct spot colours, ordered by handle value: the order of the spot channels.
  std::set<DWCustomColorHandle> spotColors;
  int32_t spotCount = 0;
};

// Fills usage from the art set. Stops quietly at the first failing host call: callers ignore
// survey errors and work with what was found.
void surveyColorUsage(DWArtSetHandle artSet, ColorUsage& usage);

// Whether an N-channel raster for this usage needs every process channel of the family.
bool needsFullProcess(const ColorUsage& usage, int32_t familyCode);

// Process channels an N-channel raster of the family needs for this usage.
int32_t processChannelCount(const ColorUsage& usage, int32_t familyCode);

// The one spot colour a single-spot raster would carry, or null when the usage does not allow one.
DWCustomColorHandle singleSpotColor(const ColorUsage& usage);

}  // namespace dw
