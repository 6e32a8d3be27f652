// The bicubic stream: exact copies at scale 1, the row set at the image's edges and at large
// steps, bands under a tiny budget, and agreement with a double-precision evaluation.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "BicubicOracle.h"
#include "fakes/StreamFakeHost.h"
#include "fakes/StreamRun.h"
#include "image_streams/BicubicImageStream.h"
#include "shell/FourCharCode.h"

namespace {

using streams_test::Image;
using streams_test::makeImage;
using streams_test::randomImage;
using streams_test::runStream;
using streams_test::StreamFakeHost;

int32_t largestDifference(const Image& a, const Image& b) {
  int32_t largest = 0;
  for (size_t i = 0; i < a.data.size(); ++i)
    largest = std::max(largest, std::abs(int32_t(a.data[i]) - int32_t(b.data[i])));
  return largest;
}

struct Size {
  int32_t sw, sh, w, h, channels;
};

std::ostream& operator<<(std::ostream& out, const Size& s) {
  return out << s.sw << "x" << s.sh << " -> " << s.w << "x" << s.h << " (" << s.channels << " channels)";
}

TEST(BicubicImageStream, EqualSizesCopyExactly) {
  const Size sizes[] = {{1, 1, 1, 1, 1}, {3, 3, 3, 3, 3}, {2, 5, 2, 5, 4}, {40, 31, 40, 31, 5}, {9, 200, 9, 200, 2}};
  uint32_t seed = 40;
  for (const Size& s : sizes) {
    StreamFakeHost host;
    const Image source = randomImage(s.sw, s.sh, s.channels, seed++);
    const auto result = runStream<dw::BicubicImageStream>(host, host.addRaster(source), s.w, s.h);
    ASSERT_TRUE(result.succeeded) << s;
    EXPECT_EQ(result.image.data, source.data) << s;
  }
}

// Two rows to one: table 4 at phase 16 puts taps -3 .. 4 over rows 0 and 1; the four above
// the image repeat row 0, the four below repeat row 1, so row 1 gets 8192 of 16384.
TEST(BicubicImageStream, TwoRowsRepeatTheEdgeRows) {
  StreamFakeHost host;
  Image source = makeImage(4, 2, 1);
  for (int32_t x = 0; x < 4; ++x) source.at(x, 1, 0) = 255;
  const auto result = runStream<dw::BicubicImageStream>(host, host.addRaster(source), 4, 1);
  ASSERT_TRUE(result.succeeded);
  for (int32_t x = 0; x < 4; ++x) EXPECT_EQ(result.image.at(x, 0, 0), 128) << "x " << x;
}

TEST(BicubicImageStream, ThreePixelsWideAtScaleOne) {
  StreamFakeHost host;
  const Image source = randomImage(3, 6, 3, 5);
  const auto result = runStream<dw::BicubicImageStream>(host, host.addRaster(source), 3, 6);
  ASSERT_TRUE(result.succeeded);
  EXPECT_EQ(result.image.data, source.data);
}

// Each of these sizes against the double-precision oracle: within one level everywhere.
const Size oracleSizes[] = {
    {37, 23, 11, 7, 3},  {64, 64, 20, 20, 4}, {100, 50, 97, 49, 3}, {100, 100, 80, 70, 1},
    {90, 90, 60, 60, 5}, {50, 80, 29, 45, 2}, {41, 43, 40, 42, 3},  {160, 40, 8, 2, 3},
    {12, 160, 12, 8, 1}, {200, 3, 64, 1, 4},  {3, 7, 1, 2, 3},      {257, 129, 80, 40, 3},
    {33, 17, 33, 8, 6},  {17, 33, 8, 33, 8},  {5, 2, 5, 1, 1},      {320, 20, 100, 19, 3},
};

TEST(BicubicImageStream, MatchesDoublePrecisionOracle) {
  uint32_t seed = 1000;
  for (const Size& s : oracleSizes) {
    for (int32_t repeat = 0; repeat < 3; ++repeat) {
      StreamFakeHost host;
      const Image source = randomImage(s.sw, s.sh, s.channels, seed++);
      const auto result = runStream<dw::BicubicImageStream>(host, host.addRaster(source), s.w, s.h);
      ASSERT_TRUE(result.succeeded) << s;
      EXPECT_LE(largestDifference(result.image, streams_test::bicubicOracle(source, s.w, s.h)), 1)
          << s << " seed " << seed;
    }
  }
}

// 20:1 vertically: the step between row sets (20) is larger than the taps (8), so the rows in
// between are read past; each row set must still hold exactly its own 8 rows.
TEST(BicubicImageStream, TwentyToOneRowSets) {
  StreamFakeHost host;
  Image source = makeImage(4, 200, 1);
  for (int32_t y = 0; y < 200; ++y)
    for (int32_t x = 0; x < 4; ++x) source.at(x, y, 0) = uint8_t(y);
  const auto result = runStream<dw::BicubicImageStream>(host, host.addRaster(source), 4, 10);
  ASSERT_TRUE(result.succeeded);
  const Image expected = streams_test::bicubicOracle(source, 4, 10);
  for (int32_t y = 0; y < 10; ++y) {
    // Rows 20y + 6 .. 20y + 13 carry the weights; on a ramp the result sits at their centre.
    EXPECT_LE(std::abs(int32_t(result.image.at(0, y, 0)) - int32_t(expected.at(0, y, 0))), 1) << "row " << y;
    if (y > 0 && y < 9) {
      EXPECT_NEAR(result.image.at(0, y, 0), 20 * y + 9.5, 1.0) << "row " << y;
    }
  }
}

// Bands of one row with a source band of 9 rows give the same pixels as one band.
TEST(BicubicImageStream, TinyBudgetBandsEqualOneBand) {
  const Size sizes[] = {{60, 200, 20, 10, 3}, {40, 40, 13, 13, 4}, {30, 30, 30, 30, 1}, {16, 45, 8, 41, 2},
                        {20, 2, 7, 1, 3},     {50, 90, 45, 30, 3}, {8, 100, 8, 5, 1}};
  uint32_t seed = 77;
  for (const Size& s : sizes) {
    const Image source = randomImage(s.sw, s.sh, s.channels, seed++);
    Image whole;
    {
      StreamFakeHost host;
      const auto result = runStream<dw::BicubicImageStream>(host, host.addRaster(source), s.w, s.h);
      ASSERT_TRUE(result.succeeded) << s;
      whole = result.image;
    }
    for (uint32_t bufferRows : {1u, 2u, 3u, 7u}) {
      StreamFakeHost host;
      host.setBudgetMiB(0);
      const auto result = runStream<dw::BicubicImageStream>(host, host.addRaster(source), s.w, s.h, bufferRows);
      ASSERT_TRUE(result.succeeded) << s << " buffer rows " << bufferRows;
      EXPECT_EQ(result.image.data, whole.data) << s << " buffer rows " << bufferRows;
      const size_t bandBytes = size_t(s.sw) * s.channels * 9;
      EXPECT_LE(host.peakBlockBytes, bandBytes) << s << ": the source band holds 9 rows";
      if (s.sh > 9) {
        EXPECT_GT(host.reads.size(), 1u) << s << ": rows stream through the band";
      }
    }
  }
}

TEST(BicubicImageStream, SourceBandIsATenthOfTheBudget) {
  StreamFakeHost host;
  host.setBudgetMiB(1);
  const Image source = randomImage(1000, 2000, 1, 3);
  const auto result = runStream<dw::BicubicImageStream>(host, host.addRaster(source), 300, 600);
  ASSERT_TRUE(result.succeeded);
  EXPECT_EQ(host.blockRequests.front(), size_t(104857 / 1000 * 1000));
  EXPECT_LE(largestDifference(result.image, streams_test::bicubicOracle(source, 300, 600)), 1);
}

TEST(BicubicImageStream, FailuresEndTheRun) {
  const DWErr failure = dw::fourCharError("rERR");
  {
    StreamFakeHost host;
    DWArtHandle source = host.addRaster(randomImage(20, 20, 3, 1));
    host.blockCap = 0;
    EXPECT_FALSE(runStream<dw::BicubicImageStream>(host, source, 10, 10).succeeded) << "no source band";
    EXPECT_TRUE(host.writes.empty()) << "no source band";
  }
  {
    StreamFakeHost host;
    host.setBudgetMiB(0);
    DWArtHandle source = host.addRaster(randomImage(20, 40, 3, 1));
    host.failCall("ReadRasterTile", 2, failure);
    const auto result = runStream<dw::BicubicImageStream>(host, source, 10, 20, 2);
    EXPECT_FALSE(result.succeeded) << "read failure at the second refill";
    EXPECT_GE(host.writes.size(), 1u) << "bands before the failure stay";
    EXPECT_EQ(host.liveBlocks, 0u);
  }
}

TEST(BicubicImageStream, RefusesMoreThanEightChannels) {
  StreamFakeHost host;
  DWArtHandle source = host.addRaster(randomImage(10, 10, 9, 1));
  EXPECT_FALSE(runStream<dw::BicubicImageStream>(host, source, 5, 5).succeeded);
  EXPECT_TRUE(host.writes.empty());
}

}  // namespace
