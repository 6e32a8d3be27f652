#pragma once

#include "refhost/document/Art.h"

#include <cairo.h>

namespace refhost::render {

// Adds the outline of art to a cairo path in the context's user space (document points).
void appendPath(cairo_t* cr, const PathData& path);
void appendPolygon(cairo_t* cr, const Point* points, int count);
// Point text laid out with cairo's font machinery; the baseline starts at the frame's position.
void appendText(cairo_t* cr, const TextData& text);
// Every path inside `art` (paths, compound paths, text, and groups of them), for clipping.
void appendOutline(cairo_t* cr, const Art& art);

void applyStroke(cairo_t* cr, const PathStyle& style);

}  // namespace refhost::render
