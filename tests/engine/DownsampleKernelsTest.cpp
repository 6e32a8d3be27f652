#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "engine/AlphaReciprocal.h"
#include "engine/DownsampleKernels.h"
#include "engine/RasterTypes.h"
#include "tests/engine/ReferenceDownsample.h"

namespace dw {
namespace {

struct KernelCase {
  bool alpha;
  int32_t factor;
  int32_t channels;
  int32_t width;
  int32_t rows;
};

std::string describe(const KernelCase& k, uint32_t seed) {
  return std::string(k.alpha ? "alpha" : "opaque") + " f=" + std::to_string(k.factor) +
         " c=" + std::to_string(k.channels) + " " + std::to_string(k.width) + "x" + std::to_string(k.rows) +
         " seed=" + std::to_string(seed);
}

// Random content with the cases that matter for alpha weighting: many samples fully transparent,
// some blocks entirely so, and opaque runs.
void fillContent(std::vector<uint8_t>& buffer, int32_t c, bool alpha, std::mt19937& random) {
  std::uniform_int_distribution<int> byte(0, 255), pick(0, 7);
  for (auto& b : buffer) b = uint8_t(byte(random));
  if (!alpha) return;
  for (size_t i = 0; i + size_t(c) <= buffer.size(); i += size_t(c)) {
    const int p = pick(random);
    if (p < 3) buffer[i] = 0;
    if (p == 3) buffer[i] = 255;
  }
}

void runCase(const KernelCase& k, uint32_t seed) {
  std::mt19937 random(seed);
  const int32_t bits = 8 * k.channels;
  const int32_t tileStride = int32_t(rowStride(bits, k.width)) + 4 * (seed % 3);
  const int32_t superStride = int32_t(rowStride(bits, int64_t(k.width) * k.factor)) + 4 * (seed % 2);
  std::vector<uint8_t> super(size_t(superStride) * k.rows * k.factor);
  fillContent(super, k.channels, k.alpha, random);
  // Whole transparent blocks: their colour bytes must survive.
  if (k.alpha)
    for (int32_t y = 0; y < k.rows * k.factor; ++y)
      for (int32_t x = 0; x < k.factor && x < k.width * k.factor; ++x)
        super[size_t(y) * superStride + size_t(x) * k.channels] = 0;
  std::vector<uint8_t> expected(size_t(tileStride) * k.rows);
  for (auto& b : expected) b = uint8_t(random());
  std::vector<uint8_t> actual = expected;

  test_support::referenceDownsample(k.alpha, k.factor, k.channels, super.data(), superStride, expected.data(), tileStride,
                               k.width, k.rows);
  DownsampleTile t;
  t.super = super.data();
  t.superStride = superStride;
  t.tile = actual.data();
  t.tileStride = tileStride;
  t.tileWidth = k.width;
  t.tileRows = k.rows;
  t.channels = k.channels;
  t.factor = k.factor;
  if (k.alpha)
    downsampleWithAlpha(t);
  else
    downsampleOpaque(t);
  ASSERT_EQ(expected, actual) << describe(k, seed);
}

// Every kernel runs once with the 256-bit steps (where the processor has them) and once without.
class DownsampleKernels : public ::testing::TestWithParam<bool> {
 protected:
  void SetUp() override { engine_testing::allowWideVectors(GetParam()); }
  void TearDown() override { engine_testing::allowWideVectors(true); }
};

INSTANTIATE_TEST_SUITE_P(VectorWidths, DownsampleKernels, ::testing::Values(true, false),
                         [](const ::testing::TestParamInfo<bool>& info) { return info.param ? "Wide" : "Narrow"; });

TEST_P(DownsampleKernels, MatchTheReferenceOnRandomTiles) {
  const int32_t widths[] = {1, 2, 3, 7, 16, 17, 31, 33, 100, 1031};
  uint32_t seed = 1;
  for (bool alpha : {false, true})
    for (int32_t factor : {2, 3, 4, 5})
      for (int32_t channels = alpha ? 2 : 1; channels <= 32; ++channels) {
        if (channels > 8 && channels % 7 != 0 && channels != 16 && channels != 17 && channels != 32) continue;
        for (int32_t width : widths) {
          if (width > 100 && factor % 2) continue;
          runCase({alpha, factor, channels, width, 1 + int32_t(seed % 4)}, seed);
          ++seed;
          if (::testing::Test::HasFatalFailure()) return;
        }
      }
}

TEST_P(DownsampleKernels, WideChunkedRowsMatchTheReference) {
  // Rows longer than one chunk of intermediate sums.
  uint32_t seed = 1000;
  for (bool alpha : {false, true})
    for (int32_t factor : {2, 4})
      for (int32_t channels : {1, 2, 3, 4, 5, 11, 32}) {
        if (alpha && channels == 1) continue;
        runCase({alpha, factor, channels, 3000, 2}, seed++);
        if (::testing::Test::HasFatalFailure()) return;
      }
}

TEST_P(DownsampleKernels, DocumentedExamples) {
  // One 2 x 2 block into a 4-byte tile row.
  struct Case {
    const char* name;
    bool alpha;
    int32_t channels;
    uint8_t super[16];
    uint8_t tile[4], expected[4];
  };
  const Case cases[] = {
      {"Rgb: 510 / 4 truncates to 127, the row's padding byte untouched", false, 3,
       {255, 255, 255, 255, 255, 255, 0, 0, 0, 0, 0, 0}, {1, 2, 3, 9}, {127, 127, 127, 9}},
      {"RgbTransparent, one opaque red sample: alpha 255 / 4, colour not darkened", true, 4,
       {255, 255, 0, 0, 0, 7, 7, 7, 0, 9, 9, 9, 0, 200, 200, 200}, {5, 5, 5, 5}, {63, 255, 0, 0}},
      {"fully transparent block: alpha 0, colour bytes as they were", true, 4,
       {0, 1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 10, 11, 12}, {99, 41, 42, 43}, {0, 41, 42, 43}},
  };
  for (const Case& c : cases) {
    uint8_t tile[4];
    std::copy(c.tile, c.tile + 4, tile);
    DownsampleTile t{c.super, 2 * c.channels, tile, 4, 1, 1, c.channels, 2};
    if (c.alpha)
      downsampleWithAlpha(t);
    else
      downsampleOpaque(t);
    EXPECT_EQ(std::vector<uint8_t>(tile, tile + 4), std::vector<uint8_t>(c.expected, c.expected + 4)) << c.name;
  }
}

TEST(AlphaReciprocal, DividesExactlyForEveryAlphaSumAndNumerator) {
  // floor(s * m / 2^40) is non-decreasing in s, so it equals floor(s / a) for every s in
  // [q a, q a + a - 1] exactly when it does at both ends of that range. Checking both ends of every
  // quotient 0..255 for every alpha sum therefore covers every numerator s <= 255 a.
  for (uint32_t a = 1; a <= kMaxAlphaSum; ++a)
    for (uint32_t q = 0; q <= 255; ++q) {
      const uint32_t first = q * a, last = q * a + a - 1;
      ASSERT_EQ(divideByAlphaSum(first, a), q) << "a=" << a << " s=" << first;
      if (q < 255) {
        ASSERT_EQ(divideByAlphaSum(last, a), q) << "a=" << a << " s=" << last;
      }
    }
}

TEST(AlphaReciprocal, ExhaustiveForTwoByTwoBlocks) {
  // Every numerator for every alpha sum a 2 x 2 block can have (a <= 1020): a direct check of the
  // argument above on a quarter of the table.
  for (uint32_t a = 1; a <= 255 * 4; ++a)
    for (uint32_t s = 0; s <= 255 * a; ++s)
      if (divideByAlphaSum(s, a) != s / a) FAIL() << "a=" << a << " s=" << s;
}

}  // namespace
}  // namespace dw
