// The horizontal and vertical row functions against a plain per-pixel evaluation of the same
// tables, over many seeded sizes: the left / middle / right split and the unrolled middle run
// must change nothing.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "image_streams/HorizontalResampler.h"
#include "image_streams/VerticalResampler.h"

namespace {

uint8_t clampRound(int32_t sum) { return uint8_t(std::min(std::max((sum + 8192) >> 14, 0), 255)); }

// Every tap clamped to the row, pixel by pixel.
std::vector<uint8_t> perPixel(const dw::HorizontalResampler& h, const std::vector<uint8_t>& row) {
  std::vector<uint8_t> out(size_t(h.destinationWidth) * h.channels);
  for (int32_t x = 0; x < h.destinationWidth; ++x)
    for (uint32_t k = 0; k < h.channels; ++k) {
      int32_t sum = 0;
      for (int32_t j = 0; j < h.taps; ++j) {
        const int32_t column = std::min(std::max(h.start[x] + j, 0), h.sourceWidth - 1);
        sum += h.kernel[h.phaseOffset[x] + j] * row[size_t(column) * h.channels + k];
      }
      out[k * size_t(h.destinationWidth) + size_t(x)] = clampRound(sum);
    }
  return out;
}

const dw::HorizontalResampler::RowPath horizontalPaths[] = {dw::HorizontalResampler::RowPath::Fastest,
                                                            dw::HorizontalResampler::RowPath::Portable};

TEST(HorizontalResampler, RunsMatchPerPixelEvaluation) {
  std::mt19937 random(20240611);
  for (int32_t trial = 0; trial < 4000; ++trial) {
    const auto path = horizontalPaths[trial % 2];
    const uint32_t channels = 1 + random() % 8;
    const uint32_t source = 1 + random() % 300;
    const uint32_t destination = 1 + random() % source;
    dw::HorizontalResampler h;
    ASSERT_TRUE(h.Build(channels, source, destination, path)) << "trial " << trial;
    std::vector<uint8_t> row(size_t(source) * channels);
    // Extreme values make any misplaced tap or missing clamp visible.
    for (uint8_t& v : row) v = (random() & 1) ? 255 : uint8_t(random() & 0x0F);
    std::vector<uint8_t> out(size_t(destination) * channels, 0xAA);
    h.SetOutputs(out.data());
    h.FilterRow(row.data());
    ASSERT_EQ(out, perPixel(h, row)) << "trial " << trial << ": " << source << " -> " << destination << ", " << channels
                                     << " channels, taps " << h.taps
                                     << (path == dw::HorizontalResampler::RowPath::Portable ? ", portable" : "");
    ASSERT_EQ(h.leftCount + h.middleCount + h.rightCount, int32_t(destination)) << "trial " << trial;
  }
}

// Runs: left pixels start before column 0, middle ones keep every tap inside with a column of
// margin, right ones are the rest.
TEST(HorizontalResampler, RunBoundaries) {
  struct Case {
    const char* name;
    uint32_t source, destination;
    int32_t left, middle, right;
  };
  const Case cases[] = {
      {"3 pixels at scale 1", 3, 3, 1, 0, 2},
      {"10 pixels at scale 1", 10, 10, 1, 6, 3},
      {"halving 20 to 10", 20, 10, 2, 6, 2},
      {"2 pixels to 1", 2, 1, 1, 0, 0},
  };
  for (const Case& c : cases) {
    dw::HorizontalResampler h;
    ASSERT_TRUE(h.Build(1, c.source, c.destination)) << c.name;
    EXPECT_EQ(h.leftCount, c.left) << c.name;
    EXPECT_EQ(h.middleCount, c.middle) << c.name;
    EXPECT_EQ(h.rightCount, c.right) << c.name;
  }
}

// A 3-pixel row inside a buffer of 255s: a tap outside the row would show up in the zeros.
TEST(HorizontalResampler, NarrowRowNeverReadsOutside) {
  for (uint32_t channels = 1; channels <= 10; ++channels) {
    const auto path = horizontalPaths[channels % 2];
    const uint32_t channelCount = (channels + 1) / 2;
    std::vector<uint8_t> buffer(64 + 3 * channelCount + 64, 255);
    std::fill_n(buffer.begin() + 64, 3 * channelCount, 0);
    dw::HorizontalResampler h;
    ASSERT_TRUE(h.Build(channelCount, 3, 3, path));
    std::vector<uint8_t> out(3 * channelCount, 0xAA);
    h.SetOutputs(out.data());
    h.FilterRow(buffer.data() + 64);
    EXPECT_EQ(out, std::vector<uint8_t>(3 * channelCount, 0)) << channelCount << " channels, path " << channels % 2;
  }
}

TEST(HorizontalResampler, ClampsOvershoot) {
  // Halving a black-white edge: the negative lobes push the outer pixels below 0 and above 255.
  const std::vector<uint8_t> row = {0, 0, 0, 0, 255, 255, 255, 255};
  dw::HorizontalResampler h;
  ASSERT_TRUE(h.Build(1, 8, 4));
  std::vector<uint8_t> out(4);
  h.SetOutputs(out.data());
  h.FilterRow(row.data());
  int32_t lowest = 0, highest = 0;
  for (int32_t x = 0; x < 4; ++x) {
    int32_t sum = 0;
    for (int32_t j = 0; j < h.taps; ++j)
      sum += h.kernel[h.phaseOffset[x] + j] * row[size_t(std::min(std::max(h.start[x] + j, 0), 7))];
    lowest = std::min(lowest, sum);
    highest = std::max(highest, sum);
  }
  ASSERT_LT(lowest, 0) << "the edge must overshoot below";
  ASSERT_GT(highest, 255 * 16384) << "the edge must overshoot above";
  EXPECT_EQ(out.front(), 0);
  EXPECT_EQ(out.back(), 255);
  EXPECT_EQ(out, perPixel(h, row));
}

TEST(HorizontalResampler, RefusesWhatItsFieldsCannotHold) {
  dw::HorizontalResampler h;
  EXPECT_FALSE(h.Build(0, 10, 5)) << "no channels";
  EXPECT_FALSE(h.Build(9, 10, 5)) << "nine channels";
  EXPECT_FALSE(h.Build(3, 40000, 5)) << "wider than 16 bits";
  EXPECT_FALSE(h.Build(3, 10, 0)) << "empty destination";
}

TEST(VerticalResampler, RowFunctionMatchesPerPixelEvaluation) {
  std::mt19937 random(77);
  for (int32_t trial = 0; trial < 1000; ++trial) {
    const auto path = trial % 2 ? dw::VerticalResampler::RowPath::Portable : dw::VerticalResampler::RowPath::Fastest;
    const uint32_t channels = 1 + random() % 8;
    const uint32_t source = 2 + random() % 200;
    const uint32_t destination = 1 + random() % source;
    const int16_t width = int16_t(1 + random() % 40);
    dw::VerticalResampler v;
    ASSERT_TRUE(v.Build(channels, source, destination, path));
    v.outputWidth = width;
    v.phaseOffset = uint8_t((random() % 32) * uint32_t(v.taps));
    std::vector<std::vector<uint8_t>> rows(size_t(v.taps) * channels, std::vector<uint8_t>(size_t(width)));
    for (uint32_t k = 0; k < channels; ++k)
      for (int32_t t = 0; t < v.taps; ++t) {
        auto& row = rows[k * size_t(v.taps) + size_t(t)];
        for (uint8_t& value : row) value = (random() & 1) ? 255 : 0;
        v.rows[k][t] = row.data();
      }
    std::vector<uint8_t> out(size_t(width) * channels);
    v.FilterRow(out.data());
    for (int32_t x = 0; x < width; ++x)
      for (uint32_t k = 0; k < channels; ++k) {
        int32_t sum = 0;
        for (int32_t t = 0; t < v.taps; ++t) sum += v.kernel[v.phaseOffset + t] * v.rows[k][t][x];
        ASSERT_EQ(out[size_t(x) * channels + k], clampRound(sum))
            << "trial " << trial << " x " << x << " channel " << k << " taps " << v.taps << " path " << trial % 2;
      }
  }
}

}  // namespace
