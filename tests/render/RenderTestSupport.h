#pragma once

#include "refhost/document/Document.h"
#include "refhost/render/DrawIntoPort.h"
#include "refhost/render/Port.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace rendertest {

using namespace refhost;
using namespace refhost::render;

// Port pixels are placed so that device (x, y) is document (x, kHeight - y) at scale 1.
constexpr int kWidth = 20;
constexpr int kHeight = 16;

inline Point doc(double x, double y) { return Point{x, kHeight - y}; }

struct Scene {
  Document document;
  Layer* layer = nullptr;
  Scene() { layer = document.newLayer("Layer 1"); }

  Art* polygon(const std::vector<Point>& devicePoints, const Paint& fill, Art* parent = nullptr) {
    Art* a = parent ? document.newArt(ArtKind::Path, PaintOrder::InsideOnTop, parent)
                    : document.newArt(ArtKind::Path, PaintOrder::AboveAll, nullptr);
    for (const Point& p : devicePoints) a->path()->segments.push_back(PathSegment::at(doc(p.x, p.y)));
    a->path()->closed = true;
    a->pathStyle().fillPaint = true;
    a->pathStyle().fill = fill;
    return a;
  }
  Art* rect(double x0, double y0, double x1, double y1, const Paint& fill, Art* parent = nullptr) {
    return polygon({{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}}, fill, parent);
  }
  Art* group(Art* parent = nullptr) {
    return parent ? document.newArt(ArtKind::Group, PaintOrder::InsideOnTop, parent)
                  : document.newArt(ArtKind::Group, PaintOrder::AboveAll, nullptr);
  }
};

// A port over its own buffer, filled with the empty pixel (or white for 1-bit).
struct TestPort {
  ColorSpace::Ptr space;
  int bits;
  std::int32_t rowBytes;
  std::vector<std::uint8_t> pixels;
  std::unique_ptr<Port> port;

  TestPort(ColorSpace::Ptr s, int bitsPerPixel, bool antialias, int width = kWidth, int height = kHeight)
      : space(std::move(s)), bits(bitsPerPixel) {
    const int rowRaw = bits == 1 ? (width + 7) / 8 : width * space->channelCount();
    rowBytes = (rowRaw + 3) / 4 * 4;
    pixels.assign(static_cast<std::size_t>(rowBytes) * height, 0);
    port = std::make_unique<Port>(IntRect{0, 0, width, height}, rowBytes, pixels.data(), space, bits,
                                  antialias ? kPortAntialias : 0u);
    std::uint8_t empty[33];
    emptyPixel(*space, empty);
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x) {
        if (bits == 1)
          pixels[static_cast<std::size_t>(y * rowBytes + x / 8)] |= static_cast<std::uint8_t>(0x80 >> (x % 8));
        else
          std::copy(empty, empty + space->channelCount(), at(x, y));
      }
  }
  std::uint8_t* at(int x, int y) {
    return pixels.data() + static_cast<std::size_t>(y) * rowBytes + static_cast<std::size_t>(x) * space->channelCount();
  }
  int bit(int x, int y) const { return (pixels[static_cast<std::size_t>(y * rowBytes + x / 8)] >> (7 - x % 8)) & 1; }
  void draw(const Art& art) {
    drawIntoPort(sharedRenderer(), *port, art, Point{0, kHeight}, 1.0, IntRect{0, 0, port->width(), port->rows()});
  }
};

// Exact area of the unit pixel (x, y) inside a convex or simple polygon (Sutherland-Hodgman
// clipping of the polygon to the pixel square, then the shoelace formula).
inline double pixelArea(const std::vector<Point>& poly, int x, int y) {
  std::vector<Point> out = poly;
  auto clip = [&](auto inside, auto cross) {
    std::vector<Point> in = out;
    out.clear();
    for (std::size_t i = 0; i < in.size(); ++i) {
      const Point a = in[i], b = in[(i + 1) % in.size()];
      const bool ia = inside(a), ib = inside(b);
      if (ia) out.push_back(a);
      if (ia != ib) out.push_back(cross(a, b));
    }
  };
  auto atX = [](Point a, Point b, double cx) { return Point{cx, a.y + (b.y - a.y) * (cx - a.x) / (b.x - a.x)}; };
  auto atY = [](Point a, Point b, double cy) { return Point{a.x + (b.x - a.x) * (cy - a.y) / (b.y - a.y), cy}; };
  clip([&](Point p) { return p.x >= x; }, [&](Point a, Point b) { return atX(a, b, x); });
  clip([&](Point p) { return p.x <= x + 1; }, [&](Point a, Point b) { return atX(a, b, x + 1); });
  clip([&](Point p) { return p.y >= y; }, [&](Point a, Point b) { return atY(a, b, y); });
  clip([&](Point p) { return p.y <= y + 1; }, [&](Point a, Point b) { return atY(a, b, y + 1); });
  double area = 0;
  for (std::size_t i = 0; i < out.size(); ++i) {
    const Point a = out[i], b = out[(i + 1) % out.size()];
    area += a.x * b.y - b.x * a.y;
  }
  return std::fabs(area) / 2;
}

// Whether the pixel centre lies inside the polygon (crossing count), and whether it lies so close
// to an edge that either answer is right.
inline bool centreInside(const std::vector<Point>& poly, int x, int y, bool* ambiguous) {
  const double px = x + 0.5, py = y + 0.5;
  bool inside = false;
  *ambiguous = false;
  for (std::size_t i = 0, j = poly.size() - 1; i < poly.size(); j = i++) {
    const Point a = poly[i], b = poly[j];
    const double cross = (b.x - a.x) * (py - a.y) - (b.y - a.y) * (px - a.x);
    const double len = std::hypot(b.x - a.x, b.y - a.y);
    const bool within = px >= std::min(a.x, b.x) - 1e-9 && px <= std::max(a.x, b.x) + 1e-9 &&
                        py >= std::min(a.y, b.y) - 1e-9 && py <= std::max(a.y, b.y) + 1e-9;
    if (within && std::fabs(cross) / len < 1e-6) *ambiguous = true;
    if ((a.y > py) != (b.y > py) && px < (b.x - a.x) * (py - a.y) / (b.y - a.y) + a.x) inside = !inside;
  }
  return inside;
}

}  // namespace rendertest
