#pragma once
#include "host/types.h"

// The steps that turn the document's selection into the set of objects the Rasterize command
// replaces. Each answers the first failing host call's code.
namespace dw {

// A targeted layer with an appearance of its own: its content moves into a new group that takes
// the appearance, and the group replaces the layer in the set.
DWErr WrapStyledLayers(DWArtSetHandle set);

// Objects drawn inside a perspective object leave the set (only when the optional suite is held).
DWErr DropPerspectiveContent(DWArtSetHandle set);

// Objects that are only partly selected leave the set; groups with an appearance of their own,
// clip groups, compound paths, text frames and unknown kinds stay.
DWErr KeepWholeObjects(DWArtSetHandle set);

// The first object of the set whose parent is a group, or null: the raster goes above it.
DWErr FindPlacementArt(DWArtSetHandle set, DWArtHandle& placement);

}  // namespace dw
