#pragma once

#include "refhost/document/ArtData.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace refhost::io::svg {

// Geometry in SVG user units before any transform: subpaths of cubic Bezier anchors.
struct Subpath {
  std::vector<PathSegment> anchors;
  bool closed = false;
};

struct PathParseResult {
  std::vector<Subpath> subpaths;
  // Non-empty when the data had an error: everything before it is kept, as SVG renders it.
  std::string error;
  std::size_t errorOffset = 0;
};

// Parses SVG path data (every command, absolute and relative; quadratics and arcs become cubics).
// Stops with an error after `maxAnchors` anchors.
PathParseResult parsePathData(std::string_view data, std::size_t maxAnchors);

// Appends the elliptical arc from `from` to `to` (SVG endpoint parameters, rotation in degrees) as
// cubic curves of at most 90 degrees each to `sub`, whose last anchor is `from`.
void appendArc(Subpath& sub, Point from, double rx, double ry, double rotationDegrees, bool largeArc, bool sweep,
               Point to);

// Closes out a subpath: drops a final anchor that repeats the first (when closed) and sets each
// anchor's corner flag from its handles.
void finishSubpath(Subpath& sub);

// Basic shapes, as the SVG path equivalents.
Subpath rectangle(double x, double y, double w, double h, double rx, double ry);
Subpath ellipse(double cx, double cy, double rx, double ry);

}  // namespace refhost::io::svg
