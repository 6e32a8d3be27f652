#include "refhost/document/PathStyle.h"

namespace refhost {

bool operator==(const PathStyle& a, const PathStyle& b) {
  return a.fillPaint == b.fillPaint && a.fill == b.fill && a.strokePaint == b.strokePaint &&
         a.stroke == b.stroke && a.strokeWidth == b.strokeWidth && a.lineJoin == b.lineJoin &&
         a.lineCap == b.lineCap && a.miterLimit == b.miterLimit && a.dashArray == b.dashArray &&
         a.dashOffset == b.dashOffset && a.fillRule == b.fillRule && a.opacity == b.opacity &&
         a.fillOpacity == b.fillOpacity && a.strokeOpacity == b.strokeOpacity &&
         a.clipping == b.clipping && a.preUnion == b.preUnion;
}

}  // namespace refhost
