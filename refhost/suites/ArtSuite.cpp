// "DW Art Suite": the art tree of the open document. Art handles are the model's Art pointers;
// children are walked from the top (the first child is painted last).
#include "host/suites/art_suite.h"
#include "refhost/document/ArtStyle.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

// Paint orders 1 to 4 need a live prep art; 5 and 6 ignore it.
bool prepNeeded(int16_t order) { return order >= kDWPlaceAbove && order <= kDWPlaceInsideOnBottom; }

DWErr checkPlacement(int16_t order, DWArtHandle prep, Art*& prepArt) {
  if (!isValidPaintOrder(order)) return kHostBadParameter;
  prepArt = prepNeeded(order) ? liveArt(prep) : nullptr;
  if (prepNeeded(order) && !prepArt) return kHostBadParameter;
  return kDWNoErr;
}

DWErr NewArt(int16_t kind, int16_t paintOrder, DWArtHandle prep, DWArtHandle* art) {
  REFHOST_CALL(kDWArtSuite, "NewArt");
  Document* doc = openDocument();
  if (!doc || !art || !isValidArtKind(kind)) return kHostBadParameter;
  Art* prepArt = nullptr;
  if (const DWErr e = checkPlacement(paintOrder, prep, prepArt)) return e;
  return guarded([&] {
    *art = artHandle(doc->newArt(ArtKind(kind), PaintOrder(paintOrder), prepArt));
    return kDWNoErr;
  });
}

DWErr DisposeArt(DWArtHandle art) {
  REFHOST_CALL(kDWArtSuite, "DisposeArt");
  Art* a = liveArt(art);
  if (!a) return kHostBadParameter;
  return guarded([&] {
    a->document().disposeArt(a);
    return kDWNoErr;
  });
}

DWErr GetArtType(DWArtHandle art, int16_t* kind) {
  REFHOST_CALL(kDWArtSuite, "GetArtType");
  const Art* a = liveArt(art);
  if (!a || !kind) return kHostBadParameter;
  *kind = int16_t(a->kind());
  return kDWNoErr;
}

// The edit and result art of a plug-in group answer the plug-in group as their parent.
DWErr GetArtParent(DWArtHandle art, DWArtHandle* parent) {
  REFHOST_CALL(kDWArtSuite, "GetArtParent");
  const Art* a = liveArt(art);
  if (!a || !parent) return kHostBadParameter;
  *parent = artHandle(a->parent());
  return kDWNoErr;
}

DWErr GetArtFirstChild(DWArtHandle art, DWArtHandle* child) {
  REFHOST_CALL(kDWArtSuite, "GetArtFirstChild");
  const Art* a = liveArt(art);
  if (!a || !child) return kHostBadParameter;
  *child = artHandle(a->firstChild());
  return kDWNoErr;
}

// The sibling painted below.
DWErr GetArtSibling(DWArtHandle art, DWArtHandle* sibling) {
  REFHOST_CALL(kDWArtSuite, "GetArtSibling");
  const Art* a = liveArt(art);
  if (!a || !sibling) return kHostBadParameter;
  *sibling = artHandle(a->nextSibling());
  return kDWNoErr;
}

DWErr GetArtUserAttr(DWArtHandle art, uint32_t mask, uint32_t* attr) {
  REFHOST_CALL(kDWArtSuite, "GetArtUserAttr");
  const Art* a = liveArt(art);
  if (!a || !attr) return kHostBadParameter;
  *attr = attributeWord(*a) & mask;
  return kDWNoErr;
}

DWErr SetArtUserAttr(DWArtHandle art, uint32_t mask, uint32_t attr) {
  REFHOST_CALL(kDWArtSuite, "SetArtUserAttr");
  Art* a = liveArt(art);
  if (!a) return kHostBadParameter;
  setAttributeWord(*a, mask, attr);
  return kDWNoErr;
}

// Null, without an error, for art outside every layer.
DWErr GetLayerOfArt(DWArtHandle art, DWLayerHandle* layer) {
  REFHOST_CALL(kDWArtSuite, "GetLayerOfArt");
  const Art* a = liveArt(art);
  if (!a || !layer) return kHostBadParameter;
  *layer = layerHandle(a->layer());
  return kDWNoErr;
}

DWErr ArtIsOutsideLayers(DWArtHandle art, DWBool* outside) {
  REFHOST_CALL(kDWArtSuite, "ArtIsOutsideLayers");
  const Art* a = liveArt(art);
  if (!a || !outside) return kHostBadParameter;
  *outside = a->layer() ? 0 : 1;
  return kDWNoErr;
}

DWErr GetArtValuePair(DWArtHandle art, double* real, int32_t* integer) {
  REFHOST_CALL(kDWArtSuite, "GetArtValuePair");
  const Art* a = liveArt(art);
  if (!a || !real || !integer) return kHostBadParameter;
  *real = a->valuePair().real;
  *integer = a->valuePair().integer;
  return kDWNoErr;
}

DWErr SetArtValuePair(DWArtHandle art, double real, int32_t integer) {
  REFHOST_CALL(kDWArtSuite, "SetArtValuePair");
  Art* a = liveArt(art);
  if (!a) return kHostBadParameter;
  a->setValuePair(ValuePair{real, integer});
  return kDWNoErr;
}

DWErr GetLayerGroupArt(DWLayerHandle layer, DWArtHandle* group) {
  REFHOST_CALL(kDWArtSuite, "GetLayerGroupArt");
  const Layer* l = liveLayer(layer);
  if (!l || !group) return kHostBadParameter;
  *group = artHandle(l->group());
  return kDWNoErr;
}

// The topmost object of the layer, from which a walk of siblings and children covers the layer;
// null for an empty layer.
DWErr GetFirstArtOfLayer(DWLayerHandle layer, DWArtHandle* art) {
  REFHOST_CALL(kDWArtSuite, "GetFirstArtOfLayer");
  const Layer* l = liveLayer(layer);
  if (!l || !art) return kHostBadParameter;
  *art = artHandle(l->group()->firstChild());
  return kDWNoErr;
}

DWErr GetArtBounds(DWArtHandle art, DWRealRect* bounds) {
  REFHOST_CALL(kDWArtSuite, "GetArtBounds");
  const Art* a = liveArt(art);
  if (!a || !bounds) return kHostBadParameter;
  return guarded([&] {
    *bounds = toRecord(paintedBounds(*a));
    return kDWNoErr;
  });
}

DWErr ReorderArt(DWArtHandle art, int16_t paintOrder, DWArtHandle prep) {
  REFHOST_CALL(kDWArtSuite, "ReorderArt");
  Art* a = liveArt(art);
  if (!a) return kHostBadParameter;
  Art* prepArt = nullptr;
  if (const DWErr e = checkPlacement(paintOrder, prep, prepArt)) return e;
  return guarded([&] {
    a->document().moveArt(a, PaintOrder(paintOrder), prepArt);
    return kDWNoErr;
  });
}

DWErr IsArtGraph(DWArtHandle art, DWBool* graph) {
  REFHOST_CALL(kDWArtSuite, "IsArtGraph");
  const Art* a = liveArt(art);
  if (!a || !graph) return kHostBadParameter;
  *graph = a->kind() == ArtKind::Unknown && a->isGraph() ? 1 : 0;
  return kDWNoErr;
}

// An appearance of its own: a style that adds live effects or a paint of its own.
DWErr ArtHasOwnStyle(DWArtHandle art, DWBool* styled) {
  REFHOST_CALL(kDWArtSuite, "ArtHasOwnStyle");
  const Art* a = liveArt(art);
  if (!a || !styled) return kHostBadParameter;
  const ArtStylePtr& style = a->artStyle();
  *styled = style && (!style->effects.empty() || style->hasPaint) ? 1 : 0;
  return kDWNoErr;
}

DWErr DuplicateArt(DWArtHandle art, int16_t paintOrder, DWArtHandle prep, DWArtHandle* copy) {
  REFHOST_CALL(kDWArtSuite, "DuplicateArt");
  const Art* a = liveArt(art);
  if (!a || !copy) return kHostBadParameter;
  Art* prepArt = nullptr;
  if (const DWErr e = checkPlacement(paintOrder, prep, prepArt)) return e;
  return guarded([&] {
    *copy = artHandle(a->document().duplicateArt(a, PaintOrder(paintOrder), prepArt));
    return kDWNoErr;
  });
}

const DWArtSuite kSuite = {NewArt,          DisposeArt,        GetArtType,       GetArtParent,     GetArtFirstChild,
                           GetArtSibling,   GetArtUserAttr,    SetArtUserAttr,   GetLayerOfArt,    ArtIsOutsideLayers,
                           GetArtValuePair, SetArtValuePair,   GetLayerGroupArt, GetFirstArtOfLayer, GetArtBounds,
                           ReorderArt,      IsArtGraph,        ArtHasOwnStyle,   DuplicateArt};
REFHOST_REGISTER_SUITE(kDWArtSuite, kDWArtSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
