// The area-average and nearest-sample streams: which source pixels each destination pixel
// takes, how the averages truncate, and that bands follow the memory budget.
#include <gtest/gtest.h>

#include <vector>

#include "fakes/StreamFakeHost.h"
#include "fakes/StreamRun.h"
#include "image_streams/AntiAliasImageStream.h"
#include "image_streams/DownSampleImageStream.h"
#include "shell/FourCharCode.h"

namespace {

using streams_test::Image;
using streams_test::makeImage;
using streams_test::runStream;
using streams_test::StreamFakeHost;

// Block averages written out plainly: blocks from trunc(i * ratio), row sums truncated by the
// block width, then the sum of rows truncated by the block height.
Image areaAverage(const Image& source, int32_t width, int32_t height) {
  auto edges = [](int32_t from, int32_t to) {
    std::vector<int32_t> e;
    for (int32_t i = 0; i < to; ++i) e.push_back(int32_t(i * (double(from) / to)));
    e.push_back(from);
    return e;
  };
  const std::vector<int32_t> columns = edges(source.width, width), rows = edges(source.height, height);
  Image out = makeImage(width, height, source.channels);
  for (int32_t y = 0; y < height; ++y)
    for (int32_t x = 0; x < width; ++x)
      for (int32_t k = 0; k < source.channels; ++k) {
        uint32_t total = 0;
        for (int32_t r = rows[size_t(y)]; r < rows[size_t(y) + 1]; ++r) {
          uint32_t rowSum = 0;
          for (int32_t c = columns[size_t(x)]; c < columns[size_t(x) + 1]; ++c) rowSum += source.at(c, r, k);
          total += rowSum / uint32_t(columns[size_t(x) + 1] - columns[size_t(x)]);
        }
        out.at(x, y, k) = uint8_t(total / uint32_t(rows[size_t(y) + 1] - rows[size_t(y)]));
      }
  return out;
}

TEST(AntiAliasImageStream, BothAveragesTruncate) {
  struct Case {
    const char* name;
    uint8_t topLeft, topRight, bottomLeft, bottomRight, expected;
  };
  const Case cases[] = {
      {"rows 255 and 254 give 254", 255, 255, 254, 254, 254},
      {"columns 255 and 254 give 254 (not 254.5 rounded)", 255, 254, 255, 254, 254},
      {"1 and 0 give 0", 1, 0, 0, 0, 0},
      {"equal values stay", 77, 77, 77, 77, 77},
  };
  for (const Case& c : cases) {
    StreamFakeHost host;
    Image source = makeImage(2, 2, 1);
    source.at(0, 0, 0) = c.topLeft;
    source.at(1, 0, 0) = c.topRight;
    source.at(0, 1, 0) = c.bottomLeft;
    source.at(1, 1, 0) = c.bottomRight;
    const auto result = runStream<dw::AntiAliasImageStream>(host, host.addRaster(source), 1, 1);
    ASSERT_TRUE(result.succeeded) << c.name;
    EXPECT_EQ(result.image.at(0, 0, 0), c.expected) << c.name;
  }
}

// Source pixel values name their column, so the averages reveal the blocks.
TEST(AntiAliasImageStream, ColumnBlocks) {
  struct Case {
    const char* name;
    int32_t sourceWidth, width;
    std::vector<uint8_t> expected;
  };
  const Case cases[] = {
      {"ratio 1.5 alternates blocks of 1 and 2", 6, 4, {0, 15, 30, 45}},
      {"ratio 2", 8, 4, {5, 25, 45, 65}},
      {"width 1 averages the whole row", 5, 1, {20}},
      {"ratio 1 copies", 4, 4, {0, 10, 20, 30}},
  };
  for (const Case& c : cases) {
    StreamFakeHost host;
    Image source = makeImage(c.sourceWidth, 3, 1);
    for (int32_t y = 0; y < 3; ++y)
      for (int32_t x = 0; x < c.sourceWidth; ++x) source.at(x, y, 0) = uint8_t(10 * x);
    const auto result = runStream<dw::AntiAliasImageStream>(host, host.addRaster(source), c.width, 3);
    ASSERT_TRUE(result.succeeded) << c.name;
    for (int32_t x = 0; x < c.width; ++x)
      EXPECT_EQ(result.image.at(x, 1, 0), c.expected[size_t(x)]) << c.name << " x " << x;
  }
}

TEST(AntiAliasImageStream, AlphaDoesNotWeightColour) {
  StreamFakeHost host;
  Image source = makeImage(2, 1, 2);
  source.at(0, 0, 0) = 0;  // transparent
  source.at(0, 0, 1) = 200;
  source.at(1, 0, 0) = 255;  // opaque
  source.at(1, 0, 1) = 0;
  const auto result = runStream<dw::AntiAliasImageStream>(host, host.addRaster(source), 1, 1);
  ASSERT_TRUE(result.succeeded);
  EXPECT_EQ(result.image.at(0, 0, 0), 127);
  EXPECT_EQ(result.image.at(0, 0, 1), 100);
}

TEST(AntiAliasImageStream, MatchesPlainBlockAverages) {
  struct Case {
    int32_t sw, sh, w, h, channels;
  };
  const Case cases[] = {{37, 23, 11, 7, 3},  {64, 64, 20, 20, 4}, {100, 9, 33, 4, 1},
                        {50, 50, 49, 48, 5}, {17, 300, 5, 13, 2}, {80, 80, 25, 25, 7}};
  uint32_t seed = 1;
  for (const Case& c : cases) {
    StreamFakeHost host;
    const Image source = streams_test::randomImage(c.sw, c.sh, c.channels, seed++);
    const auto result = runStream<dw::AntiAliasImageStream>(host, host.addRaster(source), c.w, c.h);
    ASSERT_TRUE(result.succeeded) << c.sw << "x" << c.sh << " -> " << c.w << "x" << c.h;
    EXPECT_EQ(result.image.data, areaAverage(source, c.w, c.h).data)
        << c.sw << "x" << c.sh << " -> " << c.w << "x" << c.h;
  }
}

// With no budget at all every band is one destination row that fetches exactly its block.
TEST(AntiAliasImageStream, TightBudgetGivesOneRowBands) {
  StreamFakeHost host;
  host.setBudgetMiB(0);
  const Image source = streams_test::randomImage(30, 30, 3, 9);
  const auto result = runStream<dw::AntiAliasImageStream>(host, host.addRaster(source), 12, 12);
  ASSERT_TRUE(result.succeeded);
  EXPECT_EQ(result.image.data, areaAverage(source, 12, 12).data);
  ASSERT_EQ(host.reads.size(), 12u);
  for (int32_t y = 0; y < 12; ++y) {
    EXPECT_EQ(host.reads[size_t(y)].slice.top, int32_t(y * 2.5)) << "row " << y;
    EXPECT_EQ(host.reads[size_t(y)].slice.bottom, y == 11 ? 30 : int32_t((y + 1) * 2.5)) << "row " << y;
  }
  EXPECT_EQ(host.writes.size(), 12u);
}

TEST(AntiAliasImageStream, FailuresEndTheRun) {
  {
    StreamFakeHost host;
    DWArtHandle source = host.addRaster(streams_test::randomImage(20, 20, 3, 3));
    host.blockCap = 0;
    EXPECT_FALSE(runStream<dw::AntiAliasImageStream>(host, source, 10, 10).succeeded) << "no scratch";
    EXPECT_TRUE(host.writes.empty()) << "no scratch";
  }
  {
    StreamFakeHost host;
    host.setBudgetMiB(0);
    DWArtHandle source = host.addRaster(streams_test::randomImage(20, 20, 3, 3));
    host.failCall("ReadRasterTile", 2, dw::fourCharError("rERR"));
    const auto result = runStream<dw::AntiAliasImageStream>(host, source, 10, 10);
    EXPECT_FALSE(result.succeeded) << "read failure";
    EXPECT_EQ(host.writes.size(), 1u) << "read failure on the second band";
    EXPECT_EQ(host.liveBlocks, 0u);
  }
}

// Channel 0 names the source column, channel 1 the source row.
Image coordinates(int32_t width, int32_t height) {
  Image image = makeImage(width, height, 2);
  for (int32_t y = 0; y < height; ++y)
    for (int32_t x = 0; x < width; ++x) {
      image.at(x, y, 0) = uint8_t(x);
      image.at(x, y, 1) = uint8_t(y);
    }
  return image;
}

TEST(DownSampleImageStream, SampledColumnsAndRows) {
  struct Case {
    const char* name;
    int32_t sw, sh, w, h;
    std::vector<uint8_t> columns, rows;
  };
  const Case cases[] = {
      {"ratio 2", 8, 8, 4, 4, {0, 2, 4, 6}, {0, 2, 4, 6}},
      {"ratio 3 across", 9, 4, 3, 4, {0, 3, 6}, {0, 1, 2, 3}},
      {"ratio 2.5 across", 25, 5, 10, 2, {0, 2, 5, 7, 10, 12, 15, 17, 20, 22}, {0, 2}},
      {"one row takes row 0", 6, 9, 3, 1, {0, 2, 4}, {0}},
      {"ratio 1 copies", 5, 3, 5, 3, {0, 1, 2, 3, 4}, {0, 1, 2}},
  };
  for (const Case& c : cases) {
    StreamFakeHost host;
    const auto result = runStream<dw::DownSampleImageStream>(host, host.addRaster(coordinates(c.sw, c.sh)), c.w, c.h);
    ASSERT_TRUE(result.succeeded) << c.name;
    for (int32_t y = 0; y < c.h; ++y)
      for (int32_t x = 0; x < c.w; ++x) {
        EXPECT_EQ(result.image.at(x, y, 0), c.columns[size_t(x)]) << c.name << " at " << x << "," << y;
        EXPECT_EQ(result.image.at(x, y, 1), c.rows[size_t(y)]) << c.name << " at " << x << "," << y;
      }
    EXPECT_EQ(host.reads.size(), size_t(c.h)) << c.name << ": one read per destination row";
  }
}

TEST(DownSampleImageStream, EqualSizesCopyEveryChannel) {
  for (int32_t channels = 1; channels <= 8; ++channels) {
    StreamFakeHost host;
    const Image source = streams_test::randomImage(13, 7, channels, uint32_t(channels));
    const auto result = runStream<dw::DownSampleImageStream>(host, host.addRaster(source), 13, 7, 3);
    ASSERT_TRUE(result.succeeded) << channels << " channels";
    EXPECT_EQ(result.image.data, source.data) << channels << " channels";
  }
}

TEST(DownSampleImageStream, ReadFailureEndsTheRun) {
  const DWErr failure = dw::fourCharError("rERR");
  StreamFakeHost host;
  DWArtHandle source = host.addRaster(coordinates(8, 8));
  host.failCall("ReadRasterTile", 3, failure);
  const auto result = runStream<dw::DownSampleImageStream>(host, source, 4, 4, 2);
  EXPECT_FALSE(result.succeeded);
  EXPECT_EQ(host.writes.size(), 1u) << "the first band of two rows is written";
  EXPECT_EQ(host.liveBlocks, 0u);
}

}  // namespace
