// Spot colours kept by the real plug-in: one spot gives a spot raster painted with it, several give
// process-plus-spot channels in the order of their handles, and more than 27 ask the user first.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/PluginHost.h"

namespace e2e {
namespace {

constexpr double kSide = 12;

RasterizeSettings keepingSpots() {
  RasterizeSettings s = settingsFor(kRasterTypeCmyk, 4);
  s.options = kRasterizeAllowSpotRaster | kRasterizeAllowNChannelRaster;
  s.preserveSpotColors = 1;
  return s;
}

// `count` spot colours, made in order, so their handles ascend.
std::vector<CustomColorId> makeSpots(Document& doc, int count) {
  std::vector<CustomColorId> ids;
  for (int i = 0; i < count; ++i) {
    CustomColor c;
    c.name = "Spot " + std::to_string(i + 1);
    c.kind = CustomColor::Kind::Spot;
    c.cmyk[i % 4] = 1.0;
    ids.push_back(doc.newCustomColor(c));
  }
  return ids;
}

TEST(SpotColors, OneSpotGivesASpotRasterFilledWithIt) {
  PluginHost p;
  const CustomColorId spot = makeSpots(*p.doc, 1)[0];
  Art* box = p.add({2, 2, 6, 10}, Paint::spotColor(spot));
  const PluginHost::Result r = p.rasterize(p.artSet({box}), keepingSpots(), Rect{0, kSide, kSide, 0});
  ASSERT_EQ(r.code, 0);
  const RasterData& raster = *r.raster->raster();
  EXPECT_EQ(raster.record.flags, 8) << "a single-spot raster";
  EXPECT_EQ(raster.record.colorSpace, 0x00) << "described as the gray underneath";
  EXPECT_EQ(raster.record.bitsPerPixel, 8);
  const Paint& fill = r.raster->pathStyle().fill;
  EXPECT_EQ(fill.type, Paint::Type::Spot);
  EXPECT_EQ(fill.spot, spot);
  EXPECT_EQ(fill.tint, 0.0);
  for (int y = 0; y < kSide; ++y)
    for (int x = 0; x < kSide; ++x) {
      const bool inside = x >= 2 && x < 6 && y >= kSide - 10 && y < kSide - 2;
      EXPECT_EQ(pixelByte(raster, x, y, 0), inside ? 255 : 0) << "ink at (" << x << ", " << y << ")";
    }
}

TEST(SpotColors, SeveralSpotsGiveChannelsInHandleOrder) {
  PluginHost p;
  const std::vector<CustomColorId> spots = makeSpots(*p.doc, 3);
  // Drawn in another order than the handles': the channels still follow the handles.
  const int order[] = {2, 0, 1};
  std::vector<Art*> art;
  for (int i = 0; i < 3; ++i) art.push_back(p.add({double(4 * i), 0, double(4 * i + 4), kSide}, Paint::spotColor(spots[size_t(order[i])])));
  const PluginHost::Result r = p.rasterize(p.artSet(art), keepingSpots(), Rect{0, kSide, kSide, 0});
  ASSERT_EQ(r.code, 0);
  const RasterData& raster = *r.raster->raster();
  EXPECT_EQ(raster.record.colorSpace, 0x05) << "process plus spots";
  ASSERT_EQ(raster.channels.size(), 3u) << "no process colour is used, so only the spot channels";
  for (size_t k = 0; k < 3; ++k) {
    EXPECT_EQ(raster.channels[k].kind, RasterChannel::Kind::Spot) << "channel " << k;
    EXPECT_EQ(raster.channels[k].spot, spots[k]) << "channel " << k;
  }
  for (int x = 0; x < kSide; ++x)
    for (int k = 0; k < 3; ++k)
      EXPECT_EQ(pixelByte(raster, x, 5, k), order[x / 4] == k ? 255 : 0) << "channel " << k << " at column " << x;
}

TEST(SpotColors, TwentyEightSpotsAskFirst) {
  struct Case {
    const char* name;
    bool goOn;
    DWErr code;
    int colorSpace;  // of the raster made, -1 for none
  };
  const Case cases[] = {
      {"cancel", false, kUserCancelled, -1},
      {"go on as process", true, 0, 0x02},
  };
  for (const Case& c : cases) {
    PluginHost p;
    std::vector<Art*> art;
    for (CustomColorId spot : makeSpots(*p.doc, 28)) art.push_back(p.add({0, 0, kSide, kSide}, Paint::spotColor(spot)));
    p.host.controls().questionAnswers.push_back(c.goOn);
    const DWArtSetHandle set = p.artSet(art);
    const size_t artBefore = p.doc->artArenaSize();
    const PluginHost::Result r = p.rasterize(set, keepingSpots(), Rect{0, kSide, kSide, 0});
    EXPECT_EQ(r.code, c.code) << c.name;
    // Cancelled before planning: not even a raster art made and disposed again.
    EXPECT_EQ(p.doc->artArenaSize() - artBefore, c.colorSpace < 0 ? 0u : 1u) << c.name << ": art objects made";
    ASSERT_EQ(p.host.ui().alerts().size(), 1u) << c.name;
    EXPECT_EQ(p.host.ui().alerts()[0].kind, Alert::Kind::Question) << c.name;
    EXPECT_NE(p.host.ui().alerts()[0].text.find("maximum of 27 spot colors"), std::string::npos) << c.name;
    const std::vector<Art*> rasters = p.rasters();
    ASSERT_EQ(rasters.size(), c.colorSpace < 0 ? 0u : 1u) << c.name;
    if (c.colorSpace >= 0) {
      EXPECT_EQ(rasters[0]->raster()->record.colorSpace, c.colorSpace) << c.name;
    }
  }
}

}  // namespace
}  // namespace e2e
