#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "commands/CommandMessage.h"
#include "commands/RasterizeSuite.h"
#include "fakes/CommandsTestSupport.h"
#include "shell/ErrorCodes.h"

namespace {

using fake::Art;
using fake::FakeArtHost;

class ClippingMask : public fake::CommandsTest {
 protected:
  // The raster a rasterization left on top of the layer.
  Art* makeRaster() { return art.add(layer, kDWRasterArt, "raster", {0, 100, 100, 0}); }

  DWErr mask(const std::vector<Art*>& objects, int16_t paintOrder = kDWPlaceAbove) {
    set = art.newSet(objects);
    result = nullptr;
    return dw::CreateClippingMask(set, paintOrder, h(raster), &result);
  }

  Art* raster = nullptr;
  DWArtSetHandle set = nullptr;
  DWArtHandle result = nullptr;
};

struct MaskCase {
  const char* name;
  std::function<std::vector<Art*>(FakeArtHost&, Art* layer)> build;
  std::string resultShape;
  size_t uniteCalls;
};

TEST_F(ClippingMask, ShapesBecomeTheClippingPathOfAGroupAroundTheRaster) {
  const MaskCase cases[] = {
      {"one rectangle is the clipping path directly",
       [](FakeArtHost& t, Art* l) { return std::vector<Art*>{t.rectangle(l, "r", 0, 10, 10, 0)}; },
       "group[clip[path*,raster]]", 0},
      {"two overlapping paths are united",
       [](FakeArtHost& t, Art* l) {
         return std::vector<Art*>{t.rectangle(l, "a", 0, 10, 10, 0), t.rectangle(l, "b", 5, 15, 15, 5)};
       },
       "group[clip[path*,raster]]", 1},
      {"two separate paths unite into a compound path",
       [](FakeArtHost& t, Art* l) {
         return std::vector<Art*>{t.rectangle(l, "a", 0, 10, 10, 0), t.rectangle(l, "b", 50, 60, 60, 50)};
       },
       "group[clip[compound[path*,path*],raster]]", 1},
      {"a group with one child passes the child",
       [](FakeArtHost& t, Art* l) {
         Art* g = t.add(l, kDWGroupArt, "g");
         t.rectangle(g, "only", 0, 10, 10, 0);
         return std::vector<Art*>{g};
       },
       "group[clip[path*,raster]]", 0},
      {"a group of two shapes is united by name",
       [](FakeArtHost& t, Art* l) {
         Art* g = t.add(l, kDWGroupArt, "g");
         t.rectangle(g, "a", 0, 10, 10, 0);
         t.rectangle(g, "b", 5, 15, 15, 5);
         return std::vector<Art*>{g};
       },
       "group[clip[compound[path*],raster]]", 1},
      {"a text-only selection gives an unclipped group",
       [](FakeArtHost& t, Art* l) { return std::vector<Art*>{t.add(l, kDWTextFrameArt, "text", {0, 5, 5, 0})}; },
       "group[raster]", 0},
      {"a text frame and a path: the path clips, the text goes",
       [](FakeArtHost& t, Art* l) {
         return std::vector<Art*>{t.add(l, kDWTextFrameArt, "text", {0, 5, 5, 0}), t.rectangle(l, "r", 0, 10, 10, 0)};
       },
       "group[clip[path*,raster]]", 0},
      {"raster art joins no mask",
       [](FakeArtHost& t, Art* l) {
         return std::vector<Art*>{t.add(l, kDWRasterArt, "old raster", {0, 5, 5, 0}), t.rectangle(l, "r", 0, 10, 10, 0)};
       },
       "group[clip[path*,raster]]", 0},
      {"a group of text only is removed and deleted",
       [](FakeArtHost& t, Art* l) {
         Art* g = t.add(l, kDWGroupArt, "g");
         t.add(g, kDWTextFrameArt, "text", {0, 5, 5, 0});
         return std::vector<Art*>{g};
       },
       "group[raster]", 0},
      {"a compound path alone is united by name; the result stays in the shapes group, which becomes a compound",
       [](FakeArtHost& t, Art* l) {
         Art* c = t.add(l, kDWCompoundPathArt, "compound");
         t.rectangle(c, "a", 0, 10, 10, 0);
         t.rectangle(c, "b", 20, 30, 30, 20);
         return std::vector<Art*>{c};
       },
       "group[clip[compound[compound[path*,path*]],raster]]", 1},
  };
  for (const MaskCase& c : cases) {
    layer->children.clear();
    art.uniteCalls.clear();
    const std::vector<Art*> objects = c.build(art, layer);
    raster = makeRaster();
    ASSERT_EQ(mask(objects), kDWNoErr) << c.name;
    ASSERT_NE(result, nullptr) << c.name;
    EXPECT_EQ(fake::shape(a(result)), c.resultShape) << c.name;
    EXPECT_EQ(art.uniteCalls.size(), c.uniteCalls) << c.name;
    EXPECT_EQ(a(result)->parent, layer) << c.name;
    EXPECT_TRUE(a(result)->selected()) << c.name;
    // Everything selected was consumed: only the result is left in the layer.
    EXPECT_EQ(childNames(layer), std::vector<std::string>{a(result)->name}) << c.name;
  }
}

TEST_F(ClippingMask, TheUnitedShapeCoversBothPaths) {
  Art* first = art.rectangle(layer, "a", 0, 10, 10, 0);
  Art* second = art.rectangle(layer, "b", 5, 15, 15, 5);
  first->pathStyle.preUnion = 1;
  raster = makeRaster();
  int running = 0;
  const dw::CommandMessageScope command(&running);
  ASSERT_EQ(mask({first, second}), kDWNoErr);

  ASSERT_EQ(art.uniteCalls.size(), 1u);
  const fake::UniteCall& call = art.uniteCalls[0];
  EXPECT_EQ(call.message, &running) << "the running command's message goes to the Pathfinder";
  EXPECT_EQ(call.request.shapes, nullptr) << "several objects: the Pathfinder works on the selection";
  EXPECT_EQ(call.request.shapeCount, 0);
  EXPECT_EQ(call.shapes, std::vector<std::string>{"new2"}) << "only the shapes group is selected";
  EXPECT_EQ(call.request.precision, 10.0);
  EXPECT_EQ(call.request.ratio, 0.5);
  EXPECT_EQ(call.request.mode, 1);
  EXPECT_EQ(call.request.width1, 0.25);
  EXPECT_EQ(call.request.width2, 0.4);
  EXPECT_EQ(call.request.tolerance, 0.05);

  const Art* clip = a(result)->children.at(0);
  const Art* clipping = clip->children.at(0);
  EXPECT_TRUE(fake::sameRect(art.boundsOf(clipping), {0, 15, 15, 0})) << fake::describe(art.boundsOf(clipping));
  EXPECT_FALSE(clipping->pathStyle.preUnion) << "pre-union flags are cleared before the Pathfinder runs";
  EXPECT_FALSE(clipping->pathStyle.fillPaint);
  EXPECT_FALSE(clipping->pathStyle.strokePaint);
  ASSERT_NE(clipping->style, nullptr);
  EXPECT_EQ(clipping->style->name, "clip from none") << "the art style is rebuilt from the clipping style";
  EXPECT_FALSE(raster->selected());
  EXPECT_EQ(art.liveParsers, 0);
}

TEST_F(ClippingMask, OneObjectIsNamedToThePathfinderWithAZeroedMessageOutsideACommand) {
  Art* g = art.add(layer, kDWGroupArt, "g");
  art.rectangle(g, "a", 0, 10, 10, 0);
  art.rectangle(g, "b", 5, 15, 15, 5);
  raster = makeRaster();
  ASSERT_EQ(dw::currentCommandMessage(), nullptr);
  ASSERT_EQ(mask({g}), kDWNoErr);
  ASSERT_EQ(art.uniteCalls.size(), 1u);
  EXPECT_EQ(art.uniteCalls[0].request.shapeCount, 1);
  EXPECT_EQ(art.uniteCalls[0].shapes, std::vector<std::string>{"g"});
  EXPECT_NE(art.uniteCalls[0].message, nullptr);
}

TEST_F(ClippingMask, APathfinderGroupBecomesACompoundPath) {
  art.uniteGivesGroup = true;
  raster = makeRaster();
  ASSERT_EQ(mask({art.rectangle(layer, "a", 0, 10, 10, 0), art.rectangle(layer, "b", 5, 15, 15, 5)}), kDWNoErr);
  EXPECT_EQ(fake::shape(a(result)), "group[clip[compound[path*],raster]]");
}

TEST_F(ClippingMask, PlacedArtAndMeshesBecomeOutlinePaths) {
  Art* placed = art.add(layer, kDWPlacedArt, "placed");
  placed->placedBounds = {0, 10, 20, 0};
  placed->placedMatrix = {0, 1, -1, 0, 100, 50};  // a quarter turn, then moved
  raster = makeRaster();
  ASSERT_EQ(mask({placed}), kDWNoErr);
  EXPECT_EQ(fake::shape(a(result)), "group[clip[path*,raster]]");
  const Art* path = a(result)->children.at(0)->children.at(0);
  ASSERT_EQ(path->segments.size(), 4u);
  EXPECT_TRUE(path->closed);
  // The matrix with b and c negated: (h, v) -> (a h - c v + tx, -b h + d v + ty).
  const DWRealPoint corners[4] = {{0, 10}, {20, 10}, {20, 0}, {0, 0}};
  const DWRealMatrix& m = placed->placedMatrix;
  for (size_t k = 0; k < 4; ++k) {
    const DWRealPoint& p = corners[k];
    EXPECT_EQ(path->segments[k].p.h, m.a * p.h - m.c * p.v + m.tx) << "corner " << k;
    EXPECT_EQ(path->segments[k].p.v, -m.b * p.h + m.d * p.v + m.ty) << "corner " << k;
  }

  layer->children.clear();
  Art* mesh = art.add(layer, kDWMeshArt, "mesh", {0, 10, 20, 0});
  mesh->meshI = 3;
  mesh->meshJ = 2;
  raster = makeRaster();
  ASSERT_EQ(mask({mesh}), kDWNoErr);
  const Art* outline = a(result)->children.at(0)->children.at(0);
  const std::vector<DWRealPoint> anchors = {{0, 0}, {10, 0}, {20, 0}, {20, 10}, {10, 10}, {0, 10}};
  ASSERT_EQ(outline->segments.size(), anchors.size());
  for (size_t k = 0; k < anchors.size(); ++k) {
    EXPECT_EQ(outline->segments[k].p.h, anchors[k].h) << "anchor " << k;
    EXPECT_EQ(outline->segments[k].p.v, anchors[k].v) << "anchor " << k;
    // Controls come from the edges on either side: a third of the way along each.
    const DWRealPoint& next = anchors[(k + 1) % anchors.size()];
    const DWRealPoint& previous = anchors[(k + anchors.size() - 1) % anchors.size()];
    EXPECT_DOUBLE_EQ(outline->segments[k].out.h, anchors[k].h + (next.h - anchors[k].h) / 3) << "anchor " << k;
    EXPECT_DOUBLE_EQ(outline->segments[k].in.v, anchors[k].v + (previous.v - anchors[k].v) / 3) << "anchor " << k;
  }
  EXPECT_TRUE(outline->closed);
}

TEST_F(ClippingMask, PluginGroupsGiveTheirClosedOrPaintedResultShapes) {
  Art *result1 = nullptr, *edit = nullptr;
  Art* plugin = art.pluginGroup(layer, "plugin", result1, edit);
  art.rectangle(result1, "kept", 0, 10, 10, 0);
  Art* construction = art.add(result1, kDWPathArt, "construction line");
  construction->segments.resize(2);
  Art* inEdit = art.rectangle(edit, "edit shape", 0, 10, 10, 0);
  Art* other = art.rectangle(layer, "other", 5, 15, 15, 5);
  raster = makeRaster();

  ASSERT_EQ(mask({plugin, inEdit, other}), kDWNoErr);
  EXPECT_FALSE(plugin->alive);
  EXPECT_EQ(art.contents(set), std::vector<Art*>{other}) << "the plug-in group and its edit art left the set";
  // The copy of the result kept only the closed rectangle, which then stood alone and was united with the other.
  EXPECT_EQ(fake::shape(a(result)), "group[clip[path*,raster]]");
  EXPECT_TRUE(fake::sameRect(art.boundsOf(a(result)->children.at(0)->children.at(0)), {0, 15, 15, 0}));
}

TEST_F(ClippingMask, ObjectsWithoutParentOrInsideAnotherAreLeftAlone) {
  Art* g = art.add(layer, kDWGroupArt, "g");
  Art* a1 = art.rectangle(g, "a", 0, 10, 10, 0);
  art.rectangle(g, "b", 5, 15, 15, 5);
  layer->attributes |= kDWArtSelected;
  raster = makeRaster();
  ASSERT_EQ(mask({layer, g, a1}), kDWNoErr);
  EXPECT_FALSE(layer->selected()) << "a layer only loses its selection";
  EXPECT_EQ(art.uniteCalls.size(), 1u);
  EXPECT_EQ(fake::shape(a(result)), "group[clip[path*,raster]]");
}

TEST_F(ClippingMask, PaintOrders) {
  struct Case {
    const char* name;
    int16_t order;
    bool shapes;
    size_t resultIndex;  // where the result ends up in the layer
  } const cases[] = {
      {"above", kDWPlaceAbove, true, 1},
      {"inside on top is taken as above", kDWPlaceInsideOnTop, true, 1},
      {"below: the outer group takes the clip group's place", kDWPlaceBelow, true, 1},
      {"above everything", kDWPlaceAboveAll, true, 0},
      {"below everything", kDWPlaceBelowAll, true, 2},
      {"unclipped, above everything", kDWPlaceAboveAll, false, 0},
      {"unclipped, below everything", kDWPlaceBelowAll, false, 2},
  };
  for (const Case& c : cases) {
    layer->children.clear();
    art.add(layer, kDWPathArt, "top marker", {0, 1, 1, 0});
    Art* source = c.shapes ? art.rectangle(layer, "r", 0, 10, 10, 0) : art.add(layer, kDWTextFrameArt, "t", {0, 1, 1, 0});
    raster = makeRaster();
    art.add(layer, kDWPathArt, "bottom marker", {0, 1, 1, 0});
    ASSERT_EQ(mask({source}, c.order), kDWNoErr) << c.name;
    ASSERT_EQ(layer->children.size(), 3u) << c.name;
    EXPECT_EQ(layer->children[c.resultIndex], a(result)) << c.name;
  }
}

TEST_F(ClippingMask, FailuresDismantleTheMaskAndLeaveTheRaster) {
  struct Case {
    const char* name;
    const char* failing;
    DWErr injected;
    DWErr result;
  } const cases[] = {
      {"Pathfinder out of memory", "Unite", dw::OutOfMemoryError, dw::MaskMemoryError},
      {"out of memory elsewhere", "SetPathStyle", dw::OutOfMemoryError, dw::MaskMemoryError},
      {"other codes pass", "SetGroupClipped", fake::kInjected, fake::kInjected},
      {"shapes group not created", "NewArt#2", fake::kInjected, fake::kInjected},
      {"outer group not created", "NewArt#3", fake::kInjected, fake::kInjected},
      {"selecting the result", "SetArtUserAttr", fake::kInjected, fake::kInjected},
  };
  for (const Case& c : cases) {
    layer->children.clear();
    art.failures = {{c.failing, c.injected}};
    art.calls.clear();
    Art* first = art.rectangle(layer, "a", 0, 10, 10, 0);
    Art* second = art.rectangle(layer, "b", 5, 15, 15, 5);
    raster = makeRaster();
    result = h(raster);  // must stay untouched
    set = art.newSet({first, second});
    EXPECT_EQ(dw::CreateClippingMask(set, kDWPlaceAbove, h(raster), &result), c.result) << c.name;
    EXPECT_EQ(result, h(raster)) << c.name << ": no result is stored";
    EXPECT_EQ(raster->parent, layer) << c.name << ": the raster is left beside the dismantled mask";
    EXPECT_EQ(art.liveArt(kDWGroupArt), 0) << c.name << ": no mask group remains";
  }
}

TEST_F(ClippingMask, NullArgumentsAreBadParameters) {
  raster = makeRaster();
  EXPECT_EQ(dw::CreateClippingMask(nullptr, kDWPlaceAbove, h(raster), &result), dw::BadParameterError);
  EXPECT_EQ(dw::CreateClippingMask(art.newSet({}), kDWPlaceAbove, nullptr, &result), dw::BadParameterError);
}

}  // namespace
