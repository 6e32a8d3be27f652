#pragma once

#include "refhost/render/ArtRenderer.h"
#include "refhost/render/Port.h"

namespace refhost::render {

// The device mapping of a draw record: document point (x, y) lands at port pixel
// ((x - origin.x) * scale, (origin.y - y) * scale).
Matrix documentToPort(const Point& origin, double scale);

// Draws one art object and its contents into a port, limited to `device`, the session's device
// rectangle and the port's clip, anti-aliased when the port's options ask for it.
void drawIntoPort(ArtRenderer& renderer, const Port& port, const Art& art, const Point& origin, double scale,
                  const IntRect& device);

// The renderer that the host's drawing suites share; drawing happens on one thread at a time.
ArtRenderer& sharedRenderer();

}  // namespace refhost::render
