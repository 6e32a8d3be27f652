#pragma once
#include "host/types.h"

namespace dw {

// The start value of every accumulation: empty, and every real rectangle unites with it to itself.
constexpr DWRealRect kEmptyArtBounds = {16383.0, -16383.0, -16383.0, 16383.0};

// The bounds of an art set (none: every object of every layer), or of the active artboard when
// useArtboard is set and it has bounds. Guides and hidden objects never count; with parentTest,
// neither do objects without a parent (layers). On a host failure the rectangle holds what was
// gathered so far. GetArtBounds (RasterizeSuite.h) is this with the parent test on.
DWErr collectArtBounds(DWArtSetHandle art, DWRealRect* bounds, bool useArtboard, bool parentTest);

}  // namespace dw
