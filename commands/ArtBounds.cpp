#include "commands/ArtBounds.h"

#include "commands/ArtTree.h"
#include "commands/RasterizeSuite.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {

bool boundsSuitesHeld() {
  return gSuites.art && gSuites.artSet && gSuites.path && gSuites.realMath && gSuites.artboard && gSuites.layer;
}

// The active artboard's bounds, when the host can give them and they are not empty.
DWErr activeArtboardBounds(DWRealRect& bounds, bool& found) {
  found = false;
  const DWArtboardSuite& boards = *gSuites.artboard;
  DWArtboardList list = nullptr;
  if (boards.GetArtboardList(&list) != kDWNoErr || !list) return kDWNoErr;

  int32_t index = 0;
  DWErr error = boards.GetActiveArtboardIndex(list, &index);
  if (error == kDWNoErr) {
    DWArtboardProperties properties = nullptr;
    if (boards.GetArtboardProperties(list, index, &properties) == kDWNoErr && properties) {
      DWRealRect board = kEmptyArtBounds;
      if (boards.GetArtboardBounds(properties, &board) == kDWNoErr && !gSuites.realMath->IsRectEmpty(&board)) {
        bounds = board;
        found = true;
      }
      boards.DisposeArtboardProperties(properties);
    }
  }
  boards.ReleaseArtboardList(list);
  return error;
}

class BoundsWalk {
 public:
  BoundsWalk(DWRealRect& bounds, bool parentTest) : _bounds(bounds), _parentTest(parentTest) {}

  // One object: guides, parentless objects (with the parent test) and hidden objects are skipped.
  // hidden tells the document walk not to look inside.
  DWErr unite(DWArtHandle art, bool& hidden) {
    hidden = false;
    int16_t kind = 0;
    if (const DWErr e = artKind(art, kind)) return e;
    if (kind == kDWPathArt) {
      DWBool guide = 0;
      if (const DWErr e = gSuites.path->GetPathIsGuide(art, &guide)) return e;
      if (guide) return kDWNoErr;
    }
    if (_parentTest) {
      DWArtHandle parent = nullptr;
      if (const DWErr e = artParent(art, parent)) return e;
      if (!parent) return kDWNoErr;
    }
    uint32_t attributes = 0;
    if (const DWErr e = gSuites.art->GetArtUserAttr(art, kDWArtHidden, &attributes)) return e;
    if ((attributes & kDWArtHidden) == kDWArtHidden) {
      hidden = true;
      return kDWNoErr;
    }
    DWRealRect objectBounds = kEmptyArtBounds;
    if (const DWErr e = gSuites.art->GetArtBounds(art, &objectBounds)) return e;
    if (gSuites.realMath->IsRectEmpty(&_bounds))
      _bounds = objectBounds;
    else
      gSuites.realMath->UnionRect(&_bounds, &objectBounds, &_bounds);
    return kDWNoErr;
  }

  DWErr uniteSet(DWArtSetHandle set) {
    int32_t count = 0;
    if (const DWErr e = artSetCount(set, count)) return e;
    for (int32_t i = 0; i < count; ++i) {
      DWArtHandle art = nullptr;
      if (const DWErr e = gSuites.artSet->IndexArtSet(set, i, &art)) return e;
      bool hidden = false;
      if (const DWErr e = unite(art, hidden)) return e;
    }
    return kDWNoErr;
  }

  // Siblings from art on, each with its tree, depth first. A hidden container hides its contents.
  DWErr uniteTrees(DWArtHandle art) {
    while (art) {
      bool hidden = false;
      if (const DWErr e = unite(art, hidden)) return e;
      if (!hidden) {
        DWArtHandle child = nullptr;
        if (const DWErr e = firstChild(art, child)) return e;
        if (const DWErr e = uniteTrees(child)) return e;
      }
      if (const DWErr e = nextSibling(art, art)) return e;
    }
    return kDWNoErr;
  }

  DWErr uniteDocument() {
    int32_t layers = 0;
    if (const DWErr e = gSuites.layer->CountLayers(&layers)) return e;
    for (int32_t i = 0; i < layers; ++i) {
      DWLayerHandle layer = nullptr;
      if (const DWErr e = gSuites.layer->GetNthLayer(i, &layer)) return e;
      DWArtHandle first = nullptr;
      if (const DWErr e = gSuites.art->GetFirstArtOfLayer(layer, &first)) return e;
      if (const DWErr e = uniteTrees(first)) return e;
    }
    return kDWNoErr;
  }

 private:
  DWRealRect& _bounds;
  bool _parentTest;
};

}  // namespace

DWErr collectArtBounds(DWArtSetHandle art, DWRealRect* bounds, bool useArtboard, bool parentTest) {
  if (!bounds) return BadParameterError;
  *bounds = kEmptyArtBounds;
  if (!boundsSuitesHeld()) return SuiteMissingError;

  if (useArtboard) {
    bool found = false;
    if (const DWErr e = activeArtboardBounds(*bounds, found)) return e;
    if (found) return kDWNoErr;
  }
  BoundsWalk walk(*bounds, parentTest);
  return art ? walk.uniteSet(art) : walk.uniteDocument();
}

DWErr GetArtBounds(DWArtSetHandle art, DWRealRect* bounds, DWBool useArtboard) {
  return collectArtBounds(art, bounds, useArtboard != 0, true);
}

}  // namespace dw
