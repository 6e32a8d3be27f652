#pragma once
// Paints and path styles between the boundary's records (host/paint.h) and the model.
// Gray is ink in both; RGB light; CMYK ink. A custom colour's handle is its document id (the
// renderer's convention). A gradient's handle stands for the shared gradient; its matrix maps
// gradient space to the document, so for a gradient laid out on the art's bounding box it
// depends on the art's geometric bounds, passed as `box`.
#include <memory>

#include "host/paint.h"
#include "refhost/document/Document.h"

namespace refhost {

DWGradientHandle gradientHandle(const std::shared_ptr<const Gradient>& gradient);
std::shared_ptr<const Gradient> gradientOf(DWGradientHandle handle);

DWColor toColorRecord(const Paint& paint, const Rect& box);
// 'HPRM' for an unknown kind, custom colour or gradient; 'HNIM' for pattern paints, which the
// document model cannot hold.
DWErr fromColorRecord(const DWColor& color, const Document& doc, const Rect& box, Paint& paint);

DWPathStyle toStyleRecord(const PathStyle& style, const Rect& box);
// Writes the record's fields over `style`; what the record does not carry (the object's opacity)
// stays. Overprinting is not kept: the host composites every paint normally.
DWErr fromStyleRecord(const DWPathStyle& record, const Document& doc, const Rect& box, PathStyle& style);

}  // namespace refhost
