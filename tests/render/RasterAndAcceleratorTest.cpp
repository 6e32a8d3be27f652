// Raster tiles by slice, raster records, and the accelerator's reductions against plain sums.
#include "refhost/render/Accelerator.h"
#include "refhost/render/RasterAccess.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using namespace refhost;
using namespace refhost::render;

namespace {

RasterData raster(std::int16_t colorSpace, int bits, int w, int h) {
  RasterData r;
  RasterRecord rec;
  rec.bounds = IntRect{0, 0, w, h};
  rec.colorSpace = colorSpace;
  rec.bitsPerPixel = static_cast<std::int16_t>(bits);
  rec.byteWidth = ((bits == 1 ? (w + 7) / 8 : w * bits / 8) + 3) / 4 * 4;
  r.setRecord(rec);
  return r;
}

DWTile tileOver(std::vector<std::uint8_t>& mem, int rowBytes, int colBytes) {
  DWTile t{};
  t.data = mem.data();
  t.rowBytes = rowBytes;
  t.colBytes = colBytes;
  for (int i = 0; i < 32; ++i) t.channelInterleave[i] = static_cast<std::uint16_t>(i);
  return t;
}

}  // namespace

TEST(RasterAccess, SlicesOfRowsColumnsAndBytesRoundTrip) {
  struct Case {
    const char* name;
    DWSlice rs;  // into a 9 x 6 RGBA raster
    DWSlice ts;
  };
  const Case cases[] = {
      {"whole", {0, 0, 6, 9, 0, 4}, {0, 0, 6, 9, 0, 4}},
      {"rows 2..4, offset in the tile", {2, 0, 4, 9, 0, 4}, {1, 0, 3, 9, 0, 4}},
      {"columns and colour bytes only", {1, 3, 5, 7, 1, 4}, {0, 2, 4, 6, 1, 4}},
      {"alpha byte alone", {0, 0, 6, 9, 0, 1}, {0, 0, 6, 9, 0, 1}},
  };
  for (const Case& c : cases) {
    RasterData r = raster(0x11, 32, 9, 6);
    std::vector<std::uint8_t> in(10 * 40), out(10 * 40, 0xEE);
    for (std::size_t i = 0; i < in.size(); ++i) in[i] = static_cast<std::uint8_t>(i * 31 + 7);
    DWTile t = tileOver(in, 40, 4);
    ASSERT_EQ(writeRasterTile(r, c.rs, t, c.ts), "") << c.name;
    DWTile back = tileOver(out, 40, 4);
    ASSERT_EQ(readRasterTile(r, c.rs, back, c.ts), "") << c.name;
    for (int y = c.ts.top; y < c.ts.bottom; ++y)
      for (int x = c.ts.left; x < c.ts.right; ++x)
        for (int k = c.ts.front; k < c.ts.back; ++k)
          ASSERT_EQ(out[y * 40 + x * 4 + k], in[y * 40 + x * 4 + k]) << c.name << " at " << x << "," << y << " byte " << k;
    // Bytes outside the slice were neither written to the raster nor read back.
    if (c.rs.front > 0) {
      EXPECT_EQ(r.pixels()[c.rs.top * r.record.byteWidth + c.rs.left * 4], 0) << c.name;
    }
  }
}

TEST(RasterAccess, OneBitRowsCopyBitsAtAnyColumn) {
  RasterData r = raster(0x00, 1, 21, 3);
  std::vector<std::uint8_t> in(3 * 4), out(3 * 4, 0);
  for (std::size_t i = 0; i < in.size(); ++i) in[i] = static_cast<std::uint8_t>(0xA5 ^ (i * 17));
  DWTile t = tileOver(in, 4, 1);
  ASSERT_EQ(writeRasterTile(r, DWSlice{0, 5, 3, 18, 0, 1}, t, DWSlice{0, 2, 3, 15, 0, 1}), "");
  DWTile b = tileOver(out, 4, 1);
  ASSERT_EQ(readRasterTile(r, DWSlice{0, 5, 3, 18, 0, 1}, b, DWSlice{0, 2, 3, 15, 0, 1}), "");
  for (int y = 0; y < 3; ++y)
    for (int x = 2; x < 15; ++x)
      ASSERT_EQ((out[y * 4 + x / 8] >> (7 - x % 8)) & 1, (in[y * 4 + x / 8] >> (7 - x % 8)) & 1) << x << "," << y;
}

TEST(RasterAccess, RejectsMismatchedOrOutsideSlicesAndBadRecords) {
  RasterData r = raster(0x01, 24, 8, 4);
  std::vector<std::uint8_t> mem(64);
  DWTile t = tileOver(mem, 24, 3);
  struct Case {
    const char* name;
    DWSlice rs, ts;
  };
  const Case cases[] = {
      {"sizes differ", {0, 0, 2, 8, 0, 3}, {0, 0, 3, 8, 0, 3}},
      {"below the raster", {3, 0, 5, 8, 0, 3}, {0, 0, 2, 8, 0, 3}},
      {"beyond the pixel bytes", {0, 0, 1, 8, 0, 4}, {0, 0, 1, 8, 0, 4}},
  };
  for (const Case& c : cases) EXPECT_NE(writeRasterTile(r, c.rs, t, c.ts), "") << c.name;
  RasterRecord bad = r.record;
  bad.bitsPerPixel = 32;
  EXPECT_NE(validateRasterRecord(bad), "") << "depth against family";
  bad = r.record;
  bad.byteWidth = 10;
  EXPECT_NE(validateRasterRecord(bad), "") << "short rows";
  bad = r.record;
  bad.colorSpace = 0x10;
  bad.bitsPerPixel = 1;
  EXPECT_NE(validateRasterRecord(bad), "") << "1-bit with alpha";
  EXPECT_EQ(validateRasterRecord(r.record), "");
}

TEST(Accelerator, ReductionsMatchPlainBoxSums) {
  std::mt19937 rng(7);
  std::uniform_int_distribution<int> byte(0, 255), coin(0, 3);
  for (int f : {2, 4}) {
    for (int c : {1, 3, 4, 5}) {
      const int w = 5, h = 3, sw = w * f, sh = h * f;
      std::vector<std::uint8_t> src(static_cast<std::size_t>(sw * sh * c));
      for (std::size_t i = 0; i < src.size(); ++i) src[i] = static_cast<std::uint8_t>(coin(rng) == 0 && i % c == 0 ? 0 : byte(rng));
      std::vector<std::uint8_t> plain(static_cast<std::size_t>(w * h * c), 0x55), weighted = plain, perChannel = plain;
      const DWImageDescriptor s{src.data(), sh, sw * c, sw, c};
      DWImageDescriptor d{plain.data(), h, w * c, w, c};
      ASSERT_EQ(reducePixels(s, d, f), kDWNoErr);
      d.base = weighted.data();
      ASSERT_EQ(reducePixelsWithAlpha(s, s, d, f), kDWNoErr);
      const std::string name = "f " + std::to_string(f) + " channels " + std::to_string(c);
      for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
          int a = 0;
          std::vector<int> sum(static_cast<std::size_t>(c), 0), ws(static_cast<std::size_t>(c), 0);
          for (int j = 0; j < f; ++j)
            for (int i = 0; i < f; ++i) {
              const std::uint8_t* p = &src[static_cast<std::size_t>(((y * f + j) * sw + x * f + i) * c)];
              for (int k = 0; k < c; ++k) sum[static_cast<std::size_t>(k)] += p[k];
              a += p[0];
              for (int k = 1; k < c; ++k) ws[static_cast<std::size_t>(k)] += p[0] * p[k];
            }
          const std::size_t o = static_cast<std::size_t>((y * w + x) * c);
          for (int k = 0; k < c; ++k) ASSERT_EQ(plain[o + k], sum[static_cast<std::size_t>(k)] / (f * f)) << name;
          ASSERT_EQ(weighted[o], a / (f * f)) << name;
          for (int k = 1; k < c; ++k)
            ASSERT_EQ(weighted[o + k], a ? ws[static_cast<std::size_t>(k)] / a : 0x55) << name << " colour " << k;
        }
      // Channel by channel gives the same bytes as the whole-pixel routines.
      for (int k = 0; k < c; ++k) {
        const DWImageDescriptor sk{src.data() + k, sh, sw * c, sw, c};
        const DWImageDescriptor dk{perChannel.data() + k, h, w * c, w, c};
        ASSERT_EQ(k == 0 ? reduceChannel(sk, dk, f) : reduceChannelWeighted(sk, s, dk, f), kDWNoErr) << name;
      }
      if (c > 1) {
        EXPECT_EQ(perChannel, weighted) << name;
      }
    }
  }
}

// The whole-pixel routines take a row-wise path for factors 2 and 4; padded rows, a source wider
// and taller than the blocks need, and an output wider apart than its pixels must give what the
// channel-by-channel routines give.
TEST(Accelerator, RowWiseReductionsMatchTheChannelRoutinesOnPaddedLayouts) {
  std::mt19937 rng(11);
  std::uniform_int_distribution<int> byte(0, 255), coin(0, 3);
  for (int f : {2, 3, 4}) {
    for (int c : {1, 2, 3, 4, 5, 7, 8}) {
      const int w = 9, h = 4, sw = w * f + 3, sh = h * f + 1, srcStride = sw * c + 6, dstStride = w * c + 5;
      std::vector<std::uint8_t> src(static_cast<std::size_t>(srcStride * sh));
      for (std::size_t i = 0; i < src.size(); ++i) {
        const bool alphaByte = (i % static_cast<std::size_t>(srcStride)) % static_cast<std::size_t>(c) == 0;
        // Fully transparent samples and whole transparent blocks (coin) among the rest.
        src[i] = static_cast<std::uint8_t>(alphaByte && coin(rng) != 0 ? (coin(rng) == 0 ? 255 : 0) : byte(rng));
      }
      const std::vector<std::uint8_t> start(static_cast<std::size_t>(dstStride * h), 0x5A);
      std::vector<std::uint8_t> whole = start, weighted = start, plainChannels = start, weightedChannels = start;
      const DWImageDescriptor s{src.data(), sh, srcStride, sw, c};
      const std::string name = "f " + std::to_string(f) + " channels " + std::to_string(c);
      ASSERT_EQ(reducePixels(s, DWImageDescriptor{whole.data(), h, dstStride, w, c}, f), kDWNoErr) << name;
      for (int k = 0; k < c; ++k) {
        const DWImageDescriptor sk{src.data() + k, sh, srcStride, sw, c};
        ASSERT_EQ(reduceChannel(sk, DWImageDescriptor{plainChannels.data() + k, h, dstStride, w, c}, f), kDWNoErr) << name;
      }
      EXPECT_EQ(whole, plainChannels) << name;
      if (c < 2) continue;
      ASSERT_EQ(reducePixelsWithAlpha(s, s, DWImageDescriptor{weighted.data(), h, dstStride, w, c}, f), kDWNoErr) << name;
      ASSERT_EQ(reduceChannel(s, DWImageDescriptor{weightedChannels.data(), h, dstStride, w, c}, f), kDWNoErr) << name;
      for (int k = 1; k < c; ++k) {
        const DWImageDescriptor sk{src.data() + k, sh, srcStride, sw, c};
        ASSERT_EQ(reduceChannelWeighted(sk, s, DWImageDescriptor{weightedChannels.data() + k, h, dstStride, w, c}, f),
                  kDWNoErr)
            << name;
      }
      EXPECT_EQ(weighted, weightedChannels) << name << " with alpha";
    }
  }
}

TEST(Accelerator, PixelRoutinesCanDeclineSoTheChannelPathRuns) {
  std::vector<std::uint8_t> src(16, 9), dst(4, 0);
  const DWImageDescriptor s{src.data(), 4, 4, 4, 1}, d{dst.data(), 2, 2, 2, 1};
  acceleratorSwitches().pixelRoutines = false;
  EXPECT_EQ(reducePixels(s, d, 2), kReductionNotHandled);
  EXPECT_EQ(reducePixelsWithAlpha(s, s, d, 2), kReductionNotHandled);
  EXPECT_EQ(reduceChannel(s, d, 2), kDWNoErr);
  acceleratorSwitches().pixelRoutines = true;
  EXPECT_EQ(reducePixels(s, d, 2), kDWNoErr);
  EXPECT_EQ(dst[3], 9);
}
