// Shapes whose coverage is known exactly, drawn into ports of every layout, aliased and
// anti-aliased; each pixel is checked against the coverage computed here independently.
#include "RenderTestSupport.h"

#include <gtest/gtest.h>

#include <functional>

using namespace rendertest;

namespace {

struct Layout {
  const char* name;
  std::function<ColorSpace::Ptr(CustomColorId spot)> space;
  int bits;
  std::function<Paint(CustomColorId spot)> paint;
  std::vector<int> inside;  // full-coverage pixel, alpha first when present
};

// A shape: how to make it, and its exact coverage of pixel (x, y) for each mode.
struct Shape {
  const char* name;
  std::function<Art*(Scene&, const Paint&)> make;
  std::function<double(int x, int y, bool antialias, bool* ambiguous)> coverage;
};

const std::vector<Point> kTriangle = {{1.0, 1.3}, {17.6, 2.2}, {4.1, 14.7}};
const std::vector<Point> kOuter = {{2, 2}, {14, 2}, {14, 14}, {2, 14}};
const std::vector<Point> kInner = {{5, 5}, {11, 5}, {11, 11}, {5, 11}};

double rectCoverage(double x0, double y0, double x1, double y1, int x, int y, bool antialias, bool* ambiguous) {
  if (antialias) {
    const double w = std::max(0.0, std::min<double>(x + 1, x1) - std::max<double>(x, x0));
    const double h = std::max(0.0, std::min<double>(y + 1, y1) - std::max<double>(y, y0));
    return w * h;
  }
  return x + 0.5 > x0 && x + 0.5 < x1 && y + 0.5 > y0 && y + 0.5 < y1 ? 1.0 : 0.0;
}

// Strokes a path 2 units wide with butt caps and the given dashes, unfilled.
Art* buttDashed(Art* a, const Paint& p, std::vector<double> dashes) {
  PathStyle& st = a->pathStyle();
  st.fillPaint = false;
  st.strokePaint = true;
  st.stroke = p;
  st.strokeWidth = 2;
  st.lineCap = LineCap::Butt;
  st.dashArray = std::move(dashes);
  return a;
}

std::vector<Shape> shapes() {
  std::vector<Shape> out;
  out.push_back({"rect on grid", [](Scene& s, const Paint& p) { return s.rect(2, 3, 7, 9, p); },
                 [](int x, int y, bool aa, bool* amb) { return rectCoverage(2, 3, 7, 9, x, y, aa, amb); }});
  out.push_back({"rect off grid", [](Scene& s, const Paint& p) { return s.rect(2.25, 3.25, 6.75, 8.75, p); },
                 [](int x, int y, bool aa, bool* amb) { return rectCoverage(2.25, 3.25, 6.75, 8.75, x, y, aa, amb); }});
  out.push_back({"triangle", [](Scene& s, const Paint& p) { return s.polygon(kTriangle, p); },
                 [](int x, int y, bool aa, bool* amb) {
                   if (aa) return pixelArea(kTriangle, x, y);
                   return centreInside(kTriangle, x, y, amb) ? 1.0 : 0.0;
                 }});
  out.push_back({"even-odd compound path",
                 [](Scene& s, const Paint& p) {
                   Art* compound = s.document.newArt(ArtKind::CompoundPath, PaintOrder::AboveAll, nullptr);
                   compound->pathStyle().fillPaint = true;
                   compound->pathStyle().fill = p;
                   compound->pathStyle().fillRule = FillRule::EvenOdd;
                   // Both squares wind the same way: only the even-odd rule leaves the hole.
                   for (const auto* poly : {&kOuter, &kInner}) {
                     Art* path = s.document.newArt(ArtKind::Path, PaintOrder::InsideOnTop, compound);
                     for (const Point& q : *poly) path->path()->segments.push_back(PathSegment::at(doc(q.x, q.y)));
                     path->path()->closed = true;
                   }
                   return compound;
                 },
                 [](int x, int y, bool aa, bool* amb) {
                   return rectCoverage(2, 2, 14, 14, x, y, aa, amb) - rectCoverage(5, 5, 11, 11, x, y, aa, amb);
                 }});
  out.push_back({"dashed stroke",
                 [](Scene& s, const Paint& p) {
                   Art* a = s.document.newArt(ArtKind::Path, PaintOrder::AboveAll, nullptr);
                   a->path()->segments = {PathSegment::at(doc(2, 8)), PathSegment::at(doc(18, 8))};
                   return buttDashed(a, p, {3, 2});
                 },
                 [](int x, int y, bool aa, bool* amb) {
                   double c = 0;
                   for (double start = 2; start < 18; start += 5)
                     c += rectCoverage(start, 7, std::min(start + 3, 18.0), 9, x, y, aa, amb);
                   return c;
                 }});
  // Zero-length butt-capped dashes cover nothing, not even where they fall on the corners.
  out.push_back({"zero-length butt dashes on corners",
                 [](Scene& s, const Paint& p) {
                   return buttDashed(s.rect(2, 2, 14, 14, p), p, {0, 12});
                 },
                 [](int, int, bool, bool*) { return 0.0; }});
  return out;
}

std::vector<Layout> layouts() {
  auto cmykPaint = [](CustomColorId) { return Paint::cmyk(0.2, 0.4, 0, 1); };
  auto spotPaint = [](CustomColorId id) { return Paint::spotColor(id, 0.2); };
  auto parts = [](CustomColorId id, bool alpha) {
    return ColorSpace::fromParts({ColorSpace::processComponent(0), ColorSpace::processComponent(3), ColorSpace::spot(id, false)},
                                 alpha);
  };
  return {
      {"gray", [](CustomColorId) { return ColorSpace::process(Family::Gray, false); }, 8,
       [](CustomColorId) { return Paint::gray(0.6); }, {102}},
      {"gray+alpha", [](CustomColorId) { return ColorSpace::process(Family::Gray, true); }, 16,
       [](CustomColorId) { return Paint::gray(0.6); }, {255, 102}},
      {"rgb", [](CustomColorId) { return ColorSpace::process(Family::Rgb, false); }, 24,
       [](CustomColorId) { return Paint::rgb(1, 0, 0.2); }, {255, 0, 51}},
      {"rgb+alpha", [](CustomColorId) { return ColorSpace::process(Family::Rgb, true); }, 32,
       [](CustomColorId) { return Paint::rgb(1, 0, 0.2); }, {255, 255, 0, 51}},
      {"cmyk", [](CustomColorId) { return ColorSpace::process(Family::Cmyk, false); }, 32, cmykPaint, {51, 102, 0, 255}},
      {"cmyk+alpha", [](CustomColorId) { return ColorSpace::process(Family::Cmyk, true); }, 40, cmykPaint,
       {255, 51, 102, 0, 255}},
      // The spot's alternate is (0, 0.5, 1, 0); tint 0.2 leaves 0.8 of it.
      {"cmyk, spot as alternate", [](CustomColorId) { return ColorSpace::process(Family::Cmyk, false); }, 32, spotPaint,
       {0, 102, 204, 0}},
      {"single spot", [](CustomColorId id) { return ColorSpace::spot(id, false); }, 8, spotPaint, {204}},
      {"single spot+alpha", [](CustomColorId id) { return ColorSpace::spot(id, true); }, 16, spotPaint, {255, 204}},
      {"parts, spot ink in its channel", [parts](CustomColorId id) { return parts(id, false); }, 24, spotPaint, {0, 0, 204}},
      {"parts+alpha, spot ink in its channel", [parts](CustomColorId id) { return parts(id, true); }, 32, spotPaint,
       {255, 0, 0, 204}},
      {"parts, process paint knocks out the spot", [parts](CustomColorId id) { return parts(id, false); }, 24, cmykPaint,
       {51, 255, 0}},
      {"1-bit, white is 1", [](CustomColorId) { return ColorSpace::process(Family::Gray, false); }, 1,
       [](CustomColorId) { return Paint::gray(1.0); }, {0}},
  };
}

std::vector<int> emptyOf(const ColorSpace& space) {
  std::uint8_t px[33];
  emptyPixel(space, px);
  return std::vector<int>(px, px + space.channelCount());
}

}  // namespace

TEST(PortLayoutCoverage, EveryShapeInEveryLayout) {
  for (const Layout& layout : layouts()) {
    for (const Shape& shape : shapes()) {
      for (bool aa : {false, true}) {
        Scene scene;
        CustomColor spot;
        spot.name = "Varnish";
        spot.cmyk[1] = 0.5;
        spot.cmyk[2] = 1.0;
        const CustomColorId id = scene.document.newCustomColor(spot);
        TestPort port(layout.space(id), layout.bits, aa);
        Art* art = shape.make(scene, layout.paint(id));
        port.draw(*art);
        const std::vector<int> bg = layout.bits == 1 ? std::vector<int>{255} : emptyOf(*port.space);
        const bool alpha = port.space->hasAlpha();
        for (int y = 0; y < kHeight; ++y) {
          for (int x = 0; x < kWidth; ++x) {
            bool ambiguous = false;
            const double c = shape.coverage(x, y, aa, &ambiguous);
            const std::string where = std::string(layout.name) + " / " + shape.name + (aa ? " / anti-aliased" : " / aliased") +
                                      " at (" + std::to_string(x) + ", " + std::to_string(y) + ")";
            if (ambiguous) continue;
            if (layout.bits == 1) {
              if (aa && c > 0.25 && c < 0.75) continue;  // thresholded either way
              ASSERT_EQ(port.bit(x, y), c >= 0.5 ? 0 : 1) << where;
              continue;
            }
            const std::uint8_t* px = port.at(x, y);
            // Slanted edges are sampled on cairo's grid of 15 sub-rows per pixel: up to 1/15 off.
            const double tolerance = !aa ? 0.0 : shape.name == std::string("triangle") ? 255.0 / 15 : 1.0;
            for (std::size_t k = 0; k < bg.size(); ++k) {
              double expected;
              if (alpha && k == 0)
                expected = 255.0 * c;
              else if (alpha)
                expected = c > 0 ? layout.inside[k] : bg[k];  // unassociated colour over transparency
              else
                expected = bg[k] + (layout.inside[k] - bg[k]) * c;
              if (alpha && k > 0 && px[0] == 0) continue;  // no alpha: its colour is not seen
              ASSERT_NEAR(px[k], expected, tolerance + 0.5) << where << " channel " << k;
            }
          }
        }
      }
    }
  }
}
