// The fake art tree: art sets, art objects, paths and their styles, layers, blending and symbols.
#include <cstring>

#include "tests/engine/FakeHostInternal.h"

namespace dw::fake::detail {

namespace {

DWErr CountArtSet(DWArtSetHandle set, int32_t* count) {
  ENTER("CountArtSet");
  *count = int32_t(reinterpret_cast<std::vector<DWArtHandle>*>(set)->size());
  return 0;
}
DWErr IndexArtSet(DWArtSetHandle set, int32_t index, DWArtHandle* art) {
  ENTER("IndexArtSet");
  auto& v = *reinterpret_cast<std::vector<DWArtHandle>*>(set);
  if (index < 0 || size_t(index) >= v.size()) return kFakeError;
  *art = v[size_t(index)];
  return 0;
}
DWErr GetArtSetEntry(DWArtSetHandle set, int32_t index, DWArtHandle* art) {
  ENTER("GetArtSetEntry");
  return IndexArtSet(set, index, art);
}

DWErr NewArt(int16_t kind, int16_t paintOrder, DWArtHandle prep, DWArtHandle* art) {
  ENTER("NewArt");
  DWArtHandle created = H().addArt(kind, prep ? A(prep).parent : nullptr);
  A(created).paintOrder = paintOrder;
  A(created).prep = prep;
  *art = created;
  return 0;
}
DWErr DisposeArt(DWArtHandle art) {
  ENTER("DisposeArt");
  A(art).disposed = true;
  return 0;
}
FAKE_GET(GetArtType, DWArtHandle, int16_t, A(h).kind)
FAKE_GET(GetArtParent, DWArtHandle, DWArtHandle, A(h).parent)
DWErr GetArtUserAttr(DWArtHandle art, uint32_t mask, uint32_t* attr) {
  ENTER("GetArtUserAttr");
  *attr = A(art).userAttr & mask;
  return 0;
}
DWErr SetArtUserAttr(DWArtHandle art, uint32_t mask, uint32_t attr) {
  ENTER("SetArtUserAttr");
  A(art).userAttr = (A(art).userAttr & ~mask) | (attr & mask);
  return 0;
}
FAKE_GET(GetLayerOfArt, DWArtHandle, DWLayerHandle, A(h).layer)
FAKE_GET(ArtIsOutsideLayers, DWArtHandle, DWBool, A(h).outsideLayers)
DWErr GetArtValuePair(DWArtHandle art, double* real, int32_t* integer) {
  ENTER("GetArtValuePair");
  *real = A(art).real;
  *integer = A(art).integer;
  return 0;
}
DWErr SetArtValuePair(DWArtHandle art, double real, int32_t integer) {
  ENTER("SetArtValuePair");
  A(art).real = real;
  A(art).integer = integer;
  return 0;
}
FAKE_GET(GetLayerGroupArt, DWLayerHandle, DWArtHandle, H().layer(h).group)

FAKE_GET(GetPathIsGuide, DWArtHandle, DWBool, A(h).guide)
FAKE_GET(GetPathStyle, DWArtHandle, DWPathStyle, A(h).style)
FAKE_SET_FROM(SetPathStyle, DWPathStyle, style)
DWErr VisitColors(DWArtHandle art, DWColorVisitProc visit, void* context) {
  ENTER("VisitColors");
  for (const ColorUse& use : A(art).colors) {
    DWColorUse record{};
    std::memcpy(record.values, use.values, sizeof record.values);
    record.spot = use.spot;
    visit(use.kind, &record, context);
  }
  return 0;
}

DWErr GetCurrentLayer(DWLayerHandle* layer) {
  ENTER("GetCurrentLayer");
  *layer = H().currentLayer;
  return 0;
}
FAKE_GET(GetLayerEditable, DWLayerHandle, DWBool, H().layer(h).editable)
DWErr CountLayers(int32_t* count) {
  ENTER("CountLayers");
  *count = int32_t(H().layers.size());
  return 0;
}
DWErr GetNthLayer(int32_t index, DWLayerHandle* layer) {
  ENTER("GetNthLayer");
  if (index < 0 || size_t(index) >= H().layers.size()) return kFakeError;
  *layer = reinterpret_cast<DWLayerHandle>(&H().layers[size_t(index)]);
  return 0;
}
DWErr GetLayerVisible(DWLayerHandle, DWBool* visible) {
  *visible = 1;
  return 0;
}
DWErr GetLayerNonPrinting(DWLayerHandle, DWBool* nonPrinting) {
  *nonPrinting = 0;
  return 0;
}

DWErr GetArtStyle(DWArtHandle, DWArtStyleHandle* style) {
  *style = nullptr;
  return 0;
}
DWErr SetArtStyle(DWArtHandle art, DWArtStyleHandle style) {
  ENTER("SetArtStyle");
  if (!style) A(art).styleReset = true;
  return 0;
}
DWErr GetStyleOwner(DWArtHandle, DWArtHandle* owner) {
  *owner = nullptr;
  return 0;
}
FAKE_SET(SetBlendFlag, int32_t, blendFlag)
uint32_t GetBlendValue(DWArtHandle art) {
  H().enter("GetBlendValue");
  return A(art).blendValue;
}
uint32_t GetDocumentBlendValue() {
  H().enter("GetDocumentBlendValue");
  return H().documentBlendValue;
}
DWBool ArtIsInSymbolEditing(DWArtHandle art, int32_t) {
  H().enter("ArtIsInSymbolEditing");
  return H().symbolEditing;
}
DWErr NotifyArtChanged(DWArtHandle prep, DWArtHandle container, int32_t) {
  ENTER("NotifyArtChanged");
  H().symbolNotifications.push_back(prep);
  H().symbolNotifications.push_back(container);
  return 0;
}

}  // namespace

const DWArtSetSuite kArtSet = {nullptr,  nullptr, CountArtSet, IndexArtSet, nullptr,
                               nullptr,  nullptr, nullptr,     nullptr,     GetArtSetEntry};
const DWArtSuite kArt = {NewArt,         DisposeArt,      GetArtType,      GetArtParent,       nullptr,
                         nullptr,        GetArtUserAttr,  SetArtUserAttr,  GetLayerOfArt,      ArtIsOutsideLayers,
                         GetArtValuePair, SetArtValuePair, GetLayerGroupArt, nullptr,          nullptr,
                         nullptr,        nullptr,         nullptr,         nullptr};
const DWPathSuite kPath = {GetPathIsGuide, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr};
const DWPathStyleSuite kPathStyle = {GetPathStyle, SetPathStyle};
const DWFOConversionSuite kFoConversion = {VisitColors};
const DWLayerSuite kLayer = {GetCurrentLayer, GetLayerEditable, CountLayers, GetNthLayer, GetLayerVisible,
                             GetLayerNonPrinting};
const DWArtStyleSuite kArtStyle = {GetArtStyle, SetArtStyle, GetStyleOwner};
const DWBlendStyleSuite kBlendStyle = {SetBlendFlag, GetBlendValue, GetDocumentBlendValue};
const DWSymbolSuite kSymbol = {ArtIsInSymbolEditing};
const DWSymbolUtilsSuite kSymbolUtils = {NotifyArtChanged};

}  // namespace dw::fake::detail
