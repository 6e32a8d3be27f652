#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/Accelerator.h"
#include "engine/Background.h"
#include "engine/ColorSpace.h"
#include "engine/ColorUsage.h"
#include "engine/RasterTypeChoice.h"
#include "engine/RasterTypes.h"
#include "settings/RasterizeSettings.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"
#include "tests/engine/FakeHost.h"

namespace dw {
namespace {

using fake::ColorUse;
using fake::FakeHost;
using fake::spotColor;

constexpr uint32_t kAllowBoth = RasterizeOptions::AllowSpotRaster | RasterizeOptions::AllowNChannelRaster;

ColorUse spotUse(uintptr_t n) { return ColorUse{kDWUsesSpot, {0, 0, 0, 0}, spotColor(n)}; }
ColorUse fullProcessUse() { return ColorUse{kDWUsesFullProcess, {1, 0, 0, 0}, nullptr}; }
ColorUse inks(double c, double m, double y, double k) { return ColorUse{kDWUsesProcessInks, {c, m, y, k}, nullptr}; }

TEST(RasterTypes, PropertiesOfEveryType) {
  struct Row {
    int32_t type, channels;
    bool alpha;
    int32_t bits, family, code, variant;
  };
  const Row rows[] = {{0, 3, false, 24, 1, 0x01, 4},  {1, 4, false, 32, 2, 0x02, 5},  {2, 1, false, 8, 0, 0x00, 6},
                      {3, 1, false, 1, 0, 0x00, 7},   {4, 4, true, 32, 1, 0x11, 4},   {5, 5, true, 40, 2, 0x12, 5},
                      {6, 2, true, 16, 0, 0x10, 6},   {7, 1, false, 1, 0, 0x00, 7},   {8, 1, false, 8, 4, 0x04, 9},
                      {9, 2, true, 16, 4, 0x14, 9},   {10, 0, false, 0, 5, 0x05, 11}, {11, 0, true, 0, 5, 0x15, 11},
                      {12, 0, false, 0, 0xFF, 0xFF, 12}, {-1, 0, false, 0, 0xFF, 0xFF, -1}};
  for (const Row& r : rows) {
    const RasterTypeInfo info = rasterTypeInfo(r.type);
    const std::string name = "type " + std::to_string(r.type);
    EXPECT_EQ(info.channels, r.channels) << name;
    EXPECT_EQ(info.alpha, r.alpha) << name;
    EXPECT_EQ(info.bitsPerPixel, r.bits) << name;
    EXPECT_EQ(info.familyCode, r.family) << name;
    EXPECT_EQ(info.colorSpaceCode, r.code) << name;
    if (r.type >= 0 && r.type <= 11) {
      EXPECT_EQ(info.transparentVariant, r.variant) << name;
    }
  }
  EXPECT_EQ(rasterBitsPerPixel(10, 7), 56);
  EXPECT_EQ(rasterBitsPerPixel(11, 32), 256);
  EXPECT_EQ(rowStride(1, 33), 8) << "ceil(33 / 8) = 5, rounded up to 8";
  EXPECT_EQ(rowStride(24, 2000), 6000);
  EXPECT_EQ(rowStride(24, 3), 12) << "9 bytes rounded up to 12";
}

TEST(ColorUsage, SurveyRelaysEveryKindAndSkipsGuidesAndHiddenArt) {
  FakeHost host;
  DWArtHandle a = host.addArt();
  host.art(a).colors = {ColorUse{kDWUsesGray, {0.5, 0, 0, 0}, nullptr}, inks(0, 0.2, 0, 0), spotUse(3), spotUse(1),
                        ColorUse{kDWUsesRaster, {1, 0, 0, 0}, nullptr}, spotUse(3), ColorUse{7, {1, 1, 1, 1}, nullptr}};
  DWArtHandle guide = host.addArt();
  host.art(guide).guide = true;
  host.art(guide).colors = {fullProcessUse(), spotUse(9)};
  DWArtHandle hidden = host.addArt(kDWGroupArt);
  host.art(hidden).userAttr = kDWArtHidden;
  host.art(hidden).colors = {fullProcessUse(), spotUse(8)};
  DWArtHandle zeros = host.addArt();
  host.art(zeros).colors = {ColorUse{kDWUsesFullProcess, {0, 1, 1, 1}, nullptr}, inks(0, 0, 0, 1)};

  ColorUsage usage;
  surveyColorUsage(host.addArtSet({a, guide, hidden, zeros}), usage);
  EXPECT_TRUE(usage.kind1Seen);
  EXPECT_FALSE(usage.fullProcess) << "a kind-2 use counts only with a non-zero first value";
  EXPECT_TRUE(usage.rasterFlag);
  EXPECT_EQ(usage.processMask, 0x2u | 0x8u);
  ASSERT_EQ(usage.spotCount, 2);
  EXPECT_EQ(std::vector<DWCustomColorHandle>(usage.spotColors.begin(), usage.spotColors.end()),
            (std::vector<DWCustomColorHandle>{spotColor(1), spotColor(3)}))
      << "ordered by handle value, duplicates once";
}

TEST(ColorUsage, SurveyStopsQuietlyAtTheFirstFailingCall) {
  FakeHost host;
  DWArtHandle first = host.addArt(), second = host.addArt();
  host.art(first).colors = {spotUse(1)};
  host.art(second).colors = {spotUse(2)};
  host.failCall("VisitColors", 2, fourCharError("FAIL"));
  ColorUsage usage;
  surveyColorUsage(host.addArtSet({first, second}), usage);
  EXPECT_EQ(usage.spotCount, 1);
}

TEST(ColorUsage, ProcessChannelCount) {
  struct Case {
    bool full;
    uint32_t mask;
    int32_t family;
    int32_t expected;
  };
  const Case cases[] = {
      {true, 0xF, kDWCMYKFamily, 4}, {true, 0x7, kDWCMYKFamily, 3}, {false, 0xF, kDWCMYKFamily, 4},
      {true, 0x1, kDWRGBFamily, 3},  {true, 0x0, kDWRGBFamily, 0},  {true, 0x4, kDWGrayFamily, 1},
      {true, 0x5, kDWSpotFamily, 0}, {false, 0x5, kDWRGBFamily, 2}, {false, 0x0, kDWCMYKFamily, 0},
  };
  for (const Case& c : cases) {
    ColorUsage usage;
    usage.fullProcess = c.full;
    usage.processMask = c.mask;
    EXPECT_EQ(processChannelCount(usage, c.family), c.expected)
        << "full " << c.full << " mask " << c.mask << " family " << c.family;
  }
}

struct ChoiceCase {
  const char* name;
  int32_t type;
  uint32_t options;
  int32_t preserve;
  std::vector<ColorUse> uses;
  int32_t expectedType;
  bool expectSpot;
  bool surveyed;
};

TEST(ChooseRasterType, Cases) {
  std::vector<ColorUse> oneSpot = {spotUse(5)};
  std::vector<ColorUse> oneSpotFull = {spotUse(5), fullProcessUse(), inks(1, 1, 1, 1)};
  std::vector<ColorUse> twoSpots = {spotUse(5), spotUse(6)};
  const ChoiceCase cases[] = {
      {"Rgb without preserve: no survey", 0, kAllowBoth, 0, oneSpot, 0, false, false},
      {"Grayscale is never changed", 2, kAllowBoth, 1, oneSpot, 2, false, false},
      {"no allow bits: no survey", 1, 0, 1, oneSpot, 1, false, false},
      {"Cmyk, one spot only: Spot", 1, RasterizeOptions::AllowSpotRaster, 1, oneSpot, 8, true, true},
      {"RgbTransparent, one spot: SpotTransparent", 4, kAllowBoth, 1, oneSpot, 9, true, true},
      {"one spot plus full process: NChannel", 1, kAllowBoth, 1, oneSpotFull, 10, false, true},
      {"one spot plus full process, spot only allowed: stays", 1, RasterizeOptions::AllowSpotRaster, 1, oneSpotFull,
       1, false, true},
      {"two spots, CmykTransparent: NChannelTransparent", 5, kAllowBoth, 1, twoSpots, 11, false, true},
      {"two spots, spot only allowed: stays", 0, RasterizeOptions::AllowSpotRaster, 1, twoSpots, 0, false, true},
      {"no spots: stays", 4, kAllowBoth, 1, {fullProcessUse()}, 4, false, true},
  };
  for (const ChoiceCase& c : cases) {
    FakeHost host;
    DWArtHandle art = host.addArt();
    host.art(art).colors = c.uses;
    ColorUsage usage;
    const RasterTypeChoice choice = chooseRasterType(c.type, c.options, c.preserve, host.addArtSet({art}), usage);
    EXPECT_EQ(choice.error, kDWNoErr) << c.name;
    EXPECT_EQ(choice.type, c.expectedType) << c.name;
    EXPECT_EQ(choice.spot, c.expectSpot ? spotColor(5) : nullptr) << c.name;
    EXPECT_EQ(host.countCalls("VisitColors") > 0, c.surveyed) << c.name;
    EXPECT_EQ(host.countCalls("QuestionAlert"), 0u) << c.name;
  }
}

// Four process components (as the art needs them) plus n spot colours.
std::vector<ColorUse> manySpots(int n) {
  std::vector<ColorUse> uses = {fullProcessUse(), inks(1, 1, 1, 1)};
  for (int i = 1; i <= n; ++i) uses.push_back(spotUse(uintptr_t(i)));
  return uses;
}

TEST(ChooseRasterType, SpotCountLimit) {
  struct Case {
    const char* name;
    int32_t type, spots, answer;
    DWErr error;
    int32_t expectedType;
    size_t questions;
  };
  const Case cases[] = {
      {"27 spots with full CMYK fit in one raster", 5, 27, 1, kDWNoErr, 11, 0},
      {"27 spots with full RGB: 30 channels fit", 0, 27, 1, kDWNoErr, 10, 0},
      {"28 spots, the user goes on: the requested type, spots as process", 5, 28, 1, kDWNoErr, 5, 1},
      {"28 spots, the user cancels", 5, 28, 0, UserCancelled, -1, 1},
  };
  for (const Case& c : cases) {
    FakeHost host;
    host.questionAnswer = c.answer;
    DWArtHandle art = host.addArt();
    host.art(art).colors = manySpots(c.spots);
    ColorUsage usage;
    const RasterTypeChoice choice = chooseRasterType(c.type, kAllowBoth, 1, host.addArtSet({art}), usage);
    EXPECT_EQ(choice.error, c.error) << c.name;
    if (c.expectedType >= 0) {
      EXPECT_EQ(choice.type, c.expectedType) << c.name;
    }
    ASSERT_EQ(host.questions.size(), c.questions) << c.name;
    if (c.questions) {
      EXPECT_EQ(host.questions[0],
                "Draftwell can support a maximum of 27 spot colors in a raster. The result of this rasterization "
                "exceeds this limit and will be converted to process.")
          << c.name;
    }
    if (choice.type == 11) {
      ColorSpace space = buildColorSpace(usage, choice.type, kDWCMYKFamily);
      ASSERT_TRUE(space) << c.name;
      EXPECT_EQ(colorSpaceChannelCount(space.get()), 32) << "4 process + 27 spots + alpha";
    }
  }
}

TEST(BuildColorSpace, ProcessAndSpotSpaces) {
  struct Case {
    int32_t type;
    int32_t family;
    int32_t channels;
  };
  const Case cases[] = {{0, kDWRGBFamily, 3},  {4, kDWRGBFamily, 4},  {1, kDWCMYKFamily, 4}, {5, kDWCMYKFamily, 5},
                        {2, kDWGrayFamily, 1}, {3, kDWGrayFamily, 1}, {7, kDWGrayFamily, 1}, {6, kDWGrayFamily, 2}};
  for (const Case& c : cases) {
    FakeHost host;
    ColorUsage usage;
    {
      ColorSpace space = buildColorSpace(usage, c.type, 0);
      ASSERT_TRUE(space) << "type " << c.type;
      int32_t family = -1;
      gSuites.colorSpace->GetFamily(space.get(), &family);
      EXPECT_EQ(family, c.family) << "type " << c.type;
      EXPECT_EQ(colorSpaceChannelCount(space.get()), c.channels) << "type " << c.type;
    }
    EXPECT_EQ(host.liveSpaces, 0) << "released with its owner, type " << c.type;
  }
  FakeHost host;
  ColorUsage noSpot;
  EXPECT_FALSE(buildColorSpace(noSpot, 8, kDWCMYKFamily)) << "no single spot colour";
  EXPECT_FALSE(buildColorSpace(noSpot, 12, kDWCMYKFamily)) << "no such type";
  ColorUsage one;
  one.spotColors = {spotColor(4)};
  one.spotCount = 1;
  ColorSpace spot = buildColorSpace(one, 9, kDWRGBFamily);
  ASSERT_TRUE(spot);
  EXPECT_EQ(colorSpaceChannelCount(spot.get()), 2);
}

TEST(BuildColorSpace, ProcessPlusSpotsParts) {
  struct Case {
    const char* name;
    bool full;
    uint32_t mask;
    int32_t family;
    std::vector<int32_t> partFamilies;  // in list order
  };
  const Case cases[] = {
      {"components only", false, 0x5, kDWCMYKFamily, {kDWCMYKFamily, kDWCMYKFamily, kDWSpotFamily, kDWSpotFamily}},
      {"full CMYK", true, 0xF, kDWCMYKFamily, {kDWCMYKFamily, kDWSpotFamily, kDWSpotFamily}},
      {"full RGB", true, 0x1, kDWRGBFamily, {kDWRGBFamily, kDWSpotFamily, kDWSpotFamily}},
      {"full, gray family: nothing", true, 0x1, kDWGrayFamily, {kDWSpotFamily, kDWSpotFamily}},
  };
  for (const Case& c : cases) {
    FakeHost host;
    ColorUsage usage;
    usage.fullProcess = c.full;
    usage.processMask = c.mask;
    usage.spotColors = {spotColor(2), spotColor(1)};
    usage.spotCount = 2;
    {
      ColorSpace space = buildColorSpace(usage, 10, c.family);
      ASSERT_TRUE(space) << c.name;
      std::vector<int32_t> families;
      for (int32_t i = 0;; ++i) {
        DWColorSpaceHandle part = nullptr;
        if (gSuites.colorSpace->GetNthPart(space.get(), i, &part)) break;
        int32_t family = -1;
        gSuites.colorSpace->GetFamily(part, &family);
        families.push_back(family);
      }
      EXPECT_EQ(families, c.partFamilies) << c.name;
      EXPECT_EQ(host.liveLists, 0) << c.name;
    }
    EXPECT_EQ(host.liveSpaces, 0) << c.name;
  }
}

TEST(SetUpRasterColor, SingleSpotNChannelAndRasterFlag) {
  FakeHost host;
  ColorUsage usage;
  usage.rasterFlag = true;
  DWArtHandle spotRaster = host.addArt(kDWRasterArt);
  ASSERT_EQ(setUpRasterColor(spotRaster, 8, spotColor(3), nullptr, usage), kDWNoErr);
  const DWPathStyle& style = host.art(spotRaster).style;
  EXPECT_TRUE(style.fillPaint);
  EXPECT_EQ(style.fill.color.kind, kDWCustomColor);
  EXPECT_EQ(style.fill.color.c.c.color, spotColor(3));
  EXPECT_EQ(style.fill.color.c.c.tint, 0.0);
  EXPECT_EQ(host.art(spotRaster).usageFlag, 1);
  EXPECT_EQ(host.countCalls("SetColorSpace"), 0u);

  DWArtHandle nRaster = host.addArt(kDWRasterArt);
  DWColorSpaceHandle token = reinterpret_cast<DWColorSpaceHandle>(&host);
  usage.rasterFlag = false;
  ASSERT_EQ(setUpRasterColor(nRaster, 11, nullptr, token, usage), kDWNoErr);
  EXPECT_EQ(host.art(nRaster).rasterSpace, token);
  EXPECT_EQ(host.art(nRaster).usageFlag, 0);

  host.failNext("SetPathStyle", fourCharError("FAIL"));
  EXPECT_EQ(setUpRasterColor(spotRaster, 9, spotColor(3), nullptr, usage), fourCharError("FAIL"));
}

struct BackgroundCase {
  int32_t type;
  bool black;
  std::vector<uint8_t> bytes;
};

TEST(BackgroundPixel, EveryFixedType) {
  const BackgroundCase cases[] = {
      {0, false, {0xFF, 0xFF, 0xFF}},       {0, true, {0, 0, 0}},
      {1, false, {0, 0, 0, 0}},             {1, true, {0, 0, 0, 0xFF}},
      {2, false, {0xFF}},                   {2, true, {0}},
      {3, false, {0xFF}},                   {3, true, {0}},
      {7, false, {0xFF}},                   {7, true, {0}},
      {4, false, {0, 0xFF, 0xFF, 0xFF}},    {4, true, {0, 0, 0, 0}},
      {5, false, {0, 0, 0, 0, 0}},          {5, true, {0, 0, 0, 0, 0xFF}},
      {6, false, {0, 0xFF}},                {6, true, {0, 0}},
      {8, false, {0}},                      {8, true, {0xFF}},
      {9, false, {0, 0}},                   {9, true, {0, 0xFF}},
  };
  FakeHost host;
  for (const BackgroundCase& c : cases) {
    const BackgroundPixel pixel = backgroundPixel(c.type, c.black, nullptr);
    EXPECT_EQ(std::vector<uint8_t>(pixel.bytes, pixel.bytes + pixel.size), c.bytes)
        << "type " << c.type << (c.black ? " black" : " white");
  }
  EXPECT_EQ(backgroundPixel(42, false, nullptr).size, 0);
}

TEST(BackgroundPixel, NChannelByFirstPart) {
  // Parts: a process part (gray, RGB or a CMYK component) followed by two spot channels.
  struct Case {
    const char* name;
    int32_t first;  // -1: spots only
    int32_t type;
    bool black;
    std::vector<uint8_t> bytes;
  };
  const Case cases[] = {
      {"gray first, white", kDWGrayFamily, 10, false, {0xFF, 0, 0}},
      {"gray first, black", kDWGrayFamily, 10, true, {0, 0xFF, 0xFF}},
      {"RGB first, white", kDWRGBFamily, 10, false, {0xFF, 0xFF, 0xFF, 0, 0}},
      {"RGB first, black", kDWRGBFamily, 10, true, {0, 0, 0, 0xFF, 0xFF}},
      {"CMYK component first, white", kDWCMYKFamily, 10, false, {0, 0, 0}},
      {"CMYK component first, black", kDWCMYKFamily, 10, true, {0xFF, 0xFF, 0xFF}},
      {"spots only, white", -1, 10, false, {0, 0}},
      {"gray first, transparent white", kDWGrayFamily, 11, false, {0, 0xFF, 0, 0}},
      {"gray first, transparent black", kDWGrayFamily, 11, true, {0, 0, 0xFF, 0xFF}},
      {"RGB first, transparent white", kDWRGBFamily, 11, false, {0, 0xFF, 0xFF, 0xFF, 0, 0}},
      {"RGB first, transparent black", kDWRGBFamily, 11, true, {0, 0, 0, 0, 0xFF, 0xFF}},
      {"spots only, transparent black", -1, 11, true, {0, 0xFF, 0xFF}},
  };
  for (const Case& c : cases) {
    FakeHost host;
    const DWColorSpaceSuite& cs = *gSuites.colorSpace;
    DWColorSpaceList list = nullptr;
    cs.NewColorSpaceList(&list);
    std::vector<DWColorSpaceHandle> parts;
    DWColorSpaceHandle part = nullptr;
    if (c.first == kDWCMYKFamily) {
      cs.NewProcessComponentColorSpace(0, &part);
      parts.push_back(part);
    } else if (c.first >= 0) {
      cs.NewProcessColorSpace(c.first, 0, &part);
      parts.push_back(part);
    }
    for (uintptr_t n : {1, 2}) {
      cs.NewSpotColorSpace(spotColor(n), 0, &part);
      parts.push_back(part);
    }
    for (DWColorSpaceHandle p : parts) cs.AddToList(list, p);
    DWColorSpaceHandle space = nullptr;
    cs.NewColorSpaceFromList(list, c.type == 11, &space);
    const BackgroundPixel pixel = backgroundPixel(c.type, c.black, space);
    EXPECT_EQ(std::vector<uint8_t>(pixel.bytes, pixel.bytes + pixel.size), c.bytes) << c.name;
  }
}

TEST(FillBackground, SameBytesWithAndWithoutTheAccelerator) {
  for (int32_t type : {0, 1, 2, 3, 4, 5, 6, 8, 9}) {
    for (bool accelerated : {false, true}) {
      FakeHost host;
      host.acceleratorAvailable = accelerated;
      host.acceleratorEnabled = accelerated;
      EXPECT_EQ(acceleratorEnabled(), accelerated);
      const int32_t width = 7, rows = 3;
      const int32_t bits = rasterBitsPerPixel(type, 0);
      const int32_t stride = int32_t(rowStride(bits, width)) + 4;
      std::vector<uint8_t> buffer(size_t(stride) * rows, 0x5A);
      fillBackground(type, true, nullptr, width, rows, stride, buffer.data());
      const BackgroundPixel pixel = backgroundPixel(type, true, nullptr);
      for (int32_t y = 0; y < rows; ++y) {
        const uint8_t* row = buffer.data() + y * stride;
        const int32_t filled = bits == 1 ? stride : width * pixel.size;
        for (int32_t i = 0; i < filled; ++i)
          ASSERT_EQ(row[i], pixel.bytes[i % pixel.size]) << "type " << type << " accelerated " << accelerated;
        for (int32_t i = filled; i < stride; ++i)
          ASSERT_EQ(row[i], 0x5A) << "past the pixels, type " << type << " accelerated " << accelerated;
      }
      if (accelerated && bits == 1) {
        EXPECT_EQ(host.byteFills.size(), 1u);
      }
      if (accelerated && pixel.size == 4) {
        EXPECT_EQ(host.pixelFills.size(), size_t(rows)) << "a row each: padded stride";
      }
      if (!accelerated) {
        EXPECT_EQ(host.pixelFills.size() + host.byteFills.size(), 0u);
      }
    }
  }
}

TEST(Accelerator, AnswerIsFixedByTheFirstCall) {
  FakeHost host;
  host.acceleratorAvailable = true;
  host.acceleratorEnabled = 1;
  EXPECT_TRUE(acceleratorEnabled());
  host.acceleratorEnabled = 0;
  EXPECT_TRUE(acceleratorEnabled()) << "cached for the process";
  EXPECT_EQ(host.countCalls("HvIsEnabled"), 1u);
  EXPECT_EQ(host.suitesHeld, 1) << "acquired once and kept";
}

}  // namespace
}  // namespace dw
