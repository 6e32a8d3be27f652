#pragma once
#include <cstdint>

#include "host/types.h"

// The shapes a clipping mask is made of, and what becomes of them.
namespace dw {

// A closed rectangle path over a placed object's bounds mapped by its matrix (b and c negated),
// created above everything. On failure no path is left behind.
DWErr makePlacedRectanglePath(DWArtHandle placed, DWArtHandle& path);

// A closed path along the four outer edges of a mesh's grid, created at the given place.
DWErr makeMeshOutlinePath(DWArtHandle mesh, int16_t paintOrder, DWArtHandle prep, DWArtHandle& path);

// Turns a path (or every path inside a group or compound path) into a clipping path: paint off,
// clipping on, and the art style rebuilt from the new path style.
DWErr makeClippingPath(DWArtHandle art);

// Clears the pre-union flag of every path in a tree.
DWErr clearPreUnion(DWArtHandle root);

// Selects an object and, for a plug-in group, everything in its edit art.
DWErr selectWithContents(DWArtHandle art);

}  // namespace dw
