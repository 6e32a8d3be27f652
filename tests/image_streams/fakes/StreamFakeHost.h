#pragma once
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/all_suites.h"

namespace streams_test {

// One raster art of the fake document: its record, matrix and pixels (rows of byteWidth bytes).
struct FakeRaster {
  DWRasterRecord record{};
  DWRealMatrix matrix{};
  std::vector<uint8_t> pixels;
  DWLayerHandle layer = nullptr;
  bool outsideLayers = false;
  bool styleCleared = false;
  int16_t paintOrder = 0;
  DWArtHandle prep = nullptr;

  int32_t width() const { return record.bounds.right - record.bounds.left; }
  int32_t height() const { return record.bounds.bottom - record.bounds.top; }
  uint32_t pixelBytes() const { return uint32_t(record.bitsPerPixel) / 8; }
  const uint8_t* pixel(int32_t x, int32_t y) const {
    return pixels.data() + size_t(y) * record.byteWidth + size_t(x) * pixelBytes();
  }
};

// Row-major pixels, channels interleaved, packed without padding.
struct Image {
  int32_t width = 0;
  int32_t height = 0;
  int32_t channels = 0;
  std::vector<uint8_t> data;

  uint8_t at(int32_t x, int32_t y, int32_t k) const { return data[(size_t(y) * width + x) * channels + k]; }
  uint8_t& at(int32_t x, int32_t y, int32_t k) { return data[(size_t(y) * width + x) * channels + k]; }
};

Image makeImage(int32_t width, int32_t height, int32_t channels);
Image randomImage(int32_t width, int32_t height, int32_t channels, uint32_t seed);

// The slices of one tile transfer, in the raster's coordinates.
struct TileCall {
  DWArtHandle art;
  DWSlice slice;
};

// An in-process host for the image streams: raster, block, art, layer, art-style, real-math,
// runtime and preference suites installed in dw::gSuites for the object's lifetime. Rasters
// live in memory; any call can be made to fail.
class StreamFakeHost {
 public:
  StreamFakeHost();
  ~StreamFakeHost();
  StreamFakeHost(const StreamFakeHost&) = delete;
  StreamFakeHost& operator=(const StreamFakeHost&) = delete;

  static StreamFakeHost& current();

  // A raster of the image's size at `ppi` (square pixels, no rotation) unless a matrix is given.
  DWArtHandle addRaster(const Image& image, double ppi = 72.0);
  DWArtHandle addRaster(const Image& image, const DWRealMatrix& matrix);
  FakeRaster& raster(DWArtHandle art);
  bool exists(DWArtHandle art) const { return rasters.count(art) != 0; }
  size_t rasterCount() const { return rasters.size(); }
  // The raster's pixels without row padding.
  Image imageOf(DWArtHandle art);
  DWLayerHandle addLayer(bool editable);

  // Makes the nth call (1-based, counted from now) of the named operation fail with code.
  void failCall(const std::string& operation, int32_t nth, DWErr code);
  int32_t calls(const std::string& operation) const;

  // The budget is the least of the memory figure, the machine's memory (at least 1 MiB) and the
  // "rasterizeMemory" preference, so a preference of 0 or 1 MiB fixes it on any machine.
  void setBudgetMiB(int32_t megabytes) {
    preferenceMiB = megabytes;
    hasPreference = true;
  }

  uint32_t memoryFigure = 256u << 20;
  int32_t preferenceMiB = 0;
  bool hasPreference = false;
  size_t blockCap = SIZE_MAX;  // larger allocations fail
  std::vector<size_t> blockRequests;
  size_t liveBlocks = 0;
  size_t liveBlockBytes = 0;
  size_t peakBlockBytes = 0;
  std::vector<TileCall> reads;
  std::vector<TileCall> writes;

  // Suite tables (also reachable for tests that call the host directly).
  DWRasterSuite rasterSuite{};
  DWBlockSuite blockSuite{};
  DWArtSuite artSuite{};
  DWLayerSuite layerSuite{};
  DWArtStyleSuite artStyleSuite{};
  DWRealMathSuite realMathSuite{};
  DWRuntimeSuite runtimeSuite{};
  DWPreferenceSuite preferenceSuite{};

  // Internal: counts a call and answers the failure planned for it, if any.
  DWErr enter(const char* operation);

  std::map<DWArtHandle, std::unique_ptr<FakeRaster>> rasters;
  std::map<DWLayerHandle, bool> layers;
  std::map<void*, size_t> blocks;

 private:
  struct PlannedFailure {
    int32_t nth;
    DWErr code;
  };
  std::map<std::string, int32_t> callCounts;
  std::map<std::string, std::vector<PlannedFailure>> failures;
  std::vector<std::unique_ptr<char>> handleStore;
  void* newHandle();
};

// Matrix helpers written from scratch for the tests (row-vector convention of host/types.h).
DWRealMatrix scaleMatrix(double h, double v);
DWRealMatrix multiply(const DWRealMatrix& first, const DWRealMatrix& then);
DWRealMatrix rotationMatrix(double radians);

}  // namespace streams_test
