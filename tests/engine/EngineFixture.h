#pragma once
// A fake host plus one call of RasterizeArtWithPadding, with helpers to read the raster it made.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "commands/RasterizeSuite.h"
#include "engine/MemoryBudget.h"
#include "engine/Multithreading.h"
#include "settings/RasterizeSettings.h"
#include "tests/engine/FakeHost.h"

namespace dw::test_support {

inline RasterizeSettings makeSettings(int32_t type, double resolution, int16_t antialiasing, uint32_t options = 0) {
  RasterizeSettings s{};
  s.type = type;
  s.resolution = resolution;
  s.antialiasing = antialiasing;
  s.options = options;
  s.reserved = 0x5EED;
  s.preserveSpotColors = 0;
  return s;
}

class EngineTest : public ::testing::Test {
 protected:
  void SetUp() override { reset(); }
  void TearDown() override {
    engine_testing::setPhysicalMemoryForTesting(nullptr);
    host.reset();
  }

  // A fresh host with a physical memory figure that does not depend on the machine.
  void reset() {
    host.reset();
    host = std::make_unique<fake::FakeHost>();
    static const uint64_t physical = (8ull << 30) + (256u << 20);
    engine_testing::setPhysicalMemoryForTesting(&physical);
    engine_testing::setProcessorCount(2);
    result = nullptr;
  }

  fake::FakeHost& h() { return *host; }

  DWErr rasterize(DWArtSetHandle set, const DWRealRect& rect, double pad = 0.0, DWArtHandle prep = nullptr,
                  DWRasterizeProgressProc progress = nullptr) {
    bounds = rect;
    return RasterizeArtWithPadding(set, &settings, &bounds, kDWPlaceAbove, prep, &result, progress, pad);
  }

  // The one raster the call left in the document.
  fake::Art& raster() {
    auto rasters = h().liveRasters();
    EXPECT_EQ(rasters.size(), 1u);
    return h().art(rasters.at(0));
  }

  const uint8_t* pixel(int32_t x, int32_t y) {
    fake::Art& r = raster();
    const int32_t bytes = r.record.bitsPerPixel / 8;
    return r.pixels.data() + size_t(y) * size_t(r.record.byteWidth) + size_t(x) * size_t(bytes);
  }

  std::vector<uint8_t> pixelBytes(int32_t x, int32_t y) {
    const int32_t bytes = raster().record.bitsPerPixel / 8;
    const uint8_t* p = pixel(x, y);
    return std::vector<uint8_t>(p, p + bytes);
  }

  // Nothing the call took is still held.
  void expectNothingHeld(const std::string& context) {
    EXPECT_TRUE(h().blocks.empty()) << context;
    EXPECT_EQ(h().livePorts, 0) << context;
    EXPECT_EQ(h().livePortSpaces, 0) << context;
    EXPECT_EQ(h().liveObjects, 0) << context;
    EXPECT_EQ(h().liveSpaces, 0) << context;
    EXPECT_EQ(h().liveLists, 0) << context;
    EXPECT_EQ(h().suitesHeld, h().acceleratorAvailable && h().countCalls("HvIsEnabled") ? 1 : 0) << context;
  }

  std::unique_ptr<fake::FakeHost> host;
  RasterizeSettings settings = makeSettings(kRasterTypeRgb, 72.0, 0);
  DWRealRect bounds{};
  DWArtHandle result = nullptr;
};

}  // namespace dw::test_support
