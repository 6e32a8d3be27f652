#include <string>
#include <vector>

#include "shell/ErrorCodes.h"
#include "tests/engine/EngineFixture.h"

namespace dw {
namespace {

using fake::ColorUse;
using fake::spotColor;
using test_support::EngineTest;
using test_support::makeSettings;

using Bytes = std::vector<uint8_t>;
const Bytes kRed = {0xFF, 0x00, 0x00};
const Bytes kWhite = {0xFF, 0xFF, 0xFF};

class Rasterize : public EngineTest {
 protected:
  std::vector<DWArtHandle> drawnArts() {
    std::vector<DWArtHandle> drawn;
    for (const fake::Draw& d : h().draws) drawn.push_back(d.art);
    return drawn;
  }
};

TEST_F(Rasterize, RgbWithoutSupersamplingDrawsTheRectangle) {
  DWArtHandle art = h().addPaintedArt({10, 15, 30, 5}, kRed);
  ASSERT_EQ(rasterize(h().addArtSet({art}), {0, 20, 40, 0}), kDWNoErr);
  fake::Art& r = raster();
  EXPECT_EQ(result, h().liveRasters().at(0));
  EXPECT_EQ(r.paintOrder, kDWPlaceAbove);
  EXPECT_TRUE(r.styleReset);
  EXPECT_EQ(r.blendFlag, -1) << "opaque types get no blend flag";
  EXPECT_EQ(r.record.flags, 0);
  EXPECT_EQ(r.record.bounds.right, 40);
  EXPECT_EQ(r.record.bounds.bottom, 20);
  EXPECT_EQ(r.record.byteWidth, 120);
  EXPECT_EQ(r.record.colorSpace, 0x01);
  EXPECT_EQ(r.record.bitsPerPixel, 24);
  EXPECT_EQ(r.record.originalColorSpace, -1);
  EXPECT_EQ(r.matrix.a, 1.0);
  EXPECT_EQ(r.matrix.d, 1.0);
  EXPECT_EQ(r.matrix.tx, 0.0);
  EXPECT_EQ(r.matrix.ty, 20.0);
  for (int32_t y = 0; y < 20; ++y)
    for (int32_t x = 0; x < 40; ++x) {
      const bool inside = x >= 10 && x < 30 && y >= 5 && y < 15;
      ASSERT_EQ(pixelBytes(x, y), inside ? kRed : kWhite) << x << "," << y;
    }
  expectNothingHeld("after success");
}

TEST_F(Rasterize, SupersampledEdgesAverageExactly) {
  // Rows 0..199 of a 600 x 200 raster; at 1 MiB, tiles of (65536 / 1800) = 36 rows: several batches.
  h().preferences["Rasterize/rasterizeMemory"] = 1;
  settings = makeSettings(kRasterTypeRgb, 72.0, 4);
  DWArtHandle art = h().addPaintedArt({10.5, 150, 30.25, 20}, kRed);
  ASSERT_EQ(rasterize(h().addArtSet({art}), {0, 200, 600, 0}), kDWNoErr);
  ASSERT_GT(h().tileWrites.size(), 2u);
  EXPECT_EQ(h().tileWrites[0].rasterSlice.bottom, 36);
  for (int32_t y : {50, 100, 179}) {
    EXPECT_EQ(pixelBytes(9, y), kWhite);
    EXPECT_EQ(pixelBytes(10, y), (Bytes{255, 127, 127})) << "2 of 4 columns: 8 of 16 samples, 2040 / 16 truncates";
    EXPECT_EQ(pixelBytes(20, y), kRed);
    EXPECT_EQ(pixelBytes(30, y), (Bytes{255, 191, 191})) << "1 of 4 columns: 3060 / 16 = 191";
    EXPECT_EQ(pixelBytes(31, y), kWhite);
  }
  EXPECT_EQ(pixelBytes(20, 49), kWhite) << "top edge at row 50";
  EXPECT_EQ(pixelBytes(20, 50), kRed);
  EXPECT_EQ(pixelBytes(20, 179), kRed);
  EXPECT_EQ(pixelBytes(20, 180), kWhite);
  expectNothingHeld("after success");
}

TEST_F(Rasterize, TransparentEdgesKeepTheirColour) {
  settings = makeSettings(kRasterTypeRgbTransparent, 72.0, 4);
  DWArtHandle art = h().addPaintedArt({10.5, 15, 30, 5}, {0xFF, 0xFF, 0x00, 0x00});
  ASSERT_EQ(rasterize(h().addArtSet({art}), {0, 20, 40, 0}), kDWNoErr);
  EXPECT_EQ(raster().blendFlag, 1);
  EXPECT_EQ(raster().record.colorSpace, 0x11);
  EXPECT_EQ(pixelBytes(10, 10), (Bytes{127, 255, 0, 0})) << "alpha 2040 / 16; colour not lightened";
  EXPECT_EQ(pixelBytes(20, 10), (Bytes{255, 255, 0, 0}));
  EXPECT_EQ(pixelBytes(5, 10), (Bytes{0, 255, 255, 255})) << "transparent white";
}

TEST_F(Rasterize, BlackBackground) {
  settings = makeSettings(kRasterTypeRgbTransparent, 72.0, 4, RasterizeOptions::BlackBackground);
  ASSERT_EQ(rasterize(h().addArtSet({}), {0, 8, 8, 0}), kDWNoErr);
  EXPECT_EQ(pixelBytes(3, 3), (Bytes{0, 0, 0, 0}));
}

TEST_F(Rasterize, BitmapStoresBlackArtAsOneBits) {
  settings = makeSettings(kRasterTypeBitmap, 72.0, 4);  // anti-aliasing is ignored for bitmaps
  DWArtHandle art = h().addPaintedArt({4, 3, 12, 1}, {0});
  ASSERT_EQ(rasterize(h().addArtSet({art}), {0, 4, 16, 0}), kDWNoErr);
  fake::Art& r = raster();
  EXPECT_EQ(r.record.bitsPerPixel, 1);
  EXPECT_EQ(r.record.byteWidth, 4);
  EXPECT_EQ(h().ports.at(0).bounds.right, 16) << "factor 1";
  EXPECT_EQ(r.pixels[0], 0x00) << "row 0 white";
  EXPECT_EQ(r.pixels[1 * 4 + 0], 0x0F) << "row 1: pixels 4..7 black";
  EXPECT_EQ(r.pixels[1 * 4 + 1], 0xF0) << "row 1: pixels 8..11 black";
  EXPECT_EQ(r.pixels[3 * 4 + 0], 0x00);
}

TEST_F(Rasterize, BitmapTransparentIsAMaskRaster) {
  settings = makeSettings(kRasterTypeBitmapTransparent, 72.0, 0);
  ASSERT_EQ(rasterize(h().addArtSet({}), {0, 4, 16, 0}), kDWNoErr);
  EXPECT_EQ(raster().record.flags, kDWRasterMaskFlag);
  EXPECT_EQ(raster().blendFlag, 1);
}

TEST_F(Rasterize, RasterSizeAndPlacement) {
  struct Case {
    const char* name;
    double resolution;
    uint32_t options;
    DWRealRect rect;
    double padding;
    int32_t documentDpi;  // 0: the document has none
    int32_t width, height;
    double tx, ty, scale;
  };
  const DWRealRect odd{10.2, 20.00005, 30.7, 5.5};
  const uint32_t effects = RasterizeOptions::UseEffectsResolution;
  const Case cases[] = {
      {"72 ppi rounds", 72, 0, odd, 0, 0, 21, 15, 10, 20, 1},
      {"72 ppi without snapping", 72, RasterizeOptions::NoPixelSnap, odd, 0, 0, 21, 15, 10.2, 20.00005, 1},
      {"300 ppi keeps the bounds", 300, 0, odd, 0, 0, 86, 61, 10.2, 20.00005, 72.0 / 300},
      {"72.5 ppi is within 0.01 of scale 1", 72.5, 0, odd, 0, 0, 22, 16, 10, 20, 72.0 / 72.5},
      {"73 ppi is not", 73, 0, odd, 0, 0, 21, 15, 10.2, 20.00005, 72.0 / 73},
      {"resolution 0 means 300", 0, 0, {0, 72, 72, 0}, 0, 0, 300, 300, 0, 72, 72.0 / 300},
      {"effects resolution from the document", 150, effects, {0, 72, 72, 0}, 0, 144, 144, 144, 0, 72, 0.5},
      {"padding counts twice per axis", 72, 0, {0, 50, 100, 0}, 10, 0, 120, 70, -10, 60, 1},
  };
  for (const Case& c : cases) {
    reset();
    settings = makeSettings(kRasterTypeGrayscale, c.resolution, 0, c.options);
    h().documentHasDpi = c.documentDpi != 0;
    h().documentDpi = c.documentDpi;
    ASSERT_EQ(rasterize(h().addArtSet({}), c.rect, c.padding), kDWNoErr) << c.name;
    EXPECT_EQ(raster().record.bounds.right, c.width) << c.name;
    EXPECT_EQ(raster().record.bounds.bottom, c.height) << c.name;
    EXPECT_DOUBLE_EQ(raster().matrix.tx, c.tx) << c.name;
    EXPECT_DOUBLE_EQ(raster().matrix.ty, c.ty) << c.name;
    EXPECT_DOUBLE_EQ(raster().matrix.a, c.scale) << c.name;
    if (c.options & RasterizeOptions::NoPixelSnap) {
      EXPECT_TRUE(h().toleranceArgs.empty()) << c.name;
    } else {
      ASSERT_EQ(h().toleranceArgs.size(), 1u) << c.name;
      EXPECT_EQ(h().toleranceArgs[0], 0.009999999776482582) << "a single-precision 0.01";
    }
  }
}

TEST_F(Rasterize, PortWidthLimitsAndTheFactorDrop) {
  struct Case {
    int32_t type;
    int16_t antialiasing;
    int32_t width;
    DWErr expected;
    int32_t portWidth;  // 0: no port is checked
  };
  const Case cases[] = {
      {kRasterTypeRgb, 0, 16383, kDWNoErr, 16383},  {kRasterTypeRgb, 0, 16384, TooWideError, 0},
      {kRasterTypeCmyk, 0, 13106, kDWNoErr, 13106}, {kRasterTypeCmyk, 0, 13107, TooWideError, 0},
      {kRasterTypeRgb, 2, 8191, kDWNoErr, 16382},   {kRasterTypeRgb, 2, 8192, TooWideError, 0},
      {kRasterTypeGrayscale, 0, 16384, TooWideError, 0},
      {kRasterTypeRgb, 4, 3276, kDWNoErr, 4 * 3276}, {kRasterTypeRgb, 4, 3277, kDWNoErr, 2 * 3277},
  };
  for (const Case& c : cases) {
    reset();
    settings = makeSettings(c.type, 72.0, c.antialiasing);
    const std::string name = "type " + std::to_string(c.type) + " anti-aliasing " + std::to_string(c.antialiasing) +
                             " width " + std::to_string(c.width);
    EXPECT_EQ(rasterize(h().addArtSet({}), {0, 1, double(c.width), 0}), c.expected) << name;
    EXPECT_EQ(h().createdRasters().size(), 1u) << "the raster art was created: " << name;
    EXPECT_EQ(h().liveRasters().size(), c.expected ? 0u : 1u) << name;
    if (c.portWidth) {
      EXPECT_EQ(h().ports.at(0).bounds.right, c.portWidth) << name;
    }
    if (c.portWidth && c.antialiasing == 4) {
      EXPECT_EQ(h().ports.at(0).options & 0x200000u, 0x200000u) << "anti-aliased port: " << name;
    }
    expectNothingHeld(name);
  }
}

TEST_F(Rasterize, HeightLimitPasses) {
  settings = makeSettings(kRasterTypeGrayscale, 72.0, 0);
  EXPECT_EQ(rasterize(h().addArtSet({}), {0, 32767, 100, 0}), kDWNoErr);
  EXPECT_EQ(h().tileWrites.back().rasterSlice.bottom, 32767);
}

TEST_F(Rasterize, RejectedSizes) {
  struct Case {
    const char* name;
    DWRealRect rect;
    double padding;
    DWErr expected;
  };
  const Case cases[] = {
      {"empty bounds", {5, 5, 5, 5}, 0, BadParameterError},
      {"inverted bounds", {10, 0, 0, 10}, 0, BadParameterError},
      {"absurd size", {0, 1, 1e300, 0}, 0, TooWideError},
      {"32768 high", {0, 32768, 100, 0}, 0, TooWideError},
      {"32768 wide", {0, 1, 32768, 0}, 0, TooWideError},
  };
  for (const Case& c : cases) {
    reset();
    settings = makeSettings(kRasterTypeGrayscale, 72.0, 0);
    EXPECT_EQ(rasterize(h().addArtSet({}), c.rect, c.padding), c.expected) << c.name;
    EXPECT_EQ(h().countCalls("NewArt"), 0u) << c.name;
    EXPECT_EQ(h().logLines.size(), 5u) << "start and end lines: " << c.name;
    expectNothingHeld(c.name);
  }
  reset();
  EXPECT_EQ(RasterizeArtWithPadding(nullptr, nullptr, &bounds, 1, nullptr, &result, nullptr, 0), BadParameterError);
  EXPECT_EQ(RasterizeArtWithPadding(nullptr, &settings, nullptr, 1, nullptr, &result, nullptr, 0), BadParameterError);
}

TEST_F(Rasterize, TileRowsFromTheBudget) {
  // At a 1 MiB budget: RGB 2000 px (stride 6000) gets 1048576 / 6000 = 174 rows, gray 3484 px
  // (stride 3484) 300 rows; a refused buffer is tried again with half the rows.
  struct Case {
    const char* name;
    int32_t type, width, height;
    size_t maxBlock;
    std::vector<size_t> allocations;
    size_t tiles;
    int32_t rows, lastTop, colBytes;
  };
  const Case cases[] = {
      {"RGB, 3 tiles", kRasterTypeRgb, 2000, 400, SIZE_MAX, {174u * 6000u}, 3, 174, 348, 3},
      {"gray, the last of 4 tiles is shorter", kRasterTypeGrayscale, 3484, 1000, SIZE_MAX, {300u * 3484u}, 4, 300, 900, 1},
      {"174 rows (1044000 bytes) fail, 87 fit", kRasterTypeRgb, 2000, 400, 600000, {174u * 6000u, 87u * 6000u}, 5, 87,
       348, 3},
  };
  for (const Case& c : cases) {
    reset();
    h().preferences["Rasterize/rasterizeMemory"] = 1;
    h().maxBlock = c.maxBlock;
    settings = makeSettings(c.type, 72.0, 0);
    ASSERT_EQ(rasterize(h().addArtSet({}), {0, double(c.height), double(c.width), 0}), kDWNoErr) << c.name;
    EXPECT_EQ(h().allocationSizes, c.allocations) << c.name;
    ASSERT_EQ(h().tileWrites.size(), c.tiles) << c.name;
    EXPECT_EQ(h().tileWrites[0].rasterSlice.bottom, c.rows) << c.name;
    EXPECT_EQ(h().tileWrites[0].rowBytes, c.width * c.colBytes) << c.name;
    const fake::TileWrite& last = h().tileWrites.back();
    EXPECT_EQ(last.rasterSlice.top, c.lastTop) << c.name;
    EXPECT_EQ(last.rasterSlice.bottom, c.height) << c.name;
    EXPECT_EQ(last.rasterSlice.right, c.width) << c.name;
    EXPECT_EQ(last.rasterSlice.back, c.colBytes) << "one plane per channel: " << c.name;
    EXPECT_EQ(last.tileSlice.top, 0) << c.name;
    EXPECT_EQ(last.tileSlice.bottom, c.height - c.lastTop) << c.name;
    EXPECT_EQ(last.colBytes, c.colBytes) << c.name;
  }
}

TEST_F(Rasterize, AllocationGivesUpAtSmallSizes) {
  h().maxBlock = 1000;
  EXPECT_EQ(rasterize(h().addArtSet({}), {0, 400, 2000, 0}), OutOfMemoryError);
  EXPECT_LE(h().allocationSizes.back(), 65536u * 2) << "the last try was at most twice the retry limit";
  EXPECT_TRUE(h().liveRasters().empty());
  expectNothingHeld("out of memory");
}

TEST_F(Rasterize, ABudgetOfNoRowsIsOutOfMemory) {
  h().preferences["Rasterize/rasterizeMemory"] = 0;
  EXPECT_EQ(rasterize(h().addArtSet({}), {0, 10, 10, 0}), OutOfMemoryError);
  EXPECT_EQ(h().countCalls("AllocateBlock"), 0u) << "no tile of 0 rows is ever planned";
  EXPECT_EQ(h().countCalls("DrawArt") + h().countCalls("WriteRasterTile"), 0u);
  EXPECT_TRUE(h().liveRasters().empty());
}

TEST_F(Rasterize, LockedLayer) {
  h().layer(h().currentLayer).editable = false;
  EXPECT_EQ(rasterize(h().addArtSet({}), {0, 10, 10, 0}), LockedLayerError);
  EXPECT_EQ(h().countCalls("NewArt"), 0u);
  EXPECT_EQ(h().logLines.size(), 5u) << "the end lines are written";

  reset();
  DWArtHandle prep = h().addArt();
  h().art(prep).layer = h().addLayer(false);
  EXPECT_EQ(rasterize(h().addArtSet({}), {0, 10, 10, 0}, 0, prep), LockedLayerError) << "the prep art's layer";

  reset();
  prep = h().addArt();
  h().art(prep).layer = h().addLayer(false);
  h().art(prep).outsideLayers = true;
  EXPECT_EQ(rasterize(h().addArtSet({}), {0, 10, 10, 0}, 0, prep), kDWNoErr) << "outside any layer: no test";
}

TEST_F(Rasterize, SingleSpotRaster) {
  settings = makeSettings(kRasterTypeCmyk, 72.0, 0, RasterizeOptions::AllowSpotRaster);
  settings.preserveSpotColors = 1;
  DWArtHandle art = h().addPaintedArt({0, 4, 4, 0}, {0xC8});
  h().art(art).colors = {ColorUse{kDWUsesSpot, {0, 0, 0, 0}, spotColor(7)}};
  ASSERT_EQ(rasterize(h().addArtSet({art}), {0, 8, 8, 0}), kDWNoErr);
  fake::Art& r = raster();
  EXPECT_EQ(r.record.flags, kDWRasterSpotFlag);
  EXPECT_EQ(r.record.colorSpace, 0x00) << "described as Grayscale";
  EXPECT_EQ(r.record.bitsPerPixel, 8);
  EXPECT_EQ(r.style.fill.color.kind, kDWCustomColor);
  EXPECT_EQ(r.style.fill.color.c.c.color, spotColor(7));
  EXPECT_EQ(r.style.fill.color.c.c.tint, 0.0);
  EXPECT_EQ(h().countCalls("SetColorSpace"), 0u);
  EXPECT_EQ(pixelBytes(1, 5), Bytes{0xC8});
  EXPECT_EQ(pixelBytes(6, 1), Bytes{0x00}) << "no ink";
}

TEST_F(Rasterize, ProcessPlusSpotRaster) {
  settings = makeSettings(kRasterTypeCmyk, 72.0, 4, RasterizeOptions::AllowSpotRaster | RasterizeOptions::AllowNChannelRaster);
  settings.preserveSpotColors = 1;
  DWArtHandle art = h().addPaintedArt({0, 4, 4, 0}, {10, 20, 30, 40, 250});
  h().art(art).colors = {ColorUse{kDWUsesSpot, {0, 0, 0, 0}, spotColor(7)},
                         ColorUse{kDWUsesFullProcess, {1, 0, 0, 0}, nullptr},
                         ColorUse{kDWUsesProcessInks, {1, 1, 1, 1}, nullptr},
                         ColorUse{kDWUsesRaster, {1, 0, 0, 0}, nullptr}};
  ASSERT_EQ(rasterize(h().addArtSet({art}), {0, 8, 8, 0}), kDWNoErr);
  fake::Art& r = raster();
  EXPECT_EQ(r.record.colorSpace, 0x05);
  EXPECT_EQ(r.record.bitsPerPixel, 40);
  EXPECT_NE(r.rasterSpace, nullptr);
  EXPECT_EQ(r.usageFlag, 1);
  EXPECT_EQ(h().tileWrites.at(0).colBytes, 5);
  EXPECT_EQ(pixelBytes(1, 5), (Bytes{10, 20, 30, 40, 250}));
  EXPECT_EQ(pixelBytes(6, 1), (Bytes{0, 0, 0, 0, 0}));
  expectNothingHeld("after an N-channel raster");
}

std::vector<ColorUse> twentyEightSpots() {
  std::vector<ColorUse> uses;
  for (uintptr_t i = 1; i <= 28; ++i) uses.push_back(ColorUse{kDWUsesSpot, {0, 0, 0, 0}, spotColor(i)});
  return uses;
}

TEST_F(Rasterize, TooManySpotsCancelledOrConvertedToProcess) {
  for (int32_t answer : {0, 1}) {
    reset();
    settings = makeSettings(kRasterTypeCmykTransparent, 72.0, 0, RasterizeOptions::AllowNChannelRaster);
    settings.preserveSpotColors = 1;
    DWArtHandle art = h().addArt();
    h().art(art).colors = twentyEightSpots();
    h().questionAnswer = answer;
    const DWErr error = rasterize(h().addArtSet({art}), {0, 8, 8, 0});
    EXPECT_EQ(h().questions.size(), 1u) << "answer " << answer;
    if (answer) {
      ASSERT_EQ(error, kDWNoErr);
      EXPECT_EQ(raster().record.colorSpace, 0x12) << "plain CmykTransparent";
      continue;
    }
    EXPECT_EQ(error, UserCancelled);
    EXPECT_EQ(h().countCalls("NewArt"), 0u);
    EXPECT_EQ(h().logLines, (std::vector<std::string>{"            \tRasterize\t(Start)"}))
        << "only the start line";
    expectNothingHeld("cancelled");
  }
}

TEST_F(Rasterize, ColorSpaceFailures) {
  h().failNext("NewProcessColorSpace", fourCharError("CSPC"));
  EXPECT_EQ(rasterize(h().addArtSet({}), {0, 8, 8, 0}), fourCharError("CSPC"));
  EXPECT_EQ(h().logLines.size(), 1u) << "an early return: only the start line";
  reset();
  h().failNext("CountChannels", fourCharError("CNT "));
  EXPECT_EQ(rasterize(h().addArtSet({}), {0, 8, 8, 0}), fourCharError("CNT "));
  expectNothingHeld("channel count failed");
}

TEST_F(Rasterize, NoColorSpaceIsInvalidValue) {
  settings = makeSettings(42, 72.0, 0);
  EXPECT_EQ(rasterize(h().addArtSet({}), {0, 8, 8, 0}), InvalidValueError);
  EXPECT_EQ(h().logLines.size(), 1u);
}

std::vector<std::pair<int32_t, int32_t>> gProgress;
int32_t stopAtFirst(int32_t current, int32_t total) {
  gProgress.push_back({current, total});
  return 0;
}
int32_t goOn(int32_t current, int32_t total) {
  gProgress.push_back({current, total});
  return 1;
}

TEST_F(Rasterize, ProgressCountsObjectsOverAllTiles) {
  gProgress.clear();
  h().preferences["Rasterize/rasterizeMemory"] = 1;
  DWArtHandle a = h().addPaintedArt({0, 1, 1, 0}, kRed), b = h().addPaintedArt({1, 1, 2, 0}, kRed);
  ASSERT_EQ(rasterize(h().addArtSet({a, b}), {0, 400, 2000, 0}, 0, nullptr, goOn), kDWNoErr);  // 3 tiles
  EXPECT_EQ(gProgress, (std::vector<std::pair<int32_t, int32_t>>{{1, 6}, {2, 6}, {3, 6}, {4, 6}, {5, 6}, {6, 6}}));
  ASSERT_GE(h().draws.size(), 2u);
  EXPECT_EQ(h().draws[0].art, b) << "last object first";
  EXPECT_EQ(h().draws[0].options, 0x5EED) << "the reserved value goes to every draw";
}

TEST_F(Rasterize, CancelledByProgressLeavesNoRaster) {
  gProgress.clear();
  settings = makeSettings(kRasterTypeRgb, 72.0, 4);
  DWArtHandle a = h().addPaintedArt({0, 1, 1, 0}, kRed);
  EXPECT_EQ(rasterize(h().addArtSet({a}), {0, 10, 10, 0}, 0, nullptr, stopAtFirst), UserCancelled);
  EXPECT_EQ(gProgress.size(), 1u);
  EXPECT_EQ(h().createdRasters().size(), 1u);
  EXPECT_TRUE(h().liveRasters().empty());
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(h().countCalls("FinishDrawing"), 1u) << "drawing is finished after a cancel too";
  EXPECT_EQ(h().logLines.size(), 6u) << "start, tiles and the four end lines";
  expectNothingHeld("cancelled");
}

TEST_F(Rasterize, GroupMembersAreDrawnByTheirGroup) {
  const DWArtHandle root = h().layer(h().currentLayer).group;
  DWArtHandle group = h().addArt(kDWGroupArt, root);
  DWArtHandle member = h().addPaintedArt({0, 1, 1, 0}, kRed, group);
  DWArtHandle other = h().addPaintedArt({1, 1, 2, 0}, kRed);
  ASSERT_EQ(rasterize(h().addArtSet({group, member, other}), {0, 4, 4, 0}), kDWNoErr);
  EXPECT_EQ(drawnArts(), (std::vector<DWArtHandle>{other, group})) << "the member is skipped";
  EXPECT_EQ(pixelBytes(0, 3), kRed) << "and drawn through its group";
}

TEST_F(Rasterize, ParentlessArtNeedsTheOption) {
  DWArtHandle loose = h().addArt(kDWGroupArt, nullptr);
  DWArtHandle member = h().addPaintedArt({0, 1, 1, 0}, kRed, loose);
  ASSERT_EQ(rasterize(h().addArtSet({loose, member}), {0, 4, 4, 0}), kDWNoErr);
  EXPECT_EQ(drawnArts(), std::vector<DWArtHandle>{member})
      << "without the option a parentless group is not drawn and does not count as a drawn parent";

  reset();
  loose = h().addArt(kDWGroupArt, nullptr);
  member = h().addPaintedArt({0, 1, 1, 0}, kRed, loose);
  settings.options = RasterizeOptions::DrawParentlessArt;
  ASSERT_EQ(rasterize(h().addArtSet({loose, member}), {0, 4, 4, 0}), kDWNoErr);
  EXPECT_EQ(drawnArts(), std::vector<DWArtHandle>{loose});
}

TEST_F(Rasterize, WithoutAnArtSetEveryLayerIsDrawn) {
  DWLayerHandle second = h().addLayer();
  const DWArtHandle firstGroup = h().layer(h().currentLayer).group, secondGroup = h().layer(second).group;
  int32_t (*noProgress)(int32_t, int32_t) = stopAtFirst;
  ASSERT_EQ(rasterize(nullptr, {0, 4, 4, 0}, 0, nullptr, noProgress), kDWNoErr) << "no progress without a set";
  EXPECT_EQ(drawnArts(), (std::vector<DWArtHandle>{secondGroup, firstGroup})) << "last layer first";
  EXPECT_EQ(h().countCalls("CountArtSet"), 0u);
  EXPECT_EQ(h().countCalls("GetArtUserAttr"), 0u) << "no single-object finishing";
}

TEST_F(Rasterize, DrawRecordPerTile) {
  // 300 ppi, factor 4: the record's origin steps down by tileRows * 4 / (4 * scale) points per tile.
  h().preferences["Rasterize/rasterizeMemory"] = 1;
  settings = makeSettings(kRasterTypeRgb, 300.0, 4);
  DWArtHandle art = h().addPaintedArt({0, 1, 1, 0}, kRed);
  ASSERT_EQ(rasterize(h().addArtSet({art}), {10, 100, 110, 0}, 2.0), kDWNoErr);
  const double scale = 300.0 / 72.0;
  const int32_t width = 434;  // ceil(104 * scale)
  const int32_t rows = int32_t((1048576 / 16) / (3 * width + 2));
  ASSERT_GE(h().draws.size(), 2u);
  for (size_t i = 0; i < 2; ++i) {
    const fake::Draw& d = h().draws[i];
    EXPECT_DOUBLE_EQ(d.origin.h, 8.0);
    EXPECT_DOUBLE_EQ(d.origin.v, 102.0 - double(i * 4 * rows) / (4 * scale)) << "tile " << i;
    EXPECT_DOUBLE_EQ(d.matrix.a, 4 * scale);
    EXPECT_DOUBLE_EQ(d.matrix.d, 4 * scale);
    EXPECT_EQ(d.flags, 0x0Bu);
    EXPECT_EQ(d.device.right, 4 * width);
    EXPECT_EQ(d.device.bottom, 4 * rows);
  }
}

TEST_F(Rasterize, GroupBlendValueGoesIntoTheDrawFlags) {
  DWArtHandle a = h().addPaintedArt({0, 1, 1, 0}, kRed);
  h().art(a).blendValue = 3;
  ASSERT_EQ(rasterize(h().addArtSet({a}), {0, 4, 4, 0}), kDWNoErr);
  EXPECT_EQ(h().draws.at(0).flags, 0x0Bu | 0x00100000u);
}

TEST_F(Rasterize, DrawPortDeviceSetsUpTheDevice) {
  settings.options = RasterizeOptions::DrawPortDevice;
  DWArtHandle a = h().addPaintedArt({0, 1, 1, 0}, kRed);
  ASSERT_EQ(rasterize(h().addArtSet({a}), {0, 4, 4, 0}), kDWNoErr);
  const std::vector<std::string> calls = h().calls();
  const long start = h().findCall("NewObject");
  ASSERT_GE(start, 0);
  const std::vector<std::string> expected = {"NewObject", "BeginDrawing",  "SaveState", "UseDeviceSpace",
                                             "MoveTo",    "LineTo",        "LineTo",    "LineTo",
                                             "ClosePath", "ClipToObject",  "ResetPaint", "UseUserSpace"};
  EXPECT_EQ(std::vector<std::string>(calls.begin() + start, calls.begin() + start + long(expected.size())), expected);
  const long finish = h().findCall("FinishDrawing");
  EXPECT_EQ(h().findCall("ReleaseObject", size_t(finish)), finish + 1) << "the clip object goes after drawing";
  expectNothingHeld("device drawing");
}

TEST_F(Rasterize, UserValuePairIsCarriedOver) {
  DWArtHandle a = h().addPaintedArt({0, 1, 1, 0}, kRed);
  h().art(a).userAttr = 0x10000;
  h().art(a).real = 2.5;
  h().art(a).integer = 77;
  ASSERT_EQ(rasterize(h().addArtSet({a}), {0, 4, 4, 0}), kDWNoErr);
  EXPECT_EQ(raster().userAttr & 0x10000u, 0x10000u);
  EXPECT_EQ(raster().real, 2.5);
  EXPECT_EQ(raster().integer, 77);

  reset();
  a = h().addPaintedArt({0, 1, 1, 0}, kRed);
  h().art(a).userAttr = 0x10000;
  h().failNext("GetArtValuePair", fourCharError("FAIL"));
  ASSERT_EQ(rasterize(h().addArtSet({a}), {0, 4, 4, 0}), kDWNoErr) << "failures here are ignored";
  EXPECT_EQ(raster().userAttr & 0x10000u, 0u);
}

TEST_F(Rasterize, SymbolEditingIsNotified) {
  const DWArtHandle root = h().layer(h().currentLayer).group;
  DWArtHandle prep = h().addArt(kDWPathArt, root);
  h().symbolEditing = 1;
  ASSERT_EQ(rasterize(h().addArtSet({}), {0, 4, 4, 0}, 0, prep), kDWNoErr);
  EXPECT_EQ(h().symbolNotifications, (std::vector<DWArtHandle>{prep, root}));
  EXPECT_EQ(h().art(result).prep, prep) << "placed next to the prep art";
  EXPECT_EQ(h().suitesHeld, 0) << "the symbol utilities are released again";
  EXPECT_EQ(result, h().liveRasters().at(0));
}

TEST_F(Rasterize, WithoutAResultPointerTheRasterStays) {
  bounds = {0, 4, 4, 0};
  ASSERT_EQ(RasterizeArtWithPadding(h().addArtSet({}), &settings, &bounds, 1, nullptr, nullptr, nullptr, 0.0), kDWNoErr);
  EXPECT_EQ(h().liveRasters().size(), 1u);
}

TEST_F(Rasterize, SettingsRecordIsNotWritten) {
  settings = makeSettings(kRasterTypeRgb, 0.0, 4, RasterizeOptions::AllowSpotRaster);
  settings.preserveSpotColors = 1;
  settings.padding = 99;
  settings.createClippingMask = 1;
  const RasterizeSettings before = settings;
  DWArtHandle art = h().addArt();
  h().art(art).colors = {ColorUse{kDWUsesSpot, {0, 0, 0, 0}, spotColor(1)}};
  ASSERT_EQ(rasterize(h().addArtSet({art}), {0, 4, 4, 0}), kDWNoErr);
  EXPECT_TRUE(settings == before);
  EXPECT_EQ(raster().record.bounds.right, 17) << "the record's own padding is not read";
}

}  // namespace
}  // namespace dw
