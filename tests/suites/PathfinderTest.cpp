// The Pathfinder's union: outlines, fill rules, holes, nested compound paths and where the result goes.
#include <functional>
#include <vector>

#include "SuiteTestSupport.h"

using namespace suitetest;

namespace {

// Winding number of p over the result's contours (corner anchors only, as the Pathfinder makes).
int winding(const Art& art, Point p) {
  if (const PathData* path = art.path()) {
    int w = 0;
    const auto& s = path->segments;
    for (size_t i = 0; i < s.size(); ++i) {
      const Point a = s[i].p, b = s[(i + 1) % s.size()].p;
      const double side = (b.x - a.x) * (p.y - a.y) - (p.x - a.x) * (b.y - a.y);
      if (a.y <= p.y && b.y > p.y && side > 0) ++w;
      if (a.y > p.y && b.y <= p.y && side < 0) --w;
    }
    return w;
  }
  int w = 0;
  for (const Art* c = art.firstChild(); c; c = c->nextSibling()) w += winding(*c, p);
  return w;
}

bool allCorners(const Art& art) {
  if (const PathData* path = art.path()) {
    for (const PathSegment& s : path->segments)
      if (!s.corner || s.in != s.p || s.out != s.p) return false;
    return path->closed;
  }
  for (const Art* c = art.firstChild(); c; c = c->nextSibling())
    if (!allCorners(*c)) return false;
  return true;
}

class PathfinderTest : public SuiteTest {
 protected:
  const DWPathfinderSuite& pathfinder() { return suite<DWPathfinderSuite>(kDWPathfinderSuite, kDWPathfinderSuiteVersion); }

  DWErr unite(std::vector<DWArtHandle> named) {
    DWPathfinderRequest request{};
    request.shapes = named.empty() ? nullptr : named.data();
    request.shapeCount = int32_t(named.size());
    MessageHeader message{};
    return pathfinder().Unite(&request, &message);
  }

  // Samples a grid across `area`, halfway between whole points so no sample lies on an edge.
  void expectCoverage(const Art& result, const Rect& area, const std::function<bool(Point)>& inside) {
    for (double y = area.bottom + 0.5; y < area.top; y += 5)
      for (double x = area.left + 0.5; x < area.right; x += 5)
        ASSERT_EQ(winding(result, Point{x, y}) != 0, inside(Point{x, y})) << "at " << x << ", " << y;
  }
};

bool in(const Rect& r, Point p) { return r.contains(p); }

}  // namespace

TEST_F(PathfinderTest, TwoOverlappingRectanglesBecomeOnePathInTheFirstOnesPlace) {
  Art* below = rect(-20, -20, -10, -10);
  const Rect a{0, 50, 100, 0}, b{50, 100, 150, 25};
  Art* second = rect(b.left, b.bottom, b.right, b.top);
  Art* first = rect(a.left, a.bottom, a.right, a.top);
  Art* above = rect(-20, -20, -10, -10);
  ASSERT_EQ(unite({h(first), h(second)}), kDWNoErr);
  EXPECT_FALSE(first->isAlive());
  EXPECT_FALSE(second->isAlive());
  Art* result = above->nextSibling();
  ASSERT_NE(result, nullptr);
  ASSERT_EQ(result->kind(), ArtKind::Path);
  EXPECT_EQ(result->nextSibling(), below);
  EXPECT_TRUE(allCorners(*result));
  EXPECT_EQ(result->path()->segments.size(), 8u) << "an L-shaped union of two rectangles has 8 corners";
  expectCoverage(*result, Rect{-10, 110, 160, -10}, [&](Point p) { return in(a, p) || in(b, p); });
}

// Each shape is filled by its own rule before the union.
TEST_F(PathfinderTest, FillRulesAndHoles) {
  struct Case {
    const char* name;
    FillRule rule;
    size_t contours;
  };
  const Case cases[] = {{"non-zero fills the inner square", FillRule::NonZero, 1},
                        {"even-odd leaves a hole", FillRule::EvenOdd, 2}};
  const Rect outer{0, 100, 100, 0}, inner{25, 75, 75, 25};
  for (const Case& c : cases) {
    Art* compound = doc.newArt(ArtKind::CompoundPath, PaintOrder::AboveAll, nullptr);
    compound->pathStyle().fillRule = c.rule;
    rect(outer.left, outer.bottom, outer.right, outer.top, PaintOrder::InsideOnTop, compound);
    rect(inner.left, inner.bottom, inner.right, inner.top, PaintOrder::InsideOnTop, compound);
    ASSERT_EQ(unite({h(compound)}), kDWNoErr) << c.name;
    Art* result = layer->group()->firstChild();
    ASSERT_EQ(result->kind(), c.contours == 1 ? ArtKind::Path : ArtKind::CompoundPath) << c.name;
    const size_t contours = result->kind() == ArtKind::Path ? 1 : result->childCount();
    EXPECT_EQ(contours, c.contours) << c.name;
    expectCoverage(*result, Rect{-10, 110, 110, -10},
                   [&](Point p) { return in(outer, p) && (c.rule == FillRule::NonZero || !in(inner, p)); });
    doc.disposeArt(result);
  }
}

// A compound result wrapped into another compound path, as the mask does with a single named
// shape, unites again to the same outline.
TEST_F(PathfinderTest, AcceptsCompoundPathsNestedInCompoundPaths) {
  const Rect outer{0, 100, 100, 0}, inner{25, 75, 75, 25};
  Art* donut = doc.newArt(ArtKind::CompoundPath, PaintOrder::AboveAll, nullptr);
  donut->pathStyle().fillRule = FillRule::EvenOdd;
  rect(outer.left, outer.bottom, outer.right, outer.top, PaintOrder::InsideOnTop, donut);
  rect(inner.left, inner.bottom, inner.right, inner.top, PaintOrder::InsideOnTop, donut);
  ASSERT_EQ(unite({h(donut)}), kDWNoErr);
  Art* united = layer->group()->firstChild();
  Art* wrapper = doc.newArt(ArtKind::CompoundPath, PaintOrder::Above, united);
  doc.moveArt(united, PaintOrder::InsideOnBottom, wrapper);
  ASSERT_EQ(unite({h(wrapper)}), kDWNoErr);
  Art* again = layer->group()->firstChild();
  ASSERT_EQ(again->kind(), ArtKind::CompoundPath);
  expectCoverage(*again, Rect{-10, 110, 110, -10}, [&](Point p) { return in(outer, p) && !in(inner, p); });
}

// Without named shapes the selected ones are united, and the result stays in the group that held
// them: the mask's clip group with the shapes group on top and the raster below.
TEST_F(PathfinderTest, SelectedShapesUniteInsideTheirGroup) {
  Art* clip = group();
  Art* raster = doc.newArt(ArtKind::Raster, PaintOrder::InsideOnTop, clip);
  Art* shapes = group(PaintOrder::InsideOnTop, clip);
  const Rect a{0, 10, 10, 0}, b{5, 15, 15, 5};
  rect(a.left, a.bottom, a.right, a.top, PaintOrder::InsideOnBottom, shapes);
  rect(b.left, b.bottom, b.right, b.top, PaintOrder::InsideOnBottom, shapes);
  Art* unselected = rect(100, 100, 110, 110);
  shapes->setAttributes(ArtAttr::Selected, ArtAttr::Selected);
  for (Art* c = shapes->firstChild(); c; c = c->nextSibling()) c->setAttributes(ArtAttr::Selected, ArtAttr::Selected);

  ASSERT_EQ(unite({}), kDWNoErr);
  EXPECT_FALSE(shapes->isAlive());
  EXPECT_TRUE(unselected->isAlive());
  Art* result = clip->firstChild();
  ASSERT_EQ(result->kind(), ArtKind::Path);
  EXPECT_EQ(result->nextSibling(), raster);
  expectCoverage(*result, Rect{-5, 20, 20, -5}, [&](Point p) { return in(a, p) || in(b, p); });

  doc.deselectAll();
  EXPECT_EQ(unite({}), kHostNotFound) << "nothing selected";
  DWArtHandle notAShape[] = {h(raster)};
  DWPathfinderRequest request{};
  request.shapes = notAShape;
  request.shapeCount = 1;
  EXPECT_EQ(pathfinder().Unite(&request, nullptr), kHostWrongType);
}
