#include "refhost/render/DrawIntoPort.h"

namespace refhost::render {

Matrix documentToPort(const Point& origin, double scale) {
  return Matrix{scale, 0, 0, -scale, -origin.x * scale, origin.y * scale};
}

void drawIntoPort(ArtRenderer& renderer, const Port& port, const Art& art, const Point& origin, double scale,
                  const IntRect& device) {
  const Matrix m = documentToPort(origin, scale);
  IntRect limit = intersect(device, IntRect{0, 0, port.width(), port.rows()});
  if (port.drawing()) limit = intersect(limit, port.device());
  const std::vector<ClipPath> clip = port.deviceClip(m);
  DrawRequest r;
  r.art = &art;
  r.docToDevice = m;
  r.target = port.surface();
  r.space = &port.space();
  r.limit = limit;
  r.antialias = port.antialias();
  r.clip = clip.empty() ? nullptr : &clip;
  renderer.draw(r);
}

ArtRenderer& sharedRenderer() {
  static ArtRenderer renderer;
  return renderer;
}

}  // namespace refhost::render
