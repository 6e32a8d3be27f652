#include <gtest/gtest.h>

#include <vector>

#include "engine/Accelerator.h"
#include "engine/Background.h"
#include "engine/Downsampler.h"
#include "engine/RasterTypes.h"
#include "settings/RasterizeSettings.h"
#include "shell/FourCharCode.h"
#include "tests/engine/FakeHost.h"
#include "tests/engine/ReferenceDownsample.h"

namespace dw {
namespace {

using fake::FakeHost;

// One slot's worth of buffers and the values a Downsampler points at.
struct Slot {
  Slot(int32_t type, int16_t factor, int32_t width, int32_t rows) : factor(factor) {
    settings.type = type;
    channels = rasterTypeInfo(type).channels;
    const int32_t bits = rasterBitsPerPixel(type, channels);
    tileWidth = width;
    tileRows = rows;
    tileStride = int32_t(rowStride(bits, width));
    superWidth = factor * width;
    superRows = factor * rows;
    superStride = int32_t(rowStride(bits, superWidth));
    tile.assign(size_t(tileStride) * rows, 0x33);
    super.resize(size_t(superStride) * superRows);
    uint32_t state = 99;
    for (auto& b : super) b = uint8_t((state = state * 1103515245u + 12345u) >> 16);
  }

  Downsampler make(bool refill) {
    return Downsampler(&settings, &factor, &channels, &space, refill, &tileWidth, &tileRows, &tileStride, tile.data(),
                       &superWidth, &superRows, &superStride, super.data());
  }

  RasterizeSettings settings{};
  int16_t factor;
  int32_t channels;
  ColorSpace space;
  int32_t tileWidth, tileRows, tileStride, superWidth, superRows, superStride;
  std::vector<uint8_t> tile, super;
};

TEST(Downsampler, ReducesAndRefillsOnlyWhenAsked) {
  FakeHost host;
  for (int32_t type : {kRasterTypeRgb, kRasterTypeCmykTransparent, kRasterTypeGrayscaleTransparent}) {
    for (bool refill : {false, true}) {
      Slot slot(type, 4, 9, 3);
      const std::vector<uint8_t> drawn = slot.super;
      std::vector<uint8_t> expected = slot.tile;
      // Transparent tiles start from the background before the reduction.
      if (hasAlpha(type)) fillBackground(type, false, nullptr, 9, 3, slot.tileStride, expected.data());
      test_support::referenceDownsample(hasAlpha(type), 4, slot.channels, drawn.data(), slot.superStride,
                                        expected.data(), slot.tileStride, 9, 3);
      Downsampler work = slot.make(refill);
      work.run();
      EXPECT_EQ(work.result(), kDWNoErr);
      EXPECT_EQ(slot.tile, expected) << "type " << type;
      if (!refill) {
        EXPECT_EQ(slot.super, drawn) << "left as drawn, type " << type;
      } else {
        const BackgroundPixel pixel = backgroundPixel(type, false, nullptr);
        for (int32_t y = 0; y < slot.superRows; ++y)
          for (int32_t i = 0; i < slot.superWidth * pixel.size; ++i)
            ASSERT_EQ(slot.super[size_t(y) * slot.superStride + i], pixel.bytes[i % pixel.size]) << "type " << type;
      }
    }
  }
}

class AcceleratedDownsampler : public ::testing::Test {
 protected:
  void SetUp() override {
    host.acceleratorAvailable = true;
    host.acceleratorEnabled = 1;
    ASSERT_TRUE(acceleratorEnabled());
  }
  FakeHost host;
};

TEST_F(AcceleratedDownsampler, WholePixelsFirst) {
  Slot slot(kRasterTypeRgb, 4, 5, 2);
  slot.make(false).run();
  ASSERT_EQ(host.reductions.size(), 1u);
  const fake::Descriptor& d = host.reductions[0];
  EXPECT_EQ(d.call, "ReducePixels");
  EXPECT_EQ(d.source.base, slot.super.data());
  EXPECT_EQ(d.source.rows, 8);
  EXPECT_EQ(d.source.rowBytes, slot.superStride);
  EXPECT_EQ(d.source.columns, 20);
  EXPECT_EQ(d.source.pixelBytes, 3);
  EXPECT_EQ(d.destination.base, slot.tile.data());
  EXPECT_EQ(d.destination.rows, 2);
  EXPECT_EQ(d.destination.rowBytes, slot.tileStride);
  EXPECT_EQ(d.destination.columns, 5);
  EXPECT_EQ(d.destination.pixelBytes, 3);
  EXPECT_EQ(d.factor, 4);
}

TEST_F(AcceleratedDownsampler, ChannelByChannelWhenPixelsAreRefused) {
  host.reducePixelsResult = fourCharError("NOPE");
  Slot slot(kRasterTypeCmyk, 2, 4, 2);
  Downsampler work = slot.make(false);
  work.run();
  EXPECT_EQ(work.result(), kDWNoErr);
  ASSERT_EQ(host.reductions.size(), 5u);
  for (int k = 0; k < 4; ++k) {
    const fake::Descriptor& d = host.reductions[size_t(1 + k)];
    EXPECT_EQ(d.call, "ReduceChannel");
    EXPECT_EQ(d.source.base, slot.super.data() + k) << "channel " << k;
    EXPECT_EQ(d.destination.base, slot.tile.data() + k) << "channel " << k;
  }
}

TEST_F(AcceleratedDownsampler, AlphaFirstThenWeightedColour) {
  host.reducePixelsResult = fourCharError("NOPE");
  Slot slot(kRasterTypeRgbTransparent, 4, 4, 2);
  slot.make(false).run();
  ASSERT_EQ(host.reductions.size(), 5u);
  EXPECT_EQ(host.reductions[0].call, "ReducePixelsWithAlpha");
  EXPECT_EQ(host.reductions[0].alpha.base, slot.super.data());
  EXPECT_EQ(host.reductions[1].call, "ReduceChannel");
  EXPECT_EQ(host.reductions[1].source.base, slot.super.data()) << "the alpha channel";
  EXPECT_EQ(host.reductions[1].destination.base, slot.tile.data());
  for (int k = 1; k < 4; ++k) {
    const fake::Descriptor& d = host.reductions[size_t(1 + k)];
    EXPECT_EQ(d.call, "ReduceChannelWeighted");
    EXPECT_EQ(d.source.base, slot.super.data() + k);
    EXPECT_EQ(d.alpha.base, slot.super.data()) << "alpha stays on channel 0";
    EXPECT_EQ(d.destination.base, slot.tile.data() + k);
  }
}

TEST_F(AcceleratedDownsampler, FirstChannelErrorStopsAndIsReturned) {
  host.reducePixelsResult = fourCharError("NOPE");
  host.reduceChannelResult = fourCharError("CHAN");
  for (int32_t type : {kRasterTypeCmyk, kRasterTypeCmykTransparent}) {
    host.reductions.clear();
    Slot slot(type, 2, 4, 2);
    Downsampler work = slot.make(false);
    work.run();
    EXPECT_EQ(work.result(), fourCharError("CHAN")) << "type " << type;
    EXPECT_EQ(host.reductions.size(), 2u) << "the pixel call and one channel, type " << type;
  }
}

}  // namespace
}  // namespace dw
