#include "refhost/document/Bounds.h"
#include "refhost/document/Document.h"

#include <gtest/gtest.h>

#include <cmath>

namespace refhost {
namespace {

void expectRect(const Rect& r, double l, double t, double rt, double b, const char* what, double tol = 1e-9) {
  EXPECT_NEAR(r.left, l, tol) << what;
  EXPECT_NEAR(r.top, t, tol) << what;
  EXPECT_NEAR(r.right, rt, tol) << what;
  EXPECT_NEAR(r.bottom, b, tol) << what;
}

Point cubic(Point p0, Point p1, Point p2, Point p3, double t) {
  const double u = 1 - t;
  return Point{u * u * u * p0.x + 3 * u * u * t * p1.x + 3 * u * t * t * p2.x + t * t * t * p3.x,
               u * u * u * p0.y + 3 * u * u * t * p1.y + 3 * u * t * t * p2.y + t * t * t * p3.y};
}

struct CurveCase {
  const char* name;
  Point p0, p1, p2, p3;
};

const CurveCase kCurves[] = {
    {"arch", {0, 0}, {0, 10}, {10, 10}, {10, 0}},
    {"s-curve", {0, 0}, {30, 40}, {-20, -40}, {10, 5}},
    {"loop", {0, 0}, {50, 20}, {-30, 20}, {20, 0}},
    {"straight", {1, 1}, {2, 2}, {3, 3}, {4, 4}},
    {"cusp", {0, 0}, {10, 10}, {0, 10}, {10, 0}},
};

TEST(Bounds, BezierExtremaMatchDenseSampling) {
  for (const CurveCase& c : kCurves) {
    Rect sampled = Rect::none();
    const int n = 200000;
    for (int i = 0; i <= n; ++i) sampled.add(cubic(c.p0, c.p1, c.p2, c.p3, static_cast<double>(i) / n));
    const Rect exact = bezierBounds(c.p0, c.p1, c.p2, c.p3);
    // Sampling never overshoots; the exact extent is at most a hair beyond it.
    expectRect(exact, sampled.left, sampled.top, sampled.right, sampled.bottom, c.name, 1e-6);
  }
}

TEST(Bounds, ArchTopIsThreeQuartersOfTheControlHeight) {
  // y(t) = 30 t (1 - t), greatest at t = 1/2: 7.5, well below the control points' 10.
  const Rect r = bezierBounds({0, 0}, {0, 10}, {10, 10}, {10, 0});
  expectRect(r, 0, 7.5, 10, 0, "arch");
}

class BoundsOfKinds : public ::testing::Test {
 protected:
  BoundsOfKinds() { doc.newLayer("L"); }
  Art* rectPath(Art* parent, double l, double b, double r, double t) {
    Art* p = parent ? doc.newArt(ArtKind::Path, PaintOrder::InsideOnBottom, parent)
                    : doc.newArt(ArtKind::Path, PaintOrder::AboveAll, nullptr);
    p->path()->segments = {PathSegment::at(l, b), PathSegment::at(r, b), PathSegment::at(r, t), PathSegment::at(l, t)};
    p->path()->closed = true;
    return p;
  }
  Document doc;
};

TEST_F(BoundsOfKinds, ClosedPathIncludesTheClosingCurve) {
  Art* p = doc.newArt(ArtKind::Path, PaintOrder::AboveAll, nullptr);
  // The closing curve from (10, 0) back to (0, 0) bulges down through its handles.
  PathSegment a{{0, 0}, {0, -20}, {0, 0}, false};
  PathSegment b{{10, 0}, {10, 0}, {10, -20}, false};
  p->path()->segments = {a, b};
  expectRect(artBounds(*p), 0, 0, 10, 0, "open: straight line");
  p->path()->closed = true;
  expectRect(artBounds(*p), 0, 0, 10, -15, "closed: curve below");
}

TEST_F(BoundsOfKinds, GroupSkipsHiddenChildren) {
  Art* g = doc.newArt(ArtKind::Group, PaintOrder::AboveAll, nullptr);
  rectPath(g, 0, 0, 10, 10);
  Art* hidden = rectPath(g, 100, 100, 200, 200);
  hidden->setAttributes(ArtAttr::Hidden, ArtAttr::Hidden);
  expectRect(artBounds(*g), 0, 10, 10, 0, "hidden excluded");
  BoundsOptions all;
  all.includeHidden = true;
  expectRect(artBounds(*g, Matrix{}, all), 0, 200, 200, 0, "hidden included");
  // The hidden art itself still has bounds when asked directly.
  expectRect(artBounds(*hidden), 100, 200, 200, 100, "hidden art itself");
}

TEST_F(BoundsOfKinds, ClipGroupIsClippedByItsClippingPaths) {
  Art* g = doc.newArt(ArtKind::Group, PaintOrder::AboveAll, nullptr);
  g->setClipped(true);
  Art* clip = rectPath(g, 0, 0, 50, 50);
  clip->pathStyle().clipping = true;
  rectPath(g, 25, 25, 100, 100);
  expectRect(artBounds(*g), 25, 50, 50, 25, "clip group");
  g->setClipped(false);
  expectRect(artBounds(*g), 0, 100, 100, 0, "no longer clipped");
}

TEST_F(BoundsOfKinds, CompoundPathUnitesItsPaths) {
  Art* cp = doc.newArt(ArtKind::CompoundPath, PaintOrder::AboveAll, nullptr);
  rectPath(cp, 0, 0, 10, 10);
  rectPath(cp, 20, -5, 30, 5);
  expectRect(artBounds(*cp), 0, 10, 30, -5, "compound");
}

TEST_F(BoundsOfKinds, RasterCoversItsTransformedPixels) {
  Art* r = doc.newArt(ArtKind::Raster, PaintOrder::AboveAll, nullptr);
  RasterRecord rec;
  rec.bounds = IntRect{0, 0, 300, 150};
  rec.byteWidth = 900;
  rec.colorSpace = 1;
  rec.bitsPerPixel = 24;
  r->raster()->setRecord(rec);
  // 300 ppi: scale 72/300, top-left corner at (10, 100).
  r->raster()->matrix = Matrix::translation(10, 100) * Matrix::scaling(72.0 / 300, 72.0 / 300);
  expectRect(artBounds(*r), 10, 100, 10 + 72, 100 - 36, "raster");
  const Point firstPixel = r->raster()->pixelToDocument(0, 0);
  EXPECT_DOUBLE_EQ(firstPixel.x, 10);
  EXPECT_DOUBLE_EQ(firstPixel.y, 100);
}

TEST_F(BoundsOfKinds, PlacedArtCoversItsTransformedRectangle) {
  Art* p = doc.newArt(ArtKind::Placed, PaintOrder::AboveAll, nullptr);
  p->placed()->bounds = Rect{0, 50, 100, 0};
  p->placed()->matrix = Matrix::translation(10, 10) * Matrix::rotation(M_PI / 2);
  // Rotated a quarter turn: x' = -y, y' = x.
  expectRect(artBounds(*p), -40, 110, 10, 10, "placed");
}

TEST_F(BoundsOfKinds, TextEstimateFollowsSizeAndLength) {
  Art* t = doc.newArt(ArtKind::TextFrame, PaintOrder::AboveAll, nullptr);
  t->text()->text = "Hello";
  t->text()->fontSize = 20;
  t->text()->matrix = Matrix::translation(5, 150);
  expectRect(artBounds(*t), 5, 166, 60, 146, "start anchor");
  t->text()->anchor = TextAnchor::Middle;
  expectRect(artBounds(*t), 5 - 27.5, 166, 5 + 27.5, 146, "middle anchor");
  t->text()->text.clear();
  EXPECT_TRUE(artBounds(*t).isEmpty());
}

TEST_F(BoundsOfKinds, MeshSymbolAndPluginGroup) {
  Art* m = doc.newArt(ArtKind::Mesh, PaintOrder::AboveAll, nullptr);
  m->mesh()->rows = 2;
  m->mesh()->columns = 3;
  m->mesh()->vertices = {{0, 0}, {5, -2}, {10, 0}, {0, 10}, {5, 12}, {10, 10}};
  expectRect(artBounds(*m), 0, 12, 10, -2, "mesh");
  EXPECT_EQ(m->mesh()->outline().size(), 6u);

  Symbol* s = doc.newSymbol("s");
  rectPath(s->definition(), 0, 0, 10, 20);
  Art* inst = doc.newArt(ArtKind::SymbolInstance, PaintOrder::AboveAll, nullptr);
  inst->symbolInstance()->symbol = s;
  inst->symbolInstance()->matrix = Matrix::translation(100, 0) * Matrix::scaling(2, 2);
  expectRect(artBounds(*inst), 100, 40, 120, 0, "symbol instance");
  EXPECT_EQ(inst->layer(), doc.currentLayer());
  EXPECT_EQ(s->definition()->layer(), nullptr);

  Art* pg = doc.newArt(ArtKind::PluginGroup, PaintOrder::AboveAll, nullptr);
  rectPath(pg->pluginGroup()->editArt, 0, 0, 1000, 1000);
  rectPath(pg->pluginGroup()->resultArt, 1, 2, 3, 4);
  expectRect(artBounds(*pg), 1, 4, 3, 2, "plug-in group is its result");
}

TEST_F(BoundsOfKinds, StrokeWideningIsOptional) {
  Art* p = rectPath(nullptr, 0, 0, 10, 10);
  p->pathStyle().strokePaint = true;
  p->pathStyle().stroke = Paint::gray(1);
  p->pathStyle().strokeWidth = 4;
  expectRect(artBounds(*p), 0, 10, 10, 0, "geometric");
  BoundsOptions o;
  o.includeStroke = true;
  expectRect(artBounds(*p, Matrix{}, o), -2, 12, 12, -2, "with stroke");
}

TEST(Geometry, MatrixProductAppliesRightOperandFirst) {
  const Matrix m = Matrix::translation(10, 0) * Matrix::scaling(2, 3);
  const Point p = m.apply({1, 1});
  EXPECT_DOUBLE_EQ(p.x, 12);
  EXPECT_DOUBLE_EQ(p.y, 3);
  const Point back = m.inverted().apply(p);
  EXPECT_NEAR(back.x, 1, 1e-12);
  EXPECT_NEAR(back.y, 1, 1e-12);
  EXPECT_FALSE(Matrix::scaling(0, 1).isInvertible());
}

TEST(Geometry, EmptyRectanglesUniteAndIntersect) {
  const Rect a{0, 10, 10, 0};
  EXPECT_EQ(Rect::none().united(a), a);
  EXPECT_EQ(a.united(Rect::none()), a);
  EXPECT_TRUE(a.intersected(Rect{20, 30, 30, 20}).isEmpty());
  EXPECT_EQ(a.intersected(Rect{5, 20, 20, 5}), (Rect{5, 10, 10, 5}));
}

}  // namespace
}  // namespace refhost
