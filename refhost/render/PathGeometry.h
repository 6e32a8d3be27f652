#pragma once

#include "refhost/document/Art.h"

#include <cairo.h>

#include <vector>

#include <vector>

namespace refhost::render {

// Adds the outline of art to a cairo path in the context's user space (document points).
void appendPath(cairo_t* cr, const PathData& path);
void appendPolygon(cairo_t* cr, const Point* points, int count);
// Point text laid out with cairo's font machinery; the baseline starts at the frame's position.
void appendText(cairo_t* cr, const TextData& text);
// Every path inside `art` (paths, compound paths, text, and groups of them), for clipping.
void appendOutline(cairo_t* cr, const Art& art);

// The dash pattern a stroke is drawn with, and its offset: empty for a solid stroke (also for a
// pattern with a negative length or no length at all, which is drawn solid). False when the stroke
// draws nothing at all. With butt caps a dash of zero length covers nothing, but cairo still draws
// a join where one falls on a corner; such dashes are taken out and their gaps joined.
bool strokeDashes(const PathStyle& style, std::vector<double>& dashes, double& offset);

// Width, caps, joins and the dashes of strokeDashes.
void applyStroke(cairo_t* cr, const PathStyle& style, const std::vector<double>& dashes, double offset);

}  // namespace refhost::render
