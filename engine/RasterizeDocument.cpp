#include "commands/ArtBounds.h"
#include "commands/ArtTree.h"
#include "commands/RasterizeSuite.h"
#include "settings/RasterizeSettings.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"

// Slot 4 of "DW Rasterize Suite": every shown, printable layer of the document in one raster.
namespace dw {

namespace {

// The layer groups of the layers whose first flag (shown) is set and second (not printing) is not.
DWErr gatherLayers(DWArtSetHandle set) {
  const HostSuites& s = gSuites;
  DWLayerListHandle list = nullptr;
  if (const DWErr e = s.layerList->GetCurrentLayerList(&list)) return e;
  DWLayerHandle layer = nullptr;
  if (const DWErr e = s.layerList->GetFirstLayer(list, &layer)) return e;
  while (layer) {
    DWBool shown = 0;
    DWBool nonPrinting = 0;
    if (const DWErr e = s.layer->GetLayerVisible(layer, &shown)) return e;
    if (const DWErr e = s.layer->GetLayerNonPrinting(layer, &nonPrinting)) return e;
    if (shown && !nonPrinting) {
      DWArtHandle group = nullptr;
      if (const DWErr e = s.art->GetLayerGroupArt(layer, &group)) return e;
      if (const DWErr e = s.artSet->AddArtToArtSet(set, group)) return e;
    }
    if (const DWErr e = s.layerList->GetNextLayer(list, layer, &layer)) return e;
  }
  return kDWNoErr;
}

// The union of the members' bounds, skipping guides and hidden art. Stays the host's empty
// rectangle when nothing counts.
DWErr uniteBounds(DWArtSetHandle set, DWRealRect& bounds) {
  const HostSuites& s = gSuites;
  s.realMath->SetRect(&bounds, kEmptyArtBounds.left, kEmptyArtBounds.top, kEmptyArtBounds.right,
                      kEmptyArtBounds.bottom);
  int32_t count = 0;
  if (const DWErr e = artSetCount(set, count)) return e;
  for (int32_t i = 0; i < count; ++i) {
    DWArtHandle art = nullptr;
    if (const DWErr e = s.artSet->IndexArtSet(set, i, &art)) return e;
    int16_t kind = 0;
    if (const DWErr e = artKind(art, kind)) return e;
    if (kind == kDWPathArt) {
      DWBool guide = 0;
      if (const DWErr e = s.path->GetPathIsGuide(art, &guide)) return e;
      if (guide) continue;
    }
    uint32_t attributes = 0;
    if (const DWErr e = s.art->GetArtUserAttr(art, kDWArtHidden, &attributes)) return e;
    if (attributes & kDWArtHidden) continue;
    DWRealRect artBounds{};
    if (const DWErr e = s.art->GetArtBounds(art, &artBounds)) return e;
    if (s.realMath->IsRectEmpty(&bounds))
      bounds = artBounds;
    else
      s.realMath->UnionRect(&artBounds, &bounds, &bounds);
  }
  return kDWNoErr;
}

// Sets DrawParentlessArt for one call (layer groups have no parent) and gives the caller back its
// own options on every path.
class ParentlessArtOption {
 public:
  explicit ParentlessArtOption(RasterizeSettings& settings) : _settings(settings), _saved(settings.options) {
    _settings.options |= RasterizeOptions::DrawParentlessArt;
  }
  ~ParentlessArtOption() { _settings.options = _saved; }
  ParentlessArtOption(const ParentlessArtOption&) = delete;
  ParentlessArtOption& operator=(const ParentlessArtOption&) = delete;

 private:
  RasterizeSettings& _settings;
  uint32_t _saved;
};

}  // namespace

DWErr RasterizeDocument(RasterizeSettings* settings, int32_t paintOrder, DWArtHandle prep, DWArtHandle* raster,
                        DWRasterizeProgressProc progress) {
  if (!settings || !raster) return BadParameterError;
  ArtSetOwner set;
  if (const DWErr e = set.create()) return e;
  if (const DWErr e = gSuites.artSet->ClearArtSet(set.get())) return e;
  if (const DWErr e = gatherLayers(set.get())) return e;
  DWRealRect bounds{};
  if (const DWErr e = uniteBounds(set.get(), bounds)) return e;
  // No shown, printable art leaves the starting rectangle, which is inverted: nothing to draw.
  if (gSuites.realMath->IsRectEmpty(&bounds)) return BadParameterError;

  const ParentlessArtOption option(*settings);
  return RasterizeArtWithPadding(set.get(), settings, &bounds, paintOrder, prep, raster, progress, 0.0);
}

}  // namespace dw
