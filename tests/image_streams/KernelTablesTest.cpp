// The five weight tables, the choice of table and the sample grid.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "image_streams/ResampleKernel.h"
#include "image_streams/SamplePosition.h"

namespace {

std::vector<int16_t> phaseRow(int32_t table, int32_t phase) {
  const dw::ResampleKernel& kernel = dw::resampleKernel(table);
  return std::vector<int16_t>(kernel.weights + phase * kernel.taps, kernel.weights + (phase + 1) * kernel.taps);
}

TEST(KernelTables, TellingRows) {
  struct Case {
    const char* name;
    int32_t table;
    int32_t phase;
    std::vector<int16_t> weights;
  };
  const Case cases[] = {
      {"table 0 phase 0 copies", 0, 0, {0, 16384, 0, 0}},
      {"table 0 phase 16", 0, 16, {-1536, 9728, 9728, -1536}},
      {"table 4 phase 0", 4, 0, {-768, 0, 4864, 8192, 4864, 0, -768, 0}},
      {"table 4 phase 16 (halving)", 4, 16, {-288, -864, 2144, 7200, 7200, 2144, -864, -288}},
  };
  for (const Case& c : cases) EXPECT_EQ(phaseRow(c.table, c.phase), c.weights) << c.name;
}

TEST(KernelTables, TapsAndScales) {
  const int16_t taps[] = {4, 6, 6, 8, 8};
  const double scales[] = {1.0, 0.8409, 0.7071, 0.5946, 0.5};
  for (int32_t table = 0; table < dw::resampleKernelCount; ++table) {
    EXPECT_EQ(dw::resampleKernel(table).taps, taps[table]) << "table " << table;
    EXPECT_NEAR(dw::resampleKernel(table).scale, scales[table], 1e-4) << "table " << table;
  }
}

// Each phase sums to one exactly and stays within one rounding step (plus the share the largest
// weight absorbs) of the real kernel.
TEST(KernelTables, EveryPhaseSumsToOneAndFollowsTheKernel) {
  for (int32_t table = 0; table < dw::resampleKernelCount; ++table) {
    const dw::ResampleKernel& kernel = dw::resampleKernel(table);
    const int32_t centre = (kernel.taps - 1) / 2;
    for (int32_t phase = 0; phase < dw::resamplePhases; ++phase) {
      const std::vector<int16_t> row = phaseRow(table, phase);
      int32_t sum = 0;
      for (int16_t w : row) sum += w;
      EXPECT_EQ(sum, 16384) << "table " << table << " phase " << phase;

      double exact[8];
      double total = 0;
      for (int32_t j = 0; j < kernel.taps; ++j) {
        const double x = std::abs((j - centre - phase / 32.0) * std::pow(2.0, -table / 4.0));
        exact[j] = x < 1   ? 1.25 * x * x * x - 2.25 * x * x + 1
                   : x < 2 ? -0.75 * x * x * x + 3.75 * x * x - 6 * x + 3
                           : 0;
        total += exact[j];
      }
      for (int32_t j = 0; j < kernel.taps; ++j)
        EXPECT_LE(std::abs(row[size_t(j)] - exact[j] * 16384 / total), 0.5 + kernel.taps * 0.5)
            << "table " << table << " phase " << phase << " tap " << j;
    }
  }
}

TEST(KernelTables, ChoiceByScale) {
  struct Case {
    double scale;
    int32_t table;
  };
  const Case cases[] = {{1.0, 0},    {0.917, 0}, {0.9169, 1}, {0.771, 1},  {0.7709, 2}, {0.648, 2},
                        {0.6479, 3}, {0.545, 3}, {0.5449, 4}, {0.3125, 4}, {0.05, 4}};
  for (const Case& c : cases) EXPECT_EQ(dw::chooseResampleKernel(c.scale), c.table) << "scale " << c.scale;
}

// The scale is a single-precision quotient: 917 of 1000 lands just below 0.917.
TEST(KernelTables, ScaleIsComputedInSinglePrecision) {
  EXPECT_EQ(dw::resampleScale(1000, 917), double(917.0f / 1000.0f));
  EXPECT_EQ(dw::chooseResampleKernel(dw::resampleScale(1000, 918)), 0);
  EXPECT_EQ(dw::chooseResampleKernel(dw::resampleScale(1000, 917)), 1);
  EXPECT_EQ(dw::chooseResampleKernel(dw::resampleScale(100, 50)), 4);
}

TEST(SamplePositions, GridAndClamping) {
  struct Case {
    const char* name;
    uint32_t i, source, destination;
    int32_t taps;
    int32_t start;
    uint8_t phaseOffset;
  };
  const Case cases[] = {
      {"scale 1 pixel 0", 0, 10, 10, 4, -1, 0},
      {"scale 1 pixel 7", 7, 10, 10, 4, 6, 0},
      {"halving pixel 0 samples 0.5", 0, 20, 10, 8, -3, 16 * 8},
      {"halving pixel 4 samples 8.5", 4, 20, 10, 8, 5, 16 * 8},
      {"ratio 3 pixel 2 samples 7", 2, 30, 10, 8, 4, 0},
      {"one row from two samples 0.5", 0, 2, 1, 8, -3, 16 * 8},
      {"ratio 1.6 pixel 0 samples 0.3", 0, 16, 10, 6, -2, 10 * 6},
  };
  for (const Case& c : cases) {
    const dw::SamplePosition p = dw::samplePosition(c.i, 0, c.source, 0, c.destination, c.taps);
    EXPECT_EQ(p.start, c.start) << c.name;
    EXPECT_EQ(p.phaseOffset, c.phaseOffset) << c.name;
  }
}

// Positions before the first pixel centre clamp to 0, never negative.
TEST(SamplePositions, ClampedAtZero) {
  const dw::SamplePosition p = dw::samplePosition(0, 0, 5, 0, 10, 4);
  EXPECT_EQ(p.start, -1);
  EXPECT_EQ(p.phaseOffset, 0);
}

}  // namespace
