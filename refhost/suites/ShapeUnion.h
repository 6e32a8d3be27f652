#pragma once
// The geometry of the Pathfinder's union: outlines flattened into polygons and united by Clipper.
#include <vector>

#include "refhost/document/Art.h"

namespace refhost {

using Contour = std::vector<Point>;

// One filled area: its contours and the rule that fills them.
struct FilledShape {
  std::vector<Contour> contours;
  FillRule rule = FillRule::NonZero;
};

// Curves become chords that stray at most this far from them (points).
constexpr double kFlatness = 0.01;

// The polygon a fill of the path covers: open paths close with a straight side.
Contour flattenPath(const PathData& path, double flatness = kFlatness);

// The shapes of an art: a path is one shape with its fill rule; a compound path is one shape of
// all its paths (compound paths nested in it included) under its own rule; groups give the shapes
// inside them. Hidden art and other kinds add nothing.
void collectShapes(const Art& art, std::vector<FilledShape>& shapes);

// Each shape filled by its own rule, then all united. Outer contours run counter-clockwise (y up)
// and holes clockwise, so the non-zero rule fills the result; corners only, no repeated points.
std::vector<Contour> uniteShapes(const std::vector<FilledShape>& shapes);

}  // namespace refhost
