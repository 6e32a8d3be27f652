#include <algorithm>
#include <vector>

#include "commands/ArtTree.h"
#include "commands/CommandMessage.h"
#include "commands/MaskSet.h"
#include "commands/MaskShapes.h"
#include "commands/RasterizeSuite.h"
#include "commands/ShapeFilter.h"
#include "host/messages.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {

bool maskSuitesHeld() {
  return gSuites.art && gSuites.artSet && gSuites.artStyle && gSuites.artStyleParser && gSuites.group &&
         gSuites.path && gSuites.pathStyle && gSuites.placed && gSuites.pluginGroup && gSuites.mesh &&
         gSuites.meshSegment && gSuites.pathfinder && gSuites.realMath;
}

// The Pathfinder request of the mask: the numbers are the host's, passed as they are.
DWPathfinderRequest uniteRequest(DWArtHandle* shapes, int32_t count) {
  DWPathfinderRequest request{};
  request.precision = 10.0;
  request.option1 = 0;
  request.option2 = 0;
  request.ratio = 0.5;
  request.mode = 1;
  request.width1 = 0.25;
  request.scale1 = 1.0;
  request.width2 = 0.4;
  request.scale2 = 1.0;
  request.tolerance = 0.05;
  request.option3 = 0;
  request.option4 = 0;
  request.shapes = shapes;
  request.shapeCount = count;
  return request;
}

// Builds the clip group G around the raster R from the shapes among the set's objects, collected
// in the shapes group H inside G.
class MaskBuilder {
 public:
  MaskBuilder(int16_t paintOrder, DWArtHandle raster)
      : _order(paintOrder == kDWPlaceInsideOnTop || paintOrder == kDWPlaceInsideOnBottom ? int16_t(kDWPlaceAbove)
                                                                                        : paintOrder),
        _raster(raster) {}

  DWErr build(DWArtSetHandle set, DWArtHandle& result) {
    if (const DWErr e = _set.load(set)) return e;
    if (const DWErr e = gSuites.art->NewArt(kDWGroupArt, kDWPlaceAbove, _raster, &_clip)) return e;
    if (const DWErr e = gSuites.art->NewArt(kDWGroupArt, kDWPlaceInsideOnTop, _clip, &_shapes)) return e;
    if (const DWErr e = collectShapes()) return e;

    DWArtHandle first = nullptr;
    if (const DWErr e = firstChild(_shapes, first)) return e;
    if (!first) return finishWithoutShapes(result);

    int16_t firstKind = 0;
    if (const DWErr e = artKind(first, firstKind)) return e;
    int32_t shapeCount = 0;
    if (const DWErr e = countChildren(_shapes, shapeCount)) return e;
    if (isContainer(firstKind) || shapeCount > 1) {
      if (const DWErr e = uniteShapes(first)) return e;
    } else {
      if (const DWErr e = useSinglePath(first)) return e;
    }
    return finishClipped(result);
  }

  // Leaves the raster beside the mask and deletes the mask with whatever it holds.
  void dismantle() {
    const DWArtHandle outermost = _outer ? _outer : _clip;
    if (!outermost) return;
    gSuites.art->ReorderArt(_raster, kDWPlaceBelow, outermost);
    gSuites.art->DisposeArt(outermost);
  }

 private:
  DWErr collectShapes() {
    const std::vector<DWArtHandle>& objects = _set.original();
    for (size_t index = 0; index < objects.size(); ++index) {
      const DWArtHandle art = objects[index];
      // Removed from the set, or inside something deleted, earlier in this walk.
      if (!_set.contains(art) || isGone(art)) continue;
      if (const DWErr e = collectShape(art, index)) return e;
    }
    return kDWNoErr;
  }

  DWErr collectShape(DWArtHandle art, size_t index) {
    DWArtHandle parent = nullptr;
    if (const DWErr e = artParent(art, parent)) return e;
    if (!parent) return setSelected(art, false);
    if (_set.contains(parent)) {
      DWArtHandle grandparent = nullptr;
      if (const DWErr e = artParent(parent, grandparent)) return e;
      if (grandparent) return kDWNoErr;  // it travels with its parent
    }

    int16_t kind = 0;
    if (const DWErr e = artKind(art, kind)) return e;
    switch (kind) {
      case kDWPathArt:
      case kDWCompoundPathArt: return gSuites.art->ReorderArt(art, kDWPlaceInsideOnBottom, _shapes);
      case kDWGroupArt: return collectGroup(art, index);
      case kDWPlacedArt: {
        DWArtHandle rectangle = nullptr;
        if (const DWErr e = makePlacedRectanglePath(art, rectangle)) return e;
        if (const DWErr e = gSuites.art->ReorderArt(rectangle, kDWPlaceInsideOnBottom, _shapes)) return e;
        return dispose(art, index);
      }
      case kDWPluginGroupArt: return collectPluginGroup(art, index);
      case kDWMeshArt: {
        DWArtHandle outline = nullptr;
        if (const DWErr e = makeMeshOutlinePath(art, kDWPlaceInsideOnBottom, _shapes, outline)) return e;
        return dispose(art, index);
      }
      default: return dispose(art, index);  // rasterized, but part of no mask
    }
  }

  DWErr collectGroup(DWArtHandle group, size_t index) {
    bool removed = false;
    if (const DWErr e = filterShapes(group, ShapeWalk{group, false, &_set}, removed)) return e;
    return keepByChildCount(group, index, kDWPlaceInsideOnBottom, _shapes, true);
  }

  DWErr collectPluginGroup(DWArtHandle art, size_t index) {
    DWArtHandle result = nullptr;
    if (const DWErr e = gSuites.pluginGroup->GetPluginArtResultArt(art, &result)) return e;
    DWArtHandle copy = nullptr;
    if (result) {
      if (const DWErr e = gSuites.art->DuplicateArt(result, kDWPlaceInsideOnBottom, _shapes, &copy)) return e;
    }
    if (_set.originalCount() > 1) {
      if (const DWErr e = _set.removeWithContents(art)) return e;
    }
    if (const DWErr e = dispose(art, index)) return e;
    if (!copy) return kDWNoErr;

    bool removed = false;
    if (const DWErr e = filterShapes(copy, ShapeWalk{copy, true, nullptr}, removed)) return e;
    if (removed) return kDWNoErr;
    int16_t kind = 0;
    if (const DWErr e = artKind(copy, kind)) return e;
    // A result that is a single shape needs no unpacking.
    if (!isContainer(kind)) return kDWNoErr;
    return keepByChildCount(copy, index, kDWPlaceBelow, copy, false);
  }

  // A container with two or more children is kept (moved into H when asked); its only child takes
  // its place; an empty one goes.
  DWErr keepByChildCount(DWArtHandle container, size_t index, int16_t childOrder, DWArtHandle childPrep,
                         bool inSet) {
    int32_t children = 0;
    if (const DWErr e = countChildren(container, children)) return e;
    if (children >= 2) {
      return inSet ? gSuites.art->ReorderArt(container, kDWPlaceInsideOnBottom, _shapes) : kDWNoErr;
    }
    if (children == 1) {
      DWArtHandle child = nullptr;
      if (const DWErr e = firstChild(container, child)) return e;
      if (inSet) {
        if (const DWErr e = _set.replace(container, child)) return e;
      }
      if (const DWErr e = gSuites.art->ReorderArt(child, childOrder, childPrep)) return e;
      return dispose(container, index);
    }
    if (inSet) {
      if (const DWErr e = _set.remove(container)) return e;
    }
    return dispose(container, index);
  }

  DWErr uniteShapes(DWArtHandle first) {
    if (const DWErr e = clearPreUnion(_shapes)) return e;
    const bool severalObjects = _set.originalCount() > 1;
    if (severalObjects) {
      if (const DWErr e = setSelected(_clip, false)) return e;
      if (const DWErr e = setSelected(_raster, false)) return e;
      if (const DWErr e = selectWithContents(_shapes)) return e;
    }
    if (const DWErr e = gSuites.art->ReorderArt(_raster, kDWPlaceInsideOnBottom, _clip)) return e;

    DWArtHandle named[1] = {first};
    DWPathfinderRequest request = severalObjects ? uniteRequest(nullptr, 0) : uniteRequest(named, 1);
    MessageHeader noCommand{};
    void* message = currentCommandMessage() ? currentCommandMessage() : &noCommand;
    if (const DWErr e = gSuites.pathfinder->Unite(&request, message)) return e;

    DWArtHandle united = nullptr;
    if (const DWErr e = firstChild(_clip, united)) return e;
    if (!united) return kDWNoErr;
    int16_t kind = 0;
    if (const DWErr e = artKind(united, kind)) return e;
    if (kind == kDWGroupArt) {
      DWArtHandle compound = nullptr;
      if (const DWErr e = gSuites.art->NewArt(kDWCompoundPathArt, kDWPlaceAbove, united, &compound)) return e;
      DWArtHandle child = nullptr;
      if (const DWErr e = firstChild(united, child)) return e;
      while (child) {
        if (const DWErr e = gSuites.art->ReorderArt(child, kDWPlaceInsideOnBottom, compound)) return e;
        if (const DWErr e = firstChild(united, child)) return e;
      }
      if (const DWErr e = gSuites.art->DisposeArt(united)) return e;
      return makeClippingPath(compound);
    }
    if (kind == kDWPathArt || kind == kDWCompoundPathArt) return makeClippingPath(united);
    return kDWNoErr;
  }

  DWErr useSinglePath(DWArtHandle path) {
    if (const DWErr e = gSuites.art->ReorderArt(path, kDWPlaceInsideOnTop, _clip)) return e;
    if (const DWErr e = makeClippingPath(path)) return e;
    if (const DWErr e = gSuites.art->DisposeArt(_shapes)) return e;
    _shapes = nullptr;
    return gSuites.art->ReorderArt(_raster, kDWPlaceInsideOnBottom, _clip);
  }

  DWErr finishWithoutShapes(DWArtHandle& result) {
    if (const DWErr e = gSuites.art->DisposeArt(_shapes)) return e;
    _shapes = nullptr;
    if (_order == kDWPlaceAboveAll || _order == kDWPlaceBelowAll) {
      if (const DWErr e = gSuites.art->ReorderArt(_clip, _order, nullptr)) return e;
    }
    if (const DWErr e = gSuites.art->ReorderArt(_raster, kDWPlaceInsideOnTop, _clip)) return e;
    if (const DWErr e = selectWithContents(_clip)) return e;
    result = _clip;
    return kDWNoErr;
  }

  DWErr finishClipped(DWArtHandle& result) {
    if (const DWErr e = gSuites.group->SetGroupClipped(_clip, 1)) return e;
    const bool anywhere = _order == kDWPlaceAboveAll || _order == kDWPlaceBelowAll;
    if (const DWErr e = gSuites.art->NewArt(kDWGroupArt, _order, anywhere ? nullptr : _clip, &_outer)) return e;
    if (const DWErr e = gSuites.art->ReorderArt(_clip, kDWPlaceInsideOnTop, _outer)) return e;
    if (const DWErr e = selectWithContents(_outer)) return e;
    result = _outer;
    return kDWNoErr;
  }

  // Deletes an object of the walk; objects of the set still to come that lie inside it go with it.
  DWErr dispose(DWArtHandle art, size_t index) {
    const std::vector<DWArtHandle>& objects = _set.original();
    for (size_t later = index + 1; later < objects.size(); ++later) {
      if (!_set.contains(objects[later]) || isGone(objects[later])) continue;
      bool inside = false;
      if (const DWErr e = isInside(objects[later], art, inside)) return e;
      if (inside) _gone.push_back(objects[later]);
    }
    return gSuites.art->DisposeArt(art);
  }

  static DWErr isInside(DWArtHandle art, DWArtHandle container, bool& inside) {
    inside = false;
    DWArtHandle parent = nullptr;
    if (const DWErr e = artParent(art, parent)) return e;
    while (parent) {
      if (parent == container) {
        inside = true;
        return kDWNoErr;
      }
      if (const DWErr e = artParent(parent, parent)) return e;
    }
    return kDWNoErr;
  }

  bool isGone(DWArtHandle art) const { return std::find(_gone.begin(), _gone.end(), art) != _gone.end(); }

  const int16_t _order;
  const DWArtHandle _raster;
  MaskSet _set;
  std::vector<DWArtHandle> _gone;
  DWArtHandle _clip = nullptr;
  DWArtHandle _shapes = nullptr;
  DWArtHandle _outer = nullptr;
};

}  // namespace

DWErr CreateClippingMask(DWArtSetHandle art, int16_t paintOrder, DWArtHandle raster, DWArtHandle* clipGroup) {
  if (!art || !raster) return BadParameterError;
  if (!maskSuitesHeld()) return SuiteMissingError;

  MaskBuilder builder(paintOrder, raster);
  DWArtHandle result = nullptr;
  DWErr error = builder.build(art, result);
  if (error != kDWNoErr) {
    builder.dismantle();
    result = nullptr;
  }
  if (error == OutOfMemoryError) error = MaskMemoryError;
  if (clipGroup && result) *clipGroup = result;
  return error;
}

}  // namespace dw
