#pragma once
// What the document suites share: the open document, handle checks and conversions between the
// boundary's records and the model's. Handles of art, layers and symbols are the model's own
// pointers (the renderer's suites take art handles the same way).
#include <cstdint>

#include "host/types.h"
#include "refhost/document/Document.h"
#include "refhost/loader/Host.h"

namespace refhost {

inline Document* openDocument() { return Host::current().document(); }

// Null unless the handle is live art (a layer, a symbol) of the open document.
inline Art* liveArt(const void* handle) {
  Document* doc = openDocument();
  return doc ? doc->liveArt(handle) : nullptr;
}
inline Layer* liveLayer(const void* handle) {
  Document* doc = openDocument();
  return doc ? doc->liveLayer(handle) : nullptr;
}

inline DWArtHandle artHandle(const Art* art) { return reinterpret_cast<DWArtHandle>(const_cast<Art*>(art)); }
inline DWLayerHandle layerHandle(const Layer* layer) {
  return reinterpret_cast<DWLayerHandle>(const_cast<Layer*>(layer));
}

inline DWRealRect toRecord(const Rect& r) { return DWRealRect{r.left, r.top, r.right, r.bottom}; }
inline DWRealPoint toRecord(const Point& p) { return DWRealPoint{p.x, p.y}; }
inline Point fromRecord(const DWRealPoint& p) { return Point{p.h, p.v}; }
inline DWRealMatrix toRecord(const Matrix& m) { return DWRealMatrix{m.a, m.b, m.c, m.d, m.tx, m.ty}; }
inline Matrix fromRecord(const DWRealMatrix& m) { return Matrix{m.a, m.b, m.c, m.d, m.tx, m.ty}; }

// The art suite's attribute word: the low 16 bits are the object's attributes (selected, locked,
// hidden, fully selected), the high 16 bits its user flags. Selecting an object through the suite
// selects it as a whole, so "fully selected" follows "selected" unless the mask names it too.
constexpr uint32_t kAttributeBits = 0x0000FFFFu;

inline uint32_t attributeWord(const Art& art) {
  return (art.attributes() & kAttributeBits) | (art.userFlags() & ~kAttributeBits);
}

inline void setAttributeWord(Art& art, uint32_t mask, uint32_t value) {
  if ((mask & ArtAttr::Selected) && !(mask & ArtAttr::FullySelected)) {
    mask |= ArtAttr::FullySelected;
    value = (value & ArtAttr::Selected) ? value | ArtAttr::FullySelected : value & ~ArtAttr::FullySelected;
  }
  art.setAttributes(mask & kAttributeBits, value);
  art.setUserFlags(mask & ~kAttributeBits, value);
}

// Bounds as the art suite reports them: the area the object paints, strokes included, hidden
// contents left out.
Rect paintedBounds(const Art& art);

}  // namespace refhost
