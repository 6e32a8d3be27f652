// The live effect as the host delivers it: the five messages, and art drawn through its effect.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/e2e_effect/EffectHost.h"

namespace e2e_effect {
namespace {

// Which parameter set the discrete fields came from.
enum class Side { Start, End };

TEST(LiveEffect, InterpolationBlendsResolutionAndPicksDiscreteFieldsBySide) {
  const Parameters start{0, 72, true, false, 10.0};
  const Parameters end{4, 300, false, true, 30.0};
  struct Case {
    const char* name;
    double t;
    int32_t dpi;  // trunc(start - (start - end) * (1 - t) + 0.5)
    Side side;
  } const cases[] = {
      {"a quarter of the way", 0.25, 243, Side::End},
      {"just below the middle", 0.49, 188, Side::End},
      {"the middle", 0.5, 186, Side::Start},
  };
  for (const Case& c : cases) {
    EffectHost h;
    const DictionaryPtr out = Dictionary::create();
    ASSERT_EQ(interpolateLiveEffectParameters(h.host, h.effect(), dictionary(start), dictionary(end), out, c.t), 0)
        << c.name;
    const Parameters& from = c.side == Side::Start ? start : end;
    EXPECT_EQ(out->getInteger("dpi."), c.dpi) << c.name;
    EXPECT_EQ(out->getInteger("colr"), from.colr) << c.name;
    EXPECT_EQ(out->getBoolean("alis"), from.alis) << c.name;
    EXPECT_EQ(out->getBoolean("mask"), from.mask) << c.name;
    EXPECT_DOUBLE_EQ(*out->getReal("padd"), start.padd - (start.padd - end.padd) * (1 - c.t)) << c.name;
  }
}

// The result's shape: "raster" or "group[raster]", the raster's colour family and alpha.
std::string describe(const Art* art) {
  if (!art) return "none";
  if (const RasterData* raster = art->raster()) {
    static const char* const kFamilies[] = {"gray", "rgb", "cmyk"};
    const int family = raster->record.colorSpace & 0x0F;
    return std::string("raster:") + (family <= 2 ? kFamilies[family] : "other") +
           ((raster->record.colorSpace & 0x10) ? "+alpha" : "");
  }
  std::string text = art->kind() == ArtKind::Group ? "group[" : "art[";
  for (const Art* child = art->firstChild(); child; child = child->nextSibling())
    text += (child == art->firstChild() ? "" : ",") + describe(child);
  return text + "]";
}

TEST(LiveEffect, GoLiveResultFollowsTheTypeAndTheDocument) {
  struct Case {
    const char* name;
    ColorMode mode;
    int32_t colr;
    bool emptyGroup;
    const char* result;
  } const cases[] = {
      {"a transparent result is wrapped in a group", ColorMode::Rgb, 4, false, "group[raster:rgb+alpha]"},
      {"an opaque result is the raster itself", ColorMode::Rgb, 0, false, "raster:rgb"},
      {"CMYK with alpha in a gray document is gray with alpha", ColorMode::Gray, 5, false, "group[raster:gray+alpha]"},
      {"an empty group comes back as it is", ColorMode::Rgb, 4, true, "group[]"},
  };
  for (const Case& c : cases) {
    EffectHost h(c.mode);
    Art* art = c.emptyGroup ? h.doc->newArt(ArtKind::Group, PaintOrder::AboveAll, nullptr) : h.rect(10, 10, 30, 20);
    Art* result = nullptr;
    ASSERT_EQ(goLive(h.host, h.effect(), dictionary({c.colr, 72, false, false, 0.0}), *art, &result), 0) << c.name;
    EXPECT_EQ(describe(result), c.result) << c.name;
    EXPECT_EQ(result == art, c.emptyGroup) << c.name;
  }
}

TEST(LiveEffect, ColorSpaceConversionHandlesGrayCmykAndRgbTargetsOnly) {
  struct Case {
    const char* name;
    int32_t code;
    int32_t codeAfter;
    int32_t colrAfter;
  } const cases[] = {
      {"code 1 converts RGB parameters to CMYK", kConvertToCmyk, kConversionHandled, 1},
      {"code 3 is not a target", 3, 3, 0},
  };
  for (const Case& c : cases) {
    EffectHost h;
    const DictionaryPtr parameters = dictionary({0, 72, false, false, 0.0});
    int32_t code = c.code;
    ASSERT_EQ(convertLiveEffectColorSpace(h.host, h.effect(), parameters, &code), 0) << c.name;
    EXPECT_EQ(code, c.codeAfter) << c.name;
    EXPECT_EQ(parameters->getInteger("colr"), c.colrAfter) << c.name;
  }
}

// A black 20 x 20 pt square whose effect is opaque RGB on white with 5 pt padding, rasterized on a
// transparent background at 72 ppi: where the padding lies, the effect's white shows.
TEST(LiveEffect, DrawnArtIsTheEffectsResultWhileTheDocumentKeepsTheVectorArt) {
  struct Case {
    const char* name;
    bool effect;
    int paddingAlpha;
  } const cases[] = {{"with the effect", true, 255}, {"without it", false, 0}};
  for (const Case& c : cases) {
    EffectHost h;
    Art* square = h.rect(10, 10, 30, 30);
    if (c.effect) h.attach(square, dictionary({0, 72, false, false, 5.0}));
    RasterizeSettings settings{};
    settings.type = kRasterTypeRgbTransparent;
    settings.resolution = 72.0;
    const Art* raster = h.rasterize(square, settings, Rect{0, 40, 40, 0});
    ASSERT_TRUE(raster) << c.name;
    const RasterData& pixels = *raster->raster();
    EXPECT_EQ(pixel(pixels, 20, 20, 0), 255) << c.name << ": inside the square";
    EXPECT_EQ(pixel(pixels, 20, 20, 1), 0) << c.name << ": the square is black";
    EXPECT_EQ(pixel(pixels, 7, 20, 0), c.paddingAlpha) << c.name << ": in the padding";
    EXPECT_EQ(pixel(pixels, 2, 20, 0), 0) << c.name << ": beyond the padding";
    EXPECT_TRUE(square->isAlive() && square->kind() == ArtKind::Path) << c.name;
    EXPECT_EQ(h.live(ArtKind::Raster).size(), 1u) << c.name << ": only the raster asked for";
    EXPECT_EQ(h.doc->layerCount(), 1u) << c.name;
    EXPECT_FALSE(h.doc->canUndo()) << c.name << ": drawing is no undo step";
  }
}

}  // namespace
}  // namespace e2e_effect
