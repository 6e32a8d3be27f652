#include "BenchHost.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "shell/HostSuites.h"

namespace streams_bench {

namespace {

BenchHost::Raster& rasterOf(DWArtHandle art) { return *reinterpret_cast<BenchHost::Raster*>(art); }

BenchHost* gHost = nullptr;

DWErr GetRasterRecord(DWArtHandle art, DWRasterRecord* record) {
  *record = rasterOf(art).record;
  return 0;
}

DWErr SetRasterRecord(DWArtHandle art, const DWRasterRecord* record) {
  BenchHost::Raster& raster = rasterOf(art);
  raster.record = *record;
  if (raster.pixels.empty()) raster.pixels.swap(gHost->spareStorage);
  raster.pixels.assign(size_t(record->byteWidth) * size_t(record->bounds.bottom - record->bounds.top), 0);
  return 0;
}

DWErr GetRasterMatrix(DWArtHandle art, DWRealMatrix* matrix) {
  *matrix = rasterOf(art).matrix;
  return 0;
}

DWErr SetRasterMatrix(DWArtHandle art, const DWRealMatrix* matrix) {
  rasterOf(art).matrix = *matrix;
  return 0;
}

// The streams always move whole pixels in stored channel order, so rows copy as they are.
DWErr ReadRasterTile(DWArtHandle art, const DWSlice* slice, DWTile* tile, const DWSlice* tileSlice) {
  const BenchHost::Raster& raster = rasterOf(art);
  const size_t bytes = size_t(slice->right - slice->left) * size_t(tile->colBytes);
  for (int32_t y = slice->top; y < slice->bottom; ++y)
    std::memcpy(static_cast<uint8_t*>(tile->data) + size_t(y - slice->top + tileSlice->top) * tile->rowBytes,
                raster.pixels.data() + size_t(y) * raster.record.byteWidth + size_t(slice->left) * tile->colBytes,
                bytes);
  return 0;
}

DWErr WriteRasterTile(DWArtHandle art, const DWSlice* slice, const DWTile* tile, const DWSlice* tileSlice) {
  BenchHost::Raster& raster = rasterOf(art);
  const size_t bytes = size_t(slice->right - slice->left) * size_t(tile->colBytes);
  for (int32_t y = slice->top; y < slice->bottom; ++y)
    std::memcpy(raster.pixels.data() + size_t(y) * raster.record.byteWidth + size_t(slice->left) * tile->colBytes,
                static_cast<const uint8_t*>(tile->data) + size_t(y - slice->top + tileSlice->top) * tile->rowBytes,
                bytes);
  return 0;
}

// Blocks carry their size in front, so that a freed one can serve the next request of that size.
DWErr AllocateBlock(size_t size, void** block) {
  auto& spare = gHost->spareBlocks;
  for (auto it = spare.begin(); it != spare.end(); ++it)
    if (it->first == size) {
      *block = it->second;
      spare.erase(it);
      return 0;
    }
  auto* memory = static_cast<uint8_t*>(std::malloc(size + 16));
  if (!memory) {
    *block = nullptr;
    return 1;
  }
  std::memcpy(memory, &size, sizeof size);
  *block = memory + 16;
  return 0;
}

DWErr DisposeBlock(void* block) {
  size_t size = 0;
  std::memcpy(&size, static_cast<uint8_t*>(block) - 16, sizeof size);
  gHost->spareBlocks.emplace_back(size, block);
  return 0;
}

DWErr NewArt(int16_t, int16_t, DWArtHandle, DWArtHandle* art) {
  gHost->rasters.push_back(std::make_unique<BenchHost::Raster>());
  *art = reinterpret_cast<DWArtHandle>(gHost->rasters.back().get());
  return 0;
}

DWErr ArtIsOutsideLayers(DWArtHandle, DWBool* outside) {
  *outside = 1;
  return 0;
}

DWErr SetArtStyle(DWArtHandle, DWArtStyleHandle) { return 0; }
uint32_t GetMemoryFigure() { return 0xFFFFFFFFu; }
DWBool IsInteractive() { return 0; }
DWErr GetIntegerPreference(const char*, const char*, int32_t*) { return 0; }

double VectorLength(double h, double v) { return std::sqrt(h * h + v * v); }
void SetIdentityMatrix(DWRealMatrix* m) { *m = DWRealMatrix{1, 0, 0, 1, 0, 0}; }
void ConcatScale(DWRealMatrix* m, double h, double v) {
  *m = DWRealMatrix{m->a * h, m->b * v, m->c * h, m->d * v, m->tx * h, m->ty * v};
}
void ConcatMatrix(const DWRealMatrix* m, const DWRealMatrix* n, DWRealMatrix* r) {
  *r =
      DWRealMatrix{m->a * n->a + m->b * n->c, m->a * n->b + m->b * n->d,           m->c * n->a + m->d * n->c,
                   m->c * n->b + m->d * n->d, m->tx * n->a + m->ty * n->c + n->tx, m->tx * n->b + m->ty * n->d + n->ty};
}

DWRasterSuite rasterSuite;
DWBlockSuite blockSuite;
DWArtSuite artSuite;
DWLayerSuite layerSuite;
DWArtStyleSuite artStyleSuite;
DWRealMathSuite realMathSuite;
DWRuntimeSuite runtimeSuite;
DWPreferenceSuite preferenceSuite;

}  // namespace

BenchHost::BenchHost() {
  gHost = this;
  rasterSuite.GetRasterRecord = GetRasterRecord;
  rasterSuite.SetRasterRecord = SetRasterRecord;
  rasterSuite.GetRasterMatrix = GetRasterMatrix;
  rasterSuite.SetRasterMatrix = SetRasterMatrix;
  rasterSuite.ReadRasterTile = ReadRasterTile;
  rasterSuite.WriteRasterTile = WriteRasterTile;
  blockSuite.AllocateBlock = AllocateBlock;
  blockSuite.DisposeBlock = DisposeBlock;
  artSuite.NewArt = NewArt;
  artSuite.ArtIsOutsideLayers = ArtIsOutsideLayers;
  artStyleSuite.SetArtStyle = SetArtStyle;
  realMathSuite.VectorLength = VectorLength;
  realMathSuite.SetIdentityMatrix = SetIdentityMatrix;
  realMathSuite.ConcatScale = ConcatScale;
  realMathSuite.ConcatMatrix = ConcatMatrix;
  runtimeSuite.GetMemoryFigure = GetMemoryFigure;
  runtimeSuite.IsInteractive = IsInteractive;
  preferenceSuite.GetIntegerPreference = GetIntegerPreference;
  dw::gSuites = dw::HostSuites{};
  dw::gSuites.raster = &rasterSuite;
  dw::gSuites.block = &blockSuite;
  dw::gSuites.art = &artSuite;
  dw::gSuites.layer = &layerSuite;
  dw::gSuites.artStyle = &artStyleSuite;
  dw::gSuites.realMath = &realMathSuite;
  dw::gSuites.runtime = &runtimeSuite;
  dw::gSuites.preference = &preferenceSuite;
}

BenchHost::~BenchHost() {
  for (auto& spare : spareBlocks) std::free(static_cast<uint8_t*>(spare.second) - 16);
  dw::gSuites = dw::HostSuites{};
  gHost = nullptr;
}

DWArtHandle BenchHost::addRaster(int32_t width, int32_t height, int32_t channels) {
  rasters.push_back(std::make_unique<Raster>());
  Raster& raster = *rasters.back();
  raster.record.bounds = DWIntRect{0, 0, width, height};
  raster.record.byteWidth = (width * channels + 3) & ~3;
  raster.record.bitsPerPixel = int16_t(8 * channels);
  raster.record.colorSpace = int16_t(channels == 1 ? kDWRasterGray : kDWRasterRGB);
  raster.matrix = DWRealMatrix{1, 0, 0, 1, 0, 0};
  raster.pixels.resize(size_t(raster.record.byteWidth) * size_t(height));
  uint32_t state = 2024;
  for (int32_t y = 0; y < height; ++y) {
    uint8_t* row = raster.pixels.data() + size_t(y) * raster.record.byteWidth;
    for (int32_t x = 0; x < width * channels; ++x) {
      state = state * 1664525u + 1013904223u;
      row[x] = uint8_t(((x / channels) ^ y) + (x % channels) * 40 + (state >> 28));
    }
  }
  return reinterpret_cast<DWArtHandle>(&raster);
}

void BenchHost::remove(DWArtHandle art) {
  for (auto& raster : rasters)
    if (reinterpret_cast<DWArtHandle>(raster.get()) == art) spareStorage.swap(raster->pixels);
  rasters.erase(
      std::remove_if(rasters.begin(), rasters.end(),
                     [art](const std::unique_ptr<Raster>& r) { return reinterpret_cast<DWArtHandle>(r.get()) == art; }),
      rasters.end());
}

}  // namespace streams_bench
