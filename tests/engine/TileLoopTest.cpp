#include <set>
#include <string>
#include <vector>

#include "engine/Multithreading.h"
#include "shell/ErrorCodes.h"
#include "tests/engine/EngineFixture.h"

namespace dw {
namespace {

using test_support::EngineTest;
using test_support::makeSettings;

class TileLoop : public EngineTest {};

// RgbTransparent, 256 px wide, factor 4, 1 MiB: tiles of (65536 / 1024) = 64 rows; 448 rows make 7.
// With the accelerator on, every background fill of a 4-byte buffer is one recorded host call.
TEST_F(TileLoop, FourSlotsSevenTilesBatchesAndRefills) {
  engine_testing::setProcessorCount(4);
  h().preferences["Rasterize/rasterizeMemory"] = 1;
  h().acceleratorAvailable = true;
  h().acceleratorEnabled = 1;
  settings = makeSettings(kRasterTypeRgbTransparent, 72.0, 4);
  // Paint only inside tile 0 (rows 0..63): a slot that kept it would show it again in tile 4.
  DWArtHandle art = h().addPaintedArt({0, 448, 256, 448 - 64}, {0xFF, 0x10, 0x20, 0x30});
  ASSERT_EQ(rasterize(h().addArtSet({art}), {0, 448, 256, 0}), kDWNoErr);

  ASSERT_EQ(h().tileWrites.size(), 7u);
  for (size_t i = 0; i < 7; ++i) {
    EXPECT_EQ(h().tileWrites[i].rasterSlice.top, int32_t(64 * i)) << "written in index order";
  }
  ASSERT_EQ(h().draws.size(), 7u);
  std::vector<DWPort> drawPorts;
  for (size_t i = 0; i < 7; ++i) {
    EXPECT_DOUBLE_EQ(h().draws[i].origin.v, 448.0 - 64.0 * double(i)) << "drawn in index order";
    drawPorts.push_back(h().draws[i].port);
  }
  EXPECT_EQ(std::set<DWPort>(drawPorts.begin(), drawPorts.begin() + 4).size(), 4u) << "four slots";
  for (size_t i = 4; i < 7; ++i) EXPECT_EQ(drawPorts[i], drawPorts[i - 4]) << "slot s holds tile next + s";

  // Batches: draw 4, write 4, draw 3, write 3.
  const std::vector<std::string> calls = h().calls();
  std::string sequence;
  for (const std::string& c : calls)
    if (c == "DrawArt") sequence += 'D';
    else if (c == "WriteRasterTile") sequence += 'W';
  EXPECT_EQ(sequence, "DDDDWWWWDDDWWW");

  // Four initial clears, then the refills of tiles 0, 1 and 2 (their slots draw again); tile 3's
  // slot draws no more, nor do those of tiles 4..6.
  // (The down-sampler also starts each transparent final tile from the background: 256 x 64 pixels.)
  std::vector<uint8_t*> buffers;
  size_t tileClears = 0;
  for (const auto& fill : h().pixelFills) {
    if (fill.second == 1024 * 256)
      buffers.push_back(fill.first);
    else if (fill.second == 256 * 64)
      ++tileClears;
  }
  EXPECT_EQ(tileClears, 7u);
  ASSERT_EQ(buffers.size(), 7u);
  std::multiset<uint8_t*> refilled(buffers.begin() + 4, buffers.end());
  EXPECT_EQ(refilled, (std::multiset<uint8_t*>{buffers[0], buffers[1], buffers[2]}));

  EXPECT_EQ(pixelBytes(10, 10), (std::vector<uint8_t>{0xFF, 0x10, 0x20, 0x30}));
  EXPECT_EQ(pixelBytes(10, 4 * 64 + 10), (std::vector<uint8_t>{0x00, 0xFF, 0xFF, 0xFF}))
      << "slot 0 was cleared after tile 0";
  EXPECT_EQ(h().countCalls("HvReducePixelsWithAlpha"), 7u);
  expectNothingHeld("batches");
}

TEST_F(TileLoop, ThreadedAndInlineDownsamplingGiveTheSamePixels) {
  // One run with four slots (threads when multithreading is on in this process) against one slot.
  std::vector<uint8_t> pixels[2];
  for (int run = 0; run < 2; ++run) {
    reset();
    engine_testing::setProcessorCount(run == 0 ? 4 : 1);
    h().preferences["Rasterize/rasterizeMemory"] = 1;
    settings = makeSettings(kRasterTypeCmykTransparent, 300.0, 4);
    h().addPaintedArt({3.3, 80.1, 60.7, 7.9}, {0xC0, 1, 2, 3, 4});
    DWArtHandle a = h().addPaintedArt({3.3, 80.1, 60.7, 7.9}, {0xC0, 1, 2, 3, 4});
    DWArtHandle b = h().addPaintedArt({20.2, 50.5, 90.9, 30.3}, {0xFF, 200, 100, 50, 25});
    ASSERT_EQ(rasterize(h().addArtSet({a, b}), {0, 100, 100, 0}), kDWNoErr);
    EXPECT_GT(h().tileWrites.size(), 4u);
    pixels[run] = raster().pixels;
  }
  EXPECT_TRUE(pixels[0] == pixels[1]);
}

TEST_F(TileLoop, LogLinesWithoutSupersampling) {
  h().preferences["Rasterize/rasterizeMemory"] = 1;
  ASSERT_EQ(rasterize(h().addArtSet({}), {0, 400, 2000, 0}), kDWNoErr);  // 3 tiles of 174 rows
  // The fake clock advances 7 per reading: the tile line reads 7, the end line 14.
  EXPECT_EQ(h().logLines, (std::vector<std::string>{
                              "            \tRasterize\t(Start)",
                              "           7\tBegin Tile processing\t(TileCount: 3, Threads: 1)",
                              "          14\tRasterize\t(End)",
                              "           0\tRasterize\t(rasterizeTile)",
                              "           0\tRasterize\t(downSample)",
                              "           0\tRasterize\t(updateRasterTile)",
                          }));
}

TEST_F(TileLoop, LogLinesWithTheAcceleratorAndEightSlots) {
  // RGB, 256 px, factor 4, 1 MiB: (65536 / 768) = 85 rows; 1020 rows make 12 tiles.
  engine_testing::setProcessorCount(8);
  h().preferences["Rasterize/rasterizeMemory"] = 1;
  h().acceleratorAvailable = true;
  h().acceleratorEnabled = 1;
  settings = makeSettings(kRasterTypeRgb, 72.0, 4);
  ASSERT_EQ(rasterize(h().addArtSet({}), {0, 1020, 256, 0}), kDWNoErr);
  ASSERT_EQ(h().logLines.size(), 6u);
  EXPECT_EQ(h().logLines[0], "            \tRasterize(ENABLE_BOTTELNECK)\t(Start)");
  EXPECT_EQ(h().logLines[1], "           7\tBegin Tile processing\t(TileCount: 12, Threads: 8)");
  EXPECT_EQ(h().logLines[2], "          14\tRasterize\t(End)");
  const char* stages[] = {"rasterizeTile", "downSample", "updateRasterTile"};
  for (int i = 0; i < 3; ++i) {
    // A number right-aligned in 12 columns (the stage times are real milliseconds), then the text.
    const std::string& line = h().logLines[size_t(3 + i)];
    ASSERT_GT(line.size(), 12u);
    const std::string number = line.substr(0, 12);
    const size_t firstDigit = number.find_first_not_of(' ');
    EXPECT_TRUE(firstDigit != std::string::npos &&
                number.find_first_not_of("0123456789", firstDigit) == std::string::npos)
        << line;
    EXPECT_EQ(line.substr(12), "\tRasterize\t(" + std::string(stages[i]) + ")");
  }
}

TEST_F(TileLoop, FailureDuringTilingStillWritesTheEndLines) {
  h().preferences["Rasterize/rasterizeMemory"] = 1;
  settings = makeSettings(kRasterTypeRgb, 72.0, 4);
  h().failCall("WriteRasterTile", 2, fourCharError("WRIT"));
  EXPECT_EQ(rasterize(h().addArtSet({}), {0, 400, 600, 0}), fourCharError("WRIT"));
  EXPECT_EQ(h().logLines.size(), 6u);
  EXPECT_EQ(h().logLines[2].substr(12), "\tRasterize\t(End)");
  EXPECT_TRUE(h().liveRasters().empty());
  expectNothingHeld("failed write");
}

TEST_F(TileLoop, NoLogWithoutTheNamedLog) {
  h().performanceLogExists = false;
  ASSERT_EQ(rasterize(h().addArtSet({}), {0, 4, 4, 0}), kDWNoErr);
  EXPECT_TRUE(h().logLines.empty());
  EXPECT_EQ(h().countCalls("WriteLine"), 0u);
  EXPECT_EQ(h().countCalls("GetLog"), 2u) << "looked up once: the name, then the default";
  ASSERT_EQ(rasterize(h().addArtSet({}), {0, 4, 4, 0}), kDWNoErr);
  EXPECT_EQ(h().countCalls("GetLog"), 2u) << "and kept";
}

TEST_F(TileLoop, PortsGoBeforeBuffersAndTheArtIsFinishedLast) {
  engine_testing::setProcessorCount(3);
  settings = makeSettings(kRasterTypeRgb, 72.0, 4);
  ASSERT_EQ(rasterize(h().addArtSet({}), {0, 4, 4, 0}), kDWNoErr);
  const std::vector<std::string> calls = h().calls();
  std::string order;
  for (size_t i = size_t(h().findCall("WriteRasterTile")); i < calls.size(); ++i)
    if (calls[i] == "DisposePort") order += 'P';
    else if (calls[i] == "DisposeBlock") order += 'B';
  EXPECT_EQ(order, "PPPBBBBBB") << "three ports, then two buffers per slot";
  ASSERT_EQ(h().ports.size(), 3u);
  for (const fake::Port& port : h().ports) {
    EXPECT_TRUE(port.disposed);
    EXPECT_EQ(port.options, 0x40000000u | 0x200000u) << "option bits 0x2D8013 cleared, anti-aliasing set";
  }
}

}  // namespace
}  // namespace dw
