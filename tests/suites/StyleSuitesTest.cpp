// Path styles, gradients, art styles with their owners, and the style parser.
#include <memory>

#include "SuiteTestSupport.h"
#include "refhost/render/HostHandles.h"

using namespace suitetest;

namespace {

class StyleSuitesTest : public SuiteTest {
 protected:
  const DWPathStyleSuite& styles() { return suite<DWPathStyleSuite>(kDWPathStyleSuite, kDWPathStyleSuiteVersion); }
  const DWArtStyleSuite& artStyles() { return suite<DWArtStyleSuite>(kDWArtStyleSuite, kDWArtStyleSuiteVersion); }
};

DWColor color(int16_t kind) {
  DWColor c{};
  c.kind = kind;
  return c;
}

bool sameColor(const DWColor& a, const DWColor& b) {
  if (a.kind != b.kind) return false;
  switch (a.kind) {
    case kDWGrayColor: return a.c.g.gray == b.c.g.gray;
    case kDWThreeColor: return a.c.rgb.red == b.c.rgb.red && a.c.rgb.green == b.c.rgb.green && a.c.rgb.blue == b.c.rgb.blue;
    case kDWFourColor:
      return a.c.f.cyan == b.c.f.cyan && a.c.f.magenta == b.c.f.magenta && a.c.f.yellow == b.c.f.yellow &&
             a.c.f.black == b.c.f.black;
    case kDWCustomColor: return a.c.c.color == b.c.c.color && a.c.c.tint == b.c.c.tint;
    default: return true;
  }
}

}  // namespace

TEST_F(StyleSuitesTest, PathStylesRoundTrip) {
  const CustomColorId spot = doc.newCustomColor(CustomColor{0, "Spot", CustomColor::Kind::Spot, {0, 1, 0, 0}, false, {}});
  struct Case {
    const char* name;
    DWColor fill, stroke;
  };
  DWColor gray = color(kDWGrayColor), rgb = color(kDWThreeColor), cmyk = color(kDWFourColor), custom = color(kDWCustomColor);
  gray.c.g.gray = 0.25;
  rgb.c.rgb = DWThreeColor{1, 0.5, 0};
  cmyk.c.f = DWFourColor{0.1, 0.2, 0.3, 0.4};
  custom.c.c = DWCustomColorRef{render::customColorHandle(spot), 0.3};
  const Case cases[] = {
      {"gray fill, no stroke", gray, color(kDWNoneColor)},
      {"RGB fill, CMYK stroke", rgb, cmyk},
      {"spot fill, gray stroke", custom, gray},
  };
  for (const Case& c : cases) {
    Art* path = rect(0, 0, 10, 10);
    DWPathStyle in{};
    in.fillPaint = 1;
    in.strokePaint = c.stroke.kind != kDWNoneColor;
    in.fill.color = c.fill;
    in.fill.opacity = 0.5;
    in.stroke.color = c.stroke;
    in.stroke.opacity = 1;
    in.stroke.width = 3;
    in.stroke.dashCount = 2;
    in.stroke.dashes[0] = 4;
    in.stroke.dashes[1] = 2;
    in.stroke.cap = kDWRoundCap;
    in.stroke.join = kDWBevelJoin;
    in.stroke.miterLimit = 10;
    in.evenodd = 1;
    in.preUnion = 1;
    ASSERT_EQ(styles().SetPathStyle(h(path), &in), kDWNoErr) << c.name;
    DWPathStyle out{};
    ASSERT_EQ(styles().GetPathStyle(h(path), &out), kDWNoErr) << c.name;
    EXPECT_TRUE(sameColor(out.fill.color, in.fill.color)) << c.name;
    EXPECT_TRUE(sameColor(out.stroke.color, in.stroke.color)) << c.name;
    EXPECT_EQ(out.fill.opacity, 0.5) << c.name;
    EXPECT_EQ(out.stroke.dashCount, 2) << c.name;
    EXPECT_EQ(out.stroke.dashes[1], 2) << c.name;
    EXPECT_EQ(out.stroke.cap, kDWRoundCap) << c.name;
    EXPECT_EQ(out.stroke.join, kDWBevelJoin) << c.name;
    EXPECT_EQ(path->pathStyle().fillRule, FillRule::EvenOdd) << c.name;
    EXPECT_TRUE(path->pathStyle().preUnion) << c.name;
    EXPECT_EQ(path->pathStyle().strokeWidth, 3) << c.name;
  }
}

TEST_F(StyleSuitesTest, RefusedStyles) {
  Art* path = rect(0, 0, 10, 10);
  DWPathStyle base{};
  ASSERT_EQ(styles().GetPathStyle(h(path), &base), kDWNoErr);
  struct Case {
    const char* name;
    void (*change)(DWPathStyle&);
    DWErr expected;
  };
  const Case cases[] = {
      {"pattern paint", [](DWPathStyle& s) { s.fill.color.kind = kDWPatternColor; }, kHostNotImplemented},
      {"unknown custom colour",
       [](DWPathStyle& s) {
         s.fill.color.kind = kDWCustomColor;
         s.fill.color.c.c.color = render::customColorHandle(77);
       },
       kHostBadParameter},
      {"too many dashes", [](DWPathStyle& s) { s.stroke.dashCount = kDWMaxDashes + 1; }, kHostBadParameter},
      {"opacity above 1", [](DWPathStyle& s) { s.fill.opacity = 1.5; }, kHostBadParameter},
  };
  for (const Case& c : cases) {
    DWPathStyle changed = base;
    c.change(changed);
    EXPECT_EQ(styles().SetPathStyle(h(path), &changed), c.expected) << c.name;
  }
  EXPECT_EQ(path->pathStyle().fill, Paint::gray(1.0)) << "refusals change nothing";
}

// The paths of a compound path share the compound path's style.
TEST_F(StyleSuitesTest, CompoundPathMembersShareOneStyle) {
  Art* compound = doc.newArt(ArtKind::CompoundPath, PaintOrder::AboveAll, nullptr);
  Art* first = rect(0, 0, 10, 10, PaintOrder::InsideOnTop, compound);
  Art* second = rect(2, 2, 8, 8, PaintOrder::InsideOnTop, compound);
  DWPathStyle style{};
  ASSERT_EQ(styles().GetPathStyle(h(first), &style), kDWNoErr);
  style.fillPaint = 0;
  style.clip = 1;
  ASSERT_EQ(styles().SetPathStyle(h(first), &style), kDWNoErr);
  EXPECT_TRUE(compound->pathStyle().clipping);
  EXPECT_FALSE(compound->pathStyle().fillPaint);
  DWPathStyle other{};
  ASSERT_EQ(styles().GetPathStyle(h(second), &other), kDWNoErr);
  EXPECT_EQ(other.clip, 1);
  EXPECT_EQ(second->pathStyle(), compound->pathStyle());
}

// A gradient laid out on the art's box reads with the box in its matrix; written back unchanged
// it stays the same gradient, and a new matrix places it in the document.
TEST_F(StyleSuitesTest, GradientsKeepTheirLayoutUntilMoved) {
  Art* path = rect(10, 20, 50, 60);
  auto gradient = std::make_shared<Gradient>();
  gradient->units = Gradient::Units::BoundingBox;
  gradient->stops = {GradientStop{0, Paint::gray(0), 1}, GradientStop{1, Paint::gray(1), 1}};
  path->pathStyle().fill = Paint::fromGradient(gradient);
  DWPathStyle style{};
  ASSERT_EQ(styles().GetPathStyle(h(path), &style), kDWNoErr);
  ASSERT_EQ(style.fill.color.kind, kDWGradientColor);
  const DWRealMatrix m = style.fill.color.c.grad.matrix;
  EXPECT_EQ(m.a, 40);   // width
  EXPECT_EQ(m.d, -40);  // height, downward from the top
  EXPECT_EQ(m.tx, 10);
  EXPECT_EQ(m.ty, 60);
  ASSERT_EQ(styles().SetPathStyle(h(path), &style), kDWNoErr);
  EXPECT_EQ(path->pathStyle().fill.gradient.get(), gradient.get());
  style.fill.color.c.grad.matrix.tx = 0;
  ASSERT_EQ(styles().SetPathStyle(h(path), &style), kDWNoErr);
  const Gradient& moved = *path->pathStyle().fill.gradient;
  EXPECT_EQ(moved.units, Gradient::Units::UserSpace);
  EXPECT_EQ(moved.transform.tx, 0);
  EXPECT_EQ(moved.transform.a, 40);
}

// A layer's appearance moved onto a group inside it stays the layer's: the group reports the
// layer's group as the style's owner.
TEST_F(StyleSuitesTest, StyleMovedInsideKeepsItsOwner) {
  auto appearance = std::make_shared<ArtStyle>();
  appearance->effects.push_back(LiveEffect{"Corvel Rasterize", Dictionary::create(), 1, 0});
  layer->group()->setArtStyle(appearance);
  Art* content = rect(0, 0, 1, 1);
  Art* g = group();
  DWArtStyleHandle style = nullptr;
  ASSERT_EQ(artStyles().GetArtStyle(h(layer->group()), &style), kDWNoErr);
  ASSERT_NE(style, nullptr);
  ASSERT_EQ(artStyles().SetArtStyle(h(g), style), kDWNoErr);
  ASSERT_EQ(artStyles().SetArtStyle(h(layer->group()), nullptr), kDWNoErr);
  DWArtHandle owner = nullptr;
  ASSERT_EQ(artStyles().GetStyleOwner(h(g), &owner), kDWNoErr);
  EXPECT_EQ(owner, h(layer->group()));
  DWBool own = 0;
  ASSERT_EQ(art().ArtHasOwnStyle(h(g), &own), kDWNoErr);
  EXPECT_EQ(own, 1);
  ASSERT_EQ(art().ArtHasOwnStyle(h(content), &own), kDWNoErr);
  EXPECT_EQ(own, 0);
  ASSERT_EQ(artStyles().GetArtStyle(h(layer->group()), &style), kDWNoErr);
  EXPECT_EQ(style, nullptr);
  ASSERT_EQ(artStyles().GetStyleOwner(h(content), &owner), kDWNoErr);
  EXPECT_EQ(owner, nullptr) << "no style, no owner";
}

// Rebuilding a style with another paint makes a new style and leaves the old one as it was.
TEST_F(StyleSuitesTest, ParserRebuildsWithAPaint) {
  const auto& parsers = suite<DWArtStyleParserSuite>(kDWArtStyleParserSuite, kDWArtStyleParserSuiteVersion);
  Art* path = rect(0, 0, 1, 1);
  auto original = std::make_shared<ArtStyle>();
  original->name = "kept";
  path->setArtStyle(original);
  DWPathStyle focus{};
  ASSERT_EQ(styles().GetPathStyle(h(path), &focus), kDWNoErr);
  focus.fillPaint = 0;
  focus.clip = 1;

  DWArtStyleHandle current = nullptr, rebuilt = nullptr;
  DWStyleParser parser = nullptr;
  ASSERT_EQ(artStyles().GetArtStyle(h(path), &current), kDWNoErr);
  ASSERT_EQ(parsers.NewParser(&parser), kDWNoErr);
  EXPECT_EQ(parsers.CreateNewStyle(parser, &rebuilt), kHostBadParameter) << "nothing parsed yet";
  ASSERT_EQ(parsers.ParseStyle(parser, current), kDWNoErr);
  ASSERT_EQ(parsers.SetFocusPathStyle(parser, &focus), kDWNoErr);
  ASSERT_EQ(parsers.CreateNewStyle(parser, &rebuilt), kDWNoErr);
  ASSERT_EQ(parsers.DisposeParser(parser), kDWNoErr);
  ASSERT_EQ(artStyles().SetArtStyle(h(path), rebuilt), kDWNoErr);

  const ArtStylePtr& now = path->artStyle();
  ASSERT_TRUE(now && now->hasPaint);
  EXPECT_EQ(now->name, "kept");
  EXPECT_TRUE(now->paint.clipping);
  EXPECT_FALSE(now->paint.fillPaint);
  EXPECT_FALSE(original->hasPaint);
}
