#pragma once
#include <cstdint>

#include "host/types.h"

namespace dw {

// The blend-style value handed to every draw of the art set: the blend-style query of the art that
// contains the whole set (its one art, or the nearest common ancestor of all of them). When that
// cannot be settled, 1 if the document has any transparency, else 0. No set, or an empty one: 0.
uint32_t groupBlendValue(DWArtSetHandle artSet);

// The nearest common ancestor of a and b (either may be the answer); null when they share none.
// Returns the first failing host call's error.
DWErr nearestCommonAncestor(DWArtHandle a, DWArtHandle b, DWArtHandle& ancestor);

}  // namespace dw
