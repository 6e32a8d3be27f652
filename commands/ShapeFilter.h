#pragma once
#include "host/types.h"

namespace dw {

class MaskSet;

// What travels with the walk that collects mask shapes from a group's tree.
struct ShapeWalk {
  DWArtHandle root;
  bool fromPluginGroup;
  MaskSet* set;  // may be null
};

// Keeps what can shape a mask and deletes or replaces the rest: children before their container,
// each child's next sibling taken before the child is visited, so deletions never break the walk.
// removed tells whether art itself was deleted.
DWErr filterShapes(DWArtHandle art, const ShapeWalk& walk, bool& removed);

}  // namespace dw
