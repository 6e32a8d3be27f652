// The art suite: links of the tree, paint orders, bounds of every kind, attributes, bad handles.
#include <cmath>
#include <functional>

#include "SuiteTestSupport.h"

using namespace suitetest;

namespace {

class ArtSuiteTest : public SuiteTest {};

}  // namespace

TEST_F(ArtSuiteTest, ParentsSiblingsAndFirstChildren) {
  Art* bottom = rect(0, 0, 1, 1);
  Art* g = group();
  Art* top = rect(0, 0, 1, 1);
  Art* inner1 = rect(0, 0, 1, 1, PaintOrder::InsideOnBottom, g);
  Art* inner2 = rect(0, 0, 1, 1, PaintOrder::InsideOnBottom, g);
  Art* layerGroup = layer->group();
  struct Case {
    const char* name;
    Art* art;
    Art* parent;
    Art* sibling;
    Art* child;
  };
  const Case cases[] = {
      {"layer group", layerGroup, nullptr, nullptr, top},
      {"topmost", top, layerGroup, g, nullptr},
      {"group", g, layerGroup, bottom, inner1},
      {"bottommost", bottom, layerGroup, nullptr, nullptr},
      {"first in group", inner1, g, inner2, nullptr},
      {"last in group", inner2, g, nullptr, nullptr},
  };
  for (const Case& c : cases) {
    DWArtHandle parent = h(c.art), sibling = h(c.art), child = h(c.art);
    ASSERT_EQ(art().GetArtParent(h(c.art), &parent), kDWNoErr) << c.name;
    ASSERT_EQ(art().GetArtSibling(h(c.art), &sibling), kDWNoErr) << c.name;
    ASSERT_EQ(art().GetArtFirstChild(h(c.art), &child), kDWNoErr) << c.name;
    EXPECT_EQ(parent, h(c.parent)) << c.name;
    EXPECT_EQ(sibling, h(c.sibling)) << c.name;
    EXPECT_EQ(child, h(c.child)) << c.name;
  }
  DWArtHandle first = nullptr;
  ASSERT_EQ(art().GetFirstArtOfLayer(h(layer), &first), kDWNoErr);
  EXPECT_EQ(first, h(top));
  DWArtHandle groupArt = nullptr;
  ASSERT_EQ(art().GetLayerGroupArt(h(layer), &groupArt), kDWNoErr);
  EXPECT_EQ(groupArt, h(layerGroup));
}

// Each paint order, for new art and for moved art, checked through the model's own links.
TEST_F(ArtSuiteTest, PaintOrdersPlaceNewAndMovedArt) {
  Art* below = group();  // where moved art starts
  Art* prep = group();
  rect(0, 0, 1, 1, PaintOrder::InsideOnTop, prep);
  rect(0, 0, 1, 1, PaintOrder::InsideOnTop, prep);
  rect(0, 0, 1, 1);
  Art* layerGroup = layer->group();
  struct Case {
    const char* name;
    int16_t order;
    std::function<bool(const Art*)> placed;
  };
  const Case cases[] = {
      {"above", kDWPlaceAbove, [&](const Art* a) { return a->parent() == layerGroup && a->nextSibling() == prep; }},
      {"below", kDWPlaceBelow, [&](const Art* a) { return a->parent() == layerGroup && a->previousSibling() == prep; }},
      {"inside on top", kDWPlaceInsideOnTop, [&](const Art* a) { return prep->firstChild() == a; }},
      {"inside at the bottom", kDWPlaceInsideOnBottom, [&](const Art* a) { return prep->lastChild() == a; }},
      {"above everything", kDWPlaceAboveAll, [&](const Art* a) { return layerGroup->firstChild() == a; }},
      {"below everything", kDWPlaceBelowAll, [&](const Art* a) { return layerGroup->lastChild() == a; }},
  };
  for (const Case& c : cases) {
    const DWArtHandle prepHandle = c.order >= kDWPlaceAboveAll ? nullptr : h(prep);
    DWArtHandle created = nullptr;
    ASSERT_EQ(art().NewArt(kDWPathArt, c.order, prepHandle, &created), kDWNoErr) << c.name;
    EXPECT_TRUE(c.placed(doc.liveArt(created))) << "new art " << c.name;
    Art* moved = rect(0, 0, 1, 1, PaintOrder::InsideOnBottom, below);
    ASSERT_EQ(art().ReorderArt(h(moved), c.order, prepHandle), kDWNoErr) << c.name;
    EXPECT_TRUE(c.placed(moved)) << "moved art " << c.name;
  }
}

TEST_F(ArtSuiteTest, BoundsOfEveryKind) {
  Art* path = rect(10, 20, 50, 60);

  Art* stroked = rect(10, 20, 50, 60);
  stroked->pathStyle().strokePaint = true;
  stroked->pathStyle().stroke = Paint::gray(1);
  stroked->pathStyle().strokeWidth = 4;

  // A circle of radius 20 around (100, 100): its extremes are its anchors.
  const double k = 20 * 0.5522847498;
  Art* circle = doc.newArt(ArtKind::Path, PaintOrder::AboveAll, nullptr);
  circle->path()->segments = {
      PathSegment{{120, 100}, {120, 100 - k}, {120, 100 + k}, false}, PathSegment{{100, 120}, {100 + k, 120}, {100 - k, 120}, false},
      PathSegment{{80, 100}, {80, 100 + k}, {80, 100 - k}, false}, PathSegment{{100, 80}, {100 - k, 80}, {100 + k, 80}, false}};
  circle->path()->closed = true;

  Art* compound = doc.newArt(ArtKind::CompoundPath, PaintOrder::AboveAll, nullptr);
  rect(0, 0, 10, 10, PaintOrder::InsideOnTop, compound);
  rect(30, 5, 40, 40, PaintOrder::InsideOnTop, compound);

  Art* withHidden = group();
  rect(0, 0, 10, 10, PaintOrder::InsideOnTop, withHidden);
  rect(-50, -50, 100, 100, PaintOrder::InsideOnTop, withHidden)->setAttributes(ArtAttr::Hidden, ArtAttr::Hidden);

  Art* clip = group();
  clip->setClipped(true);
  rect(0, 0, 100, 100, PaintOrder::InsideOnTop, clip);
  rect(20, 30, 60, 70, PaintOrder::InsideOnTop, clip)->pathStyle().clipping = true;

  Art* raster = doc.newArt(ArtKind::Raster, PaintOrder::AboveAll, nullptr);
  RasterRecord record;
  record.bounds = IntRect{0, 0, 40, 20};
  record.byteWidth = 120;
  record.colorSpace = 1;
  record.bitsPerPixel = 24;
  raster->raster()->setRecord(record);
  raster->raster()->matrix = Matrix::translation(200, 300) * Matrix::scaling(0.5, 0.5);

  Art* placed = doc.newArt(ArtKind::Placed, PaintOrder::AboveAll, nullptr);
  placed->placed()->bounds = Rect{0, 10, 10, 0};
  placed->placed()->matrix = Matrix::translation(5, 5);

  Art* mesh = doc.newArt(ArtKind::Mesh, PaintOrder::AboveAll, nullptr);
  mesh->mesh()->rows = 2;
  mesh->mesh()->columns = 2;
  mesh->mesh()->vertices = {{0, 0}, {10, 0}, {0, 12}, {10, 12}};
  mesh->mesh()->patchColors = {Paint::gray(1)};

  Symbol* symbol = doc.newSymbol("s");
  rect(0, 0, 10, 10, PaintOrder::InsideOnTop, symbol->definition());
  Art* instance = doc.newArt(ArtKind::SymbolInstance, PaintOrder::AboveAll, nullptr);
  instance->symbolInstance()->symbol = symbol;
  instance->symbolInstance()->matrix = Matrix::translation(50, 50);

  Art* plugin = doc.newArt(ArtKind::PluginGroup, PaintOrder::AboveAll, nullptr);
  rect(1, 1, 2, 3, PaintOrder::InsideOnTop, plugin->pluginGroup()->resultArt);

  struct Case {
    const char* name;
    Art* art;
    Rect expected;  // left, top, right, bottom
  };
  const Case cases[] = {
      {"path", path, {10, 60, 50, 20}},
      {"stroked path widens by half the width", stroked, {8, 62, 52, 18}},
      {"curves", circle, {80, 120, 120, 80}},
      {"compound path", compound, {0, 40, 40, 0}},
      {"group without its hidden member", withHidden, {0, 10, 10, 0}},
      {"clip group", clip, {20, 70, 60, 30}},
      {"raster: 40 x 20 pixels at 2 per point", raster, {200, 300, 220, 290}},
      {"placed", placed, {5, 15, 15, 5}},
      {"mesh", mesh, {0, 12, 10, 0}},
      {"symbol instance", instance, {50, 60, 60, 50}},
      {"plug-in group's result", plugin, {1, 3, 2, 1}},
  };
  for (const Case& c : cases) {
    DWRealRect b{};
    ASSERT_EQ(art().GetArtBounds(h(c.art), &b), kDWNoErr) << c.name;
    EXPECT_NEAR(b.left, c.expected.left, 1e-9) << c.name;
    EXPECT_NEAR(b.top, c.expected.top, 1e-9) << c.name;
    EXPECT_NEAR(b.right, c.expected.right, 1e-9) << c.name;
    EXPECT_NEAR(b.bottom, c.expected.bottom, 1e-9) << c.name;
  }
}

// Attributes live in the low half of the word, user flags in the high half.
TEST_F(ArtSuiteTest, AttributesUserFlagsAndValuePair) {
  Art* a = rect(0, 0, 1, 1);
  Art* hidden = rect(0, 0, 1, 1);
  hidden->setAttributes(ArtAttr::Hidden, ArtAttr::Hidden);
  uint32_t word = 0;
  ASSERT_EQ(art().GetArtUserAttr(h(hidden), kDWArtHidden, &word), kDWNoErr);
  EXPECT_EQ(word, uint32_t(kDWArtHidden));
  ASSERT_EQ(art().GetArtUserAttr(h(a), kDWArtHidden, &word), kDWNoErr);
  EXPECT_EQ(word, 0u);

  ASSERT_EQ(art().SetArtUserAttr(h(a), 0x10000 | kDWArtSelected, 0x10000 | kDWArtSelected), kDWNoErr);
  EXPECT_EQ(a->userFlags(), 0x10000u);
  EXPECT_EQ(a->attributes(), uint32_t(ArtAttr::Selected | ArtAttr::FullySelected)) << "selected as a whole";
  ASSERT_EQ(art().GetArtUserAttr(h(a), 0xFFFFFFFFu, &word), kDWNoErr);
  EXPECT_EQ(word, 0x10000u | kDWArtSelected | kDWArtFullySelected);
  ASSERT_EQ(art().SetArtUserAttr(h(a), kDWArtSelected | kDWArtFullySelected, kDWArtSelected), kDWNoErr);
  EXPECT_EQ(a->attributes(), uint32_t(ArtAttr::Selected)) << "partly selected when the mask says so";
  ASSERT_EQ(art().SetArtUserAttr(h(a), kDWArtSelected, 0), kDWNoErr);
  EXPECT_EQ(a->attributes(), 0u);

  ASSERT_EQ(art().SetArtValuePair(h(a), 6.5, -3), kDWNoErr);
  double real = 0;
  int32_t integer = 0;
  ASSERT_EQ(art().GetArtValuePair(h(a), &real, &integer), kDWNoErr);
  EXPECT_EQ(real, 6.5);
  EXPECT_EQ(integer, -3);
}

TEST_F(ArtSuiteTest, RefusesBadHandlesKindsAndPlacements) {
  Art* g = group();
  Art* inner = group(PaintOrder::InsideOnTop, g);
  Art* gone = rect(0, 0, 1, 1);
  doc.disposeArt(gone);
  int dummy = 0;
  DWArtHandle out = nullptr;
  int16_t kind = 0;
  struct Case {
    const char* name;
    std::function<DWErr()> call;
  };
  const Case cases[] = {
      {"deleted art", [&] { return art().GetArtType(h(gone), &kind); }},
      {"a pointer that is no art", [&] { return art().GetArtParent(reinterpret_cast<DWArtHandle>(&dummy), &out); }},
      {"unknown kind", [&] { return art().NewArt(5, kDWPlaceAboveAll, nullptr, &out); }},
      {"unknown paint order", [&] { return art().NewArt(kDWPathArt, 7, h(g), &out); }},
      {"above without prep art", [&] { return art().NewArt(kDWPathArt, kDWPlaceAbove, nullptr, &out); }},
      {"inside a path", [&] { return art().NewArt(kDWPathArt, kDWPlaceInsideOnTop, h(gone), &out); }},
      {"a layer's group", [&] { return art().DisposeArt(h(layer->group())); }},
      {"into its own contents", [&] { return art().ReorderArt(h(g), kDWPlaceInsideOnTop, h(inner)); }},
  };
  for (const Case& c : cases) EXPECT_EQ(c.call(), kHostBadParameter) << c.name;
  EXPECT_EQ(g->firstChild(), inner) << "a refused move leaves the tree alone";
}

// The Nth-call control reaches these functions like every other host call.
TEST_F(ArtSuiteTest, NthCallFailureControl) {
  Art* a = rect(0, 0, 1, 1);
  constexpr DWErr injected = hostCode("TEST");
  host.controls().failCall(2, injected, kDWArtSuite, "GetArtParent");
  DWArtHandle parent = nullptr;
  EXPECT_EQ(art().GetArtParent(h(a), &parent), kDWNoErr);
  EXPECT_EQ(art().GetArtParent(h(a), &parent), injected);
  EXPECT_TRUE(host.controls().failureDelivered());
  EXPECT_EQ(art().GetArtParent(h(a), &parent), kDWNoErr);
}
