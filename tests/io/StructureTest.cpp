#include "SvgTestSupport.h"

#include "refhost/document/Bounds.h"
#include "refhost/io/Base64.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <unistd.h>

namespace refhost {
namespace {

using testing::docPoint;
using testing::expectPoint;
using testing::findArt;
using testing::importSvg;
using testing::svgDoc;

std::vector<std::string> layerNames(const Document& doc) {
  std::vector<std::string> out;
  for (Layer* l : doc.layers()) out.push_back(l->name());
  return out;
}

TEST(Structure, TopLevelGroupsBecomeLayersTopFirst) {
  auto r = importSvg(svgDoc("<g id='back'><rect id='a' width='1' height='1'/></g>"
                            "<g inkscape:label='Middle' xmlns:inkscape='http://www.inkscape.org/namespaces/inkscape' "
                            "style='display:none'/>"
                            "<g><rect id='b' width='1' height='1'/><rect id='c' width='1' height='1'/></g>"));
  EXPECT_EQ(layerNames(*r.document), (std::vector<std::string>{"Layer 3", "Middle", "back"}));
  EXPECT_FALSE(r.document->findLayer("Middle")->isShown());
  EXPECT_EQ(r.document->currentLayer(), r.document->firstLayer());
  // Later elements are on top: the first child.
  const Art* top = r.document->firstLayer()->group();
  EXPECT_EQ(top->firstChild()->name(), "c");
  EXPECT_EQ(top->lastChild()->name(), "b");
  EXPECT_EQ(findArt(*r.document, "a")->layer(), r.document->findLayer("back"));
}

TEST(Structure, LooseElementsGoIntoDefaultLayersKeepingPaintOrder) {
  auto r = importSvg(svgDoc("<rect id='a' width='1' height='1'/><rect id='b' width='1' height='1'/>"
                            "<g id='mid'><rect width='1' height='1'/></g><circle id='c' r='1'/>"));
  EXPECT_EQ(layerNames(*r.document), (std::vector<std::string>{"Layer 3", "mid", "Layer 1"}));
  EXPECT_EQ(r.document->findLayer("Layer 1")->group()->childCount(), 2u);
  EXPECT_EQ(findArt(*r.document, "c")->layer(), r.document->firstLayer());
}

TEST(Structure, EmptySvgHasOneLayer) {
  auto r = importSvg("<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10'/>");
  EXPECT_EQ(r.document->layerCount(), 1u);
  EXPECT_TRUE(r.warnings.empty());
}

TEST(Structure, UseOfASymbolIsASymbolInstance) {
  auto r = importSvg(svgDoc("<defs><symbol id='s' viewBox='0 0 10 10'><rect id='inner' width='10' height='10'/></symbol></defs>"
                            "<use id='u1' href='#s' x='20' y='30' width='20' height='20' fill='red'/>"
                            "<use id='u2' xlink:href='#s' x='50' y='0' width='10' height='10' fill='red'/>"
                            "<use id='u3' href='#s' width='10' height='10' fill='blue'/>"));
  const Art* u1 = findArt(*r.document, "u1");
  ASSERT_EQ(u1->kind(), ArtKind::SymbolInstance);
  const Symbol* s = u1->symbolInstance()->symbol;
  ASSERT_NE(s, nullptr);
  EXPECT_EQ(findArt(*r.document, "u2")->symbolInstance()->symbol, s) << "same inherited style, same definition";
  EXPECT_NE(findArt(*r.document, "u3")->symbolInstance()->symbol, s) << "another fill needs its own definition";
  EXPECT_EQ(r.document->symbols().size(), 2u);
  // The instance places the symbol's 10-unit square on the use's 20 px viewport at (20, 30).
  const Rect b = artBounds(*u1);
  expectPoint({b.left, b.top}, docPoint(20, 30), "top left");
  expectPoint({b.right, b.bottom}, docPoint(40, 50), "bottom right");
  EXPECT_EQ(s->definition()->firstChild()->pathStyle().fill, Paint::rgb(1, 0, 0)) << "the content inherits from the use";
}

TEST(Structure, UseOfAPlainElementIsExpanded) {
  auto r = importSvg(svgDoc("<defs><rect id='box' width='2' height='2'/></defs><use id='u' href='#box' x='5' y='6'/>"));
  const Art* u = findArt(*r.document, "u");
  ASSERT_EQ(u->kind(), ArtKind::Group);
  ASSERT_EQ(u->childCount(), 1u);
  expectPoint(u->firstChild()->path()->segments[0].p, docPoint(5, 6));
}

TEST(Structure, ClipPathMakesAClipGroup) {
  auto r = importSvg(svgDoc("<clipPath id='c'><circle id='clipper' cx='10' cy='10' r='5'/></clipPath>"
                            "<clipPath id='bb' clipPathUnits='objectBoundingBox' clip-rule='evenodd'><rect width='0.5' height='1'/></clipPath>"
                            "<rect id='r' width='40' height='40' clip-path='url(#c)'/>"
                            "<rect id='s' x='10' y='0' width='20' height='10' clip-path='url(#bb)'/>"));
  const Art* rect = findArt(*r.document, "r");
  const Art* group = rect->parent();
  EXPECT_TRUE(group->isClipped());
  const Art* clipper = findArt(*r.document, "clipper");
  ASSERT_NE(clipper, nullptr);
  EXPECT_EQ(clipper->parent(), group);
  EXPECT_TRUE(clipper->pathStyle().clipping);
  EXPECT_FALSE(clipper->pathStyle().fillPaint);
  const Rect b = artBounds(*group);
  EXPECT_NEAR(b.width(), 7.5, 1e-9) << "bounds are the clip's";
  // Bounding-box units: the left half of rect s.
  const Art* s = findArt(*r.document, "s");
  const Art* clip = s->parent()->firstChild();
  ASSERT_TRUE(clip->pathStyle().clipping);
  EXPECT_EQ(clip->pathStyle().fillRule, FillRule::EvenOdd);
  const Rect cb = artBounds(*clip);
  EXPECT_NEAR(cb.left, 7.5, 1e-9);
  EXPECT_NEAR(cb.right, 15, 1e-9);
}

TEST(Structure, EmbeddedPngBecomesPlacedArt) {
  const std::vector<std::uint8_t> rgba = {255, 0, 0, 255, 0, 0, 255, 128};
  const std::string uri = "data:image/png;base64," + io::base64Encode(testing::makePng(2, 1, rgba));
  auto r = importSvg(svgDoc("<image id='i' x='10' y='20' width='40' height='20' preserveAspectRatio='none' href='" + uri + "'/>"));
  const Art* a = findArt(*r.document, "i");
  ASSERT_EQ(a->kind(), ArtKind::Placed);
  const PlacedData& p = *a->placed();
  ASSERT_NE(p.image, nullptr);
  EXPECT_EQ(p.image->width, 2);
  EXPECT_EQ(p.image->rgba, rgba);
  const Rect b = artBounds(*a);
  expectPoint({b.left, b.top}, docPoint(10, 20), "top left");
  expectPoint({b.right, b.bottom}, docPoint(50, 40), "bottom right");
  // The image's top row sits at the top: natural top-left corner maps to SVG (10, 20).
  expectPoint(p.matrix.apply(Point{p.bounds.left, p.bounds.top}), docPoint(10, 20), "image top left");
}

TEST(Structure, ImageFileIsResolvedRelativeToTheSvg) {
  const std::string dir = ::testing::TempDir() + "/img-" + std::to_string(::getpid());
  ASSERT_EQ(std::system(("mkdir -p '" + dir + "/sub'").c_str()), 0);
  const auto png = testing::makePng(1, 1, {1, 2, 3, 4});
  std::ofstream(dir + "/sub/p.png", std::ios::binary).write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(png.size()));
  std::ofstream(dir + "/a.svg") << svgDoc("<image id='i' href='sub/p.png' width='10' height='10'/><image id='j' href='missing.png' width='5' height='5'/>");
  auto r = io::importSvgFile(dir + "/a.svg");
  const PlacedData& p = *findArt(*r.document, "i")->placed();
  ASSERT_NE(p.image, nullptr);
  EXPECT_EQ(p.fileReference, dir + "/sub/p.png");
  EXPECT_EQ(p.image->rgba, (std::vector<std::uint8_t>{1, 2, 3, 4}));
  EXPECT_EQ(findArt(*r.document, "j")->placed()->image, nullptr);
  ASSERT_EQ(r.warnings.size(), 1u);
  EXPECT_NE(r.warnings[0].find("missing.png"), std::string::npos);
  std::system(("rm -rf '" + dir + "'").c_str());
}

TEST(Structure, TextBecomesATextFrame) {
  auto r = importSvg(svgDoc("<text id='t' x='10' y='50' font-size='20' text-anchor='middle' fill='blue'>  Hello\n"
                            "   <tspan>big</tspan> world </text>"));
  const Art* a = findArt(*r.document, "t");
  ASSERT_EQ(a->kind(), ArtKind::TextFrame);
  const TextData& t = *a->text();
  EXPECT_EQ(t.text, "Hello big world");
  EXPECT_NEAR(t.fontSize, 15, 1e-9);
  EXPECT_EQ(t.anchor, TextAnchor::Middle);
  expectPoint(t.position(), docPoint(10, 50));
  EXPECT_NEAR(t.matrix.a, 1, 1e-12) << "text space is points, y up";
  EXPECT_NEAR(t.matrix.d, 1, 1e-12);
  EXPECT_EQ(a->pathStyle().fill, Paint::rgb(0, 0, 1));
}

TEST(Structure, TextPositionTakesTheFirstOfAListWithUnits) {
  auto r = importSvg(svgDoc("<text id='t' x='0.5in 40 50' y='2em,9'>abc</text>"));
  expectPoint(findArt(*r.document, "t")->text()->position(), docPoint(48, 32));
}

TEST(Structure, UnsupportedContentIsWarnedOncePerKind) {
  auto r = importSvg(svgDoc("<defs><mask id='m'/><mask id='m2'/><pattern id='p'/><filter id='f'/><marker id='k'/></defs>"
                            "<rect width='1' height='1' mask='url(#m)' filter='url(#f)'/>"
                            "<rect width='1' height='1' fill='url(#p)' marker-end='url(#k)'/>"
                            "<path d='M0 0 L1 1' style='marker-start:url(#k)'/>"));
  std::vector<std::string> kinds;
  for (const std::string& w : r.warnings) {
    for (const char* k : {"mask", "pattern", "filter", "marker"}) {
      if (w.find(std::string(": ") + k + ":") != std::string::npos) kinds.push_back(k);
    }
    EXPECT_EQ(w.rfind("test.svg:", 0), 0u) << w;
  }
  std::sort(kinds.begin(), kinds.end());
  EXPECT_EQ(kinds, (std::vector<std::string>{"filter", "marker", "mask", "pattern"})) << "one warning per kind";
  EXPECT_EQ(r.warnings.size(), 4u);
}

TEST(Structure, SwitchTakesTheFirstChildWhoseConditionsHold) {
  auto r = importSvg(svgDoc("<switch><foreignObject requiredExtensions='http://example.org/x'/>"
                            "<g requiredExtensions='http://example.org/y'><rect id='no1' width='1' height='1'/></g>"
                            "<g systemLanguage='fr'><rect id='no2' width='1' height='1'/></g>"
                            "<g><rect id='yes' width='1' height='1'/></g><rect id='no3' width='1' height='1'/></switch>"));
  EXPECT_NE(findArt(*r.document, "yes"), nullptr);
  for (const char* n : {"no1", "no2", "no3"}) EXPECT_EQ(findArt(*r.document, n), nullptr) << n;
  EXPECT_TRUE(r.warnings.empty());
}

TEST(Structure, ForeignVocabulariesAreSkippedQuietly) {
  auto r = importSvg(svgDoc("<metadata><author xmlns='http://example.org/meta'>me</author></metadata>"
                            "<g><div xmlns='http://www.w3.org/1999/xhtml'><p>text</p></div><rect id='r' width='1' height='1'/></g>"
                            "<sodipodi:namedview xmlns:sodipodi='http://sodipodi.sourceforge.net/DTD/sodipodi-0.dtd'/>"
                            "<blink/>"));
  EXPECT_NE(findArt(*r.document, "r"), nullptr);
  ASSERT_EQ(r.warnings.size(), 1u) << "only the unknown SVG element";
  EXPECT_NE(r.warnings[0].find("<blink>"), std::string::npos);
}

TEST(Structure, NestedSvgIsAViewport) {
  auto r = importSvg(svgDoc("<svg x='10' y='10' width='20' height='20' viewBox='0 0 2 2'><rect id='r' width='1' height='1'/></svg>"));
  const Rect b = artBounds(*findArt(*r.document, "r"));
  EXPECT_NEAR(b.left, 7.5, 1e-9);
  EXPECT_NEAR(b.width(), 7.5, 1e-9);
}

// The clip group two levels above rect "r" (r, then the viewport's group, then the clip group).
TEST(Structure, InnerViewportsHideWhatLiesOutside) {
  struct Case {
    const char* name;
    const char* body;
    bool clipped;
    Rect clip;  // document points, y up, in a 100 px page
  } const cases[] = {
      {"an inner svg clips to x, y, width, height", "<svg x='10' y='20' width='20' height='40'><rect id='r' width='100' height='100'/></svg>",
       true, Rect{7.5, 60, 22.5, 30}},
      {"visible overflow does not clip", "<svg width='20' height='20' overflow='visible'><rect id='r' width='100' height='100'/></svg>",
       false, {}},
      {"overflow from a style sheet", "<style>svg svg { overflow: auto }</style><svg width='20' height='20'><rect id='r' width='100' height='100'/></svg>",
       false, {}},
      {"a use gives the svg its size", "<defs><svg id='s'><rect id='r' width='200' height='200'/></svg></defs>"
       "<use xlink:href='#s' x='4' width='50' height='40'/>", true, Rect{3, 75, 40.5, 45}},
      {"a use without size keeps the svg's", "<defs><svg id='s' width='20' height='8'><rect id='r' width='200' height='200'/></svg></defs>"
       "<use xlink:href='#s'/>", true, Rect{0, 75, 15, 69}},
  };
  for (const Case& c : cases) {
    auto r = importSvg(svgDoc(c.body));
    const Art* rect = findArt(*r.document, "r");
    ASSERT_NE(rect, nullptr) << c.name;
    const Art* group = rect->parent()->parent();
    ASSERT_NE(group, nullptr) << c.name;
    EXPECT_EQ(group->isClipped(), c.clipped) << c.name;
    if (!c.clipped) continue;
    const Rect b = artBounds(*group);
    EXPECT_NEAR(b.left, c.clip.left, 1e-9) << c.name;
    EXPECT_NEAR(b.top, c.clip.top, 1e-9) << c.name;
    EXPECT_NEAR(b.right, c.clip.right, 1e-9) << c.name;
    EXPECT_NEAR(b.bottom, c.clip.bottom, 1e-9) << c.name;
  }
}

TEST(Structure, OpacityAndClipOnTheRootApplyToThePage) {
  auto r = importSvg(svgDoc("<clipPath id='c'><rect width='10' height='10'/></clipPath>"
                            "<g id='layer'><rect id='a' width='50' height='50'/></g><rect id='b' width='50' height='50'/>",
                            100, 100, "opacity='0.5' clip-path='url(#c)'"));
  ASSERT_EQ(r.document->layerCount(), 1u) << "top-level groups stay inside the page group";
  const Art* a = findArt(*r.document, "a");
  const Art* b = findArt(*r.document, "b");
  const Art* page = b->parent();
  EXPECT_EQ(a->parent()->parent(), page);
  EXPECT_EQ(page->pathStyle().opacity, 0.5);
  ASSERT_TRUE(page->parent()->isClipped());
  EXPECT_NEAR(artBounds(*page->parent()).width(), 7.5, 1e-9);
}

TEST(Structure, AClipPathClippedItselfIntersectsAndCyclesEnd) {
  struct Case {
    const char* name;
    const char* clips;
    int nestedClipGroups;
  } const cases[] = {
      {"clipped clip path", "<clipPath id='a' clip-path='url(#b)'><rect width='10' height='10'/></clipPath>"
       "<clipPath id='b'><rect width='5' height='20'/></clipPath>", 2},
      {"a cycle of two", "<clipPath id='a' clip-path='url(#b)'><rect width='10' height='10'/></clipPath>"
       "<clipPath id='b' clip-path='url(#a)'><rect width='5' height='20'/></clipPath>", 2},
      {"clipped by itself", "<clipPath id='a' clip-path='url(#a)'><rect width='10' height='10'/></clipPath>", 1},
      {"a child's clip-path is warned and left out", "<clipPath id='a'><rect width='10' height='10' clip-path='url(#b)'/></clipPath>"
       "<clipPath id='b'><rect width='5' height='20'/></clipPath>", 1},
  };
  for (const Case& c : cases) {
    auto r = importSvg(svgDoc(std::string(c.clips) + "<rect id='r' width='40' height='40' clip-path='url(#a)'/>"));
    int groups = 0;
    for (const Art* g = findArt(*r.document, "r")->parent(); g && g->isClipped(); g = g->parent()) ++groups;
    EXPECT_EQ(groups, c.nestedClipGroups) << c.name;
  }
  // A chain longer than the nesting limit is refused instead of exhausting the stack.
  std::string chain;
  for (int i = 0; i < 300; ++i) {
    chain += "<clipPath id='c" + std::to_string(i) + "' clip-path='url(#c" + std::to_string(i + 1) +
             ")'><rect width='10' height='10'/></clipPath>";
  }
  const std::string error =
      testing::ioErrorOf([&] { importSvg(svgDoc(chain + "<rect width='40' height='40' clip-path='url(#c0)'/>")); });
  EXPECT_NE(error.find("nested deeper than 256"), std::string::npos) << error;

  // The intersection: the outer group's bounds are the second clip's, the inner's the first's.
  auto r = importSvg(svgDoc(std::string(cases[0].clips) + "<rect id='r' width='40' height='40' clip-path='url(#a)'/>"));
  const Art* inner = findArt(*r.document, "r")->parent();
  EXPECT_NEAR(artBounds(*inner).height(), 7.5, 1e-9);
  EXPECT_NEAR(artBounds(*inner->parent()).width(), 3.75, 1e-9);
}

}  // namespace
}  // namespace refhost
