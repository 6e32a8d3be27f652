#pragma once

#include "refhost/document/Art.h"
#include "refhost/document/Geometry.h"

namespace refhost {

struct BoundsOptions {
  // Hidden art inside containers counts too (the art asked about always counts).
  bool includeHidden = false;
  // Widen stroked paths by half the stroke width on every side (joins and caps are not followed).
  bool includeStroke = false;
};

// Geometric bounds of an art in document points, after `transform`:
// - paths: the exact extent of the Bezier curves (their extrema, not the control points);
// - groups, compound paths, unknown art: union of the children that are not hidden; clip groups:
//   that union intersected with the union of their clipping paths;
// - placed and raster art: their transformed image rectangle;
// - mesh: its vertices; text: baseline origin, estimated advance, ascent 0.8 em and descent 0.2 em;
// - symbol instance: its definition under the instance matrix; plug-in group: its result art.
// Empty (Rect::isEmpty()) when the art covers nothing.
Rect artBounds(const Art& art, const Matrix& transform = Matrix{}, const BoundsOptions& options = {});

// Exact bounds of one cubic Bezier segment.
Rect bezierBounds(Point p0, Point p1, Point p2, Point p3);
Rect pathBounds(const PathData& path, const Matrix& transform = Matrix{});

}  // namespace refhost
