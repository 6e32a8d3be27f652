// The clipping mask the menu command builds from the selected shapes, through the host's Pathfinder.
#include <gtest/gtest.h>

#include "refhost/document/Bounds.h"
#include "tests/e2e_command/CommandHost.h"

namespace e2e_command {
namespace {

// Even-odd test of a point against the straight edges of a path or of a compound path's paths.
bool inside(const Art& shape, Point p) {
  bool in = false;
  const auto crossings = [&](const PathData& path) {
    const size_t n = path.segments.size();
    for (size_t i = 0, j = n - 1; i < n; j = i++) {
      const Point a = path.segments[i].p, b = path.segments[j].p;
      if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (p.y - a.y) * (b.x - a.x) / (b.y - a.y)) in = !in;
    }
  };
  if (const PathData* path = shape.path()) crossings(*path);
  for (const Art* c = shape.firstChild(); c; c = c->nextSibling())
    if (c->path()) crossings(*c->path());
  return in;
}

TEST(ClippingMask, TheSelectedShapesBecomeTheMask) {
  struct Case {
    const char* name;
    // Makes the art, returns what to select and the art expected to clip (null: a new shape).
    std::function<std::vector<Art*>(CommandHost&, Art*& clip)> arrange;
    std::vector<Point> in, out;  // points the mask must cover, and must not
  };
  const Case cases[] = {
      {"one rectangle is the clipping path itself",
       [](CommandHost& h, Art*& clip) {
         clip = h.rect(10, 10, 50, 40);
         return std::vector<Art*>{clip};
       },
       {{20, 20}}, {{60, 20}}},
      {"two overlapping rectangles are united",
       [](CommandHost& h, Art*& clip) {
         clip = nullptr;
         return std::vector<Art*>{h.rect(10, 10, 50, 40), h.rect(30, 20, 80, 60)};
       },
       {{20, 15}, {40, 30}, {70, 50}}, {{60, 15}, {20, 50}}},
      {"a group of one passes its child",
       [](CommandHost& h, Art*& clip) {
         Art* group = h.group();
         clip = h.rect(10, 10, 50, 40, group);
         return std::vector<Art*>{group};
       },
       {{20, 20}}, {{60, 20}}},
  };
  for (const Case& c : cases) {
    CommandHost h;
    Art* expected = nullptr;
    const std::vector<Art*> sources = c.arrange(h, expected);
    h.select(sources);
    ASSERT_EQ(h.rasterize([](RasterizeSettings& s) { s.createClippingMask = 1; }), 0) << c.name;
    EXPECT_TRUE(h.host.ui().alerts().empty()) << c.name;

    const std::vector<Art*> rasters = h.live(ArtKind::Raster);
    ASSERT_EQ(rasters.size(), 1u) << c.name;
    Art* clipGroup = rasters[0]->parent();
    ASSERT_TRUE(clipGroup->isClipped()) << c.name;
    EXPECT_FALSE(clipGroup->parent()->isLayerGroup()) << c.name << ": the clip group sits in a group of its own";
    EXPECT_EQ(clipGroup->childCount(), 2u) << c.name;
    const Art* mask = clipGroup->firstChild();
    EXPECT_TRUE(mask->kind() == ArtKind::Path || mask->kind() == ArtKind::CompoundPath) << c.name;
    EXPECT_TRUE(mask->pathStyle().clipping) << c.name;
    if (expected) {
      EXPECT_EQ(mask, expected) << c.name;
    }
    for (const Point& p : c.in) EXPECT_TRUE(inside(*mask, p)) << c.name << " covers " << p.x << ", " << p.y;
    for (const Point& p : c.out) EXPECT_FALSE(inside(*mask, p)) << c.name << " leaves out " << p.x << ", " << p.y;
    for (Art* source : sources) {
      if (source != expected) {
        EXPECT_FALSE(source->isAlive()) << c.name;
      }
    }
  }
}

TEST(ClippingMask, TextAloneGivesAnUnclippedGroup) {
  CommandHost h;
  Art* text = h.text("Hi", 20, 20);
  h.select({text});
  ASSERT_EQ(h.rasterize([](RasterizeSettings& s) { s.createClippingMask = 1; }), 0);
  EXPECT_EQ(h.alerts(Alert::Kind::Warning).size(), 1u);
  EXPECT_FALSE(text->isAlive());
  const std::vector<Art*> rasters = h.live(ArtKind::Raster);
  ASSERT_EQ(rasters.size(), 1u);
  const Art* group = rasters[0]->parent();
  EXPECT_EQ(group->kind(), ArtKind::Group);
  EXPECT_FALSE(group->isLayerGroup());
  EXPECT_FALSE(group->isClipped());
  EXPECT_EQ(group->childCount(), 1u);
}

}  // namespace
}  // namespace e2e_command
