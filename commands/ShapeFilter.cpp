#include "commands/ShapeFilter.h"

#include "commands/ArtTree.h"
#include "commands/MaskSet.h"
#include "commands/MaskShapes.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {

DWErr deleteShape(DWArtHandle art, const ShapeWalk& walk, bool& removed) {
  if (walk.set) {
    if (const DWErr e = walk.set->remove(art)) return e;
  }
  if (const DWErr e = gSuites.art->DisposeArt(art)) return e;
  removed = true;
  return kDWNoErr;
}

DWErr filterContainer(DWArtHandle art, const ShapeWalk& walk, bool& removed) {
  DWArtHandle child = nullptr;
  if (const DWErr e = firstChild(art, child)) return e;
  while (child) {
    DWArtHandle next = nullptr;
    if (const DWErr e = nextSibling(child, next)) return e;
    bool childRemoved = false;
    if (const DWErr e = filterShapes(child, walk, childRemoved)) return e;
    child = next;
  }
  if (art == walk.root) return kDWNoErr;
  if (const DWErr e = firstChild(art, child)) return e;
  return child ? kDWNoErr : deleteShape(art, walk, removed);
}

// Open, unpainted paths in a plug-in group's result are construction lines, not shapes.
DWErr filterPath(DWArtHandle art, const ShapeWalk& walk, bool& removed) {
  if (!walk.fromPluginGroup) return kDWNoErr;
  DWBool closed = 0;
  if (const DWErr e = gSuites.path->GetPathClosed(art, &closed)) return e;
  if (closed) return kDWNoErr;
  DWPathStyle style{};
  if (const DWErr e = gSuites.pathStyle->GetPathStyle(art, &style)) return e;
  if (style.fillPaint || style.strokePaint) return kDWNoErr;
  return deleteShape(art, walk, removed);
}

DWErr filterPlaced(DWArtHandle art, const ShapeWalk& walk, bool& removed) {
  DWArtHandle rectangle = nullptr;
  if (const DWErr e = makePlacedRectanglePath(art, rectangle)) return e;
  if (const DWErr e = gSuites.art->ReorderArt(rectangle, kDWPlaceBelow, art)) return e;
  return deleteShape(art, walk, removed);
}

DWErr filterPluginGroup(DWArtHandle art, const ShapeWalk& walk, bool& removed) {
  DWArtHandle result = nullptr;
  if (const DWErr e = gSuites.pluginGroup->GetPluginArtResultArt(art, &result)) return e;
  DWArtHandle copy = nullptr;
  if (result) {
    if (const DWErr e = gSuites.art->DuplicateArt(result, kDWPlaceBelow, art, &copy)) return e;
  }
  if (walk.set) {
    if (const DWErr e = walk.set->removeWithContents(art)) return e;
  }
  if (const DWErr e = gSuites.art->DisposeArt(art)) return e;
  removed = true;
  if (!copy) return kDWNoErr;
  bool copyRemoved = false;
  return filterShapes(copy, ShapeWalk{walk.root, walk.fromPluginGroup, nullptr}, copyRemoved);
}

DWErr filterMesh(DWArtHandle art, const ShapeWalk& walk, bool& removed) {
  DWArtHandle outline = nullptr;
  if (const DWErr e = makeMeshOutlinePath(art, kDWPlaceBelow, art, outline)) return e;
  return deleteShape(art, walk, removed);
}

}  // namespace

DWErr filterShapes(DWArtHandle art, const ShapeWalk& walk, bool& removed) {
  removed = false;
  int16_t kind = 0;
  if (const DWErr e = artKind(art, kind)) return e;
  switch (kind) {
    case kDWGroupArt:
    case kDWCompoundPathArt: return filterContainer(art, walk, removed);
    case kDWPathArt: return filterPath(art, walk, removed);
    case kDWPlacedArt: return filterPlaced(art, walk, removed);
    case kDWPluginGroupArt: return filterPluginGroup(art, walk, removed);
    case kDWMeshArt: return filterMesh(art, walk, removed);
    default: return deleteShape(art, walk, removed);
  }
}

}  // namespace dw
