#pragma once
// Handles of art styles ("DW Art Style Suite", "DW Art Style Parser Suite"): a handle keeps its
// style alive, since styles are shared and may be held by no art while a plug-in holds them.
#include "host/types.h"
#include "refhost/document/ArtStyle.h"

namespace refhost {

DWArtStyleHandle artStyleHandle(const ArtStylePtr& style);
// Null for a handle the host did not give out.
ArtStylePtr artStyleOf(DWArtStyleHandle handle);

}  // namespace refhost
