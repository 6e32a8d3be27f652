#pragma once

#include "refhost/document/Paint.h"

#include <cstdint>
#include <vector>

namespace refhost {

enum class LineJoin : std::uint8_t { Miter = 0, Round = 1, Bevel = 2 };
enum class LineCap : std::uint8_t { Butt = 0, Round = 1, Projecting = 2 };
enum class FillRule : std::uint8_t { NonZero = 0, EvenOdd = 1 };

// How a path (or compound path, text frame, raster's spot fill) is painted. Every art carries one;
// kinds that do not paint with it simply ignore it.
struct PathStyle {
  bool fillPaint = false;    // the fill is painted
  Paint fill;
  bool strokePaint = false;  // the stroke is painted
  Paint stroke;
  double strokeWidth = 1.0;  // points
  LineJoin lineJoin = LineJoin::Miter;
  LineCap lineCap = LineCap::Butt;
  double miterLimit = 4.0;
  std::vector<double> dashArray;  // points; empty means solid
  double dashOffset = 0.0;
  FillRule fillRule = FillRule::NonZero;
  double opacity = 1.0;        // of the whole object
  double fillOpacity = 1.0;
  double strokeOpacity = 1.0;
  bool clipping = false;       // the path is a clipping path of its clip group
  bool preUnion = false;       // shapes are united before a Pathfinder operation uses them
};

bool operator==(const PathStyle& a, const PathStyle& b);
inline bool operator!=(const PathStyle& a, const PathStyle& b) { return !(a == b); }

}  // namespace refhost
