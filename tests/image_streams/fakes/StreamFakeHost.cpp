#include "StreamFakeHost.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <random>

#include "shell/FourCharCode.h"
#include "shell/HostSuites.h"

namespace streams_test {

namespace {

StreamFakeHost* gHost = nullptr;
constexpr DWErr kBadSlice = dw::fourCharError("bSLC");
constexpr DWErr kNoMemory = dw::fourCharError("!MEM");

StreamFakeHost& host() { return *gHost; }

bool sliceInside(const FakeRaster& raster, const DWSlice& s) {
  const DWIntRect& b = raster.record.bounds;
  return s.top >= b.top && s.bottom <= b.bottom && s.top <= s.bottom && s.left >= b.left && s.right <= b.right &&
         s.left <= s.right && s.front >= 0 && s.back <= int32_t(raster.pixelBytes()) && s.front <= s.back;
}

bool tileMatches(const DWSlice& raster, const DWTile* tile, const DWSlice* tileSlice) {
  return tile && tileSlice && tile->data && tileSlice->bottom - tileSlice->top == raster.bottom - raster.top &&
         tileSlice->right - tileSlice->left == raster.right - raster.left && tile->planeBytes == 0 &&
         tile->colBytes >= raster.back - raster.front;
}

DWErr GetRasterRecord(DWArtHandle art, DWRasterRecord* record) {
  if (DWErr e = host().enter("GetRasterRecord")) return e;
  if (!host().exists(art)) return kBadSlice;
  *record = host().raster(art).record;
  return 0;
}

DWErr SetRasterRecord(DWArtHandle art, const DWRasterRecord* record) {
  if (DWErr e = host().enter("SetRasterRecord")) return e;
  if (!host().exists(art)) return kBadSlice;
  FakeRaster& raster = host().raster(art);
  raster.record = *record;
  raster.pixels.assign(size_t(record->byteWidth) * size_t(std::max(0, raster.height())), 0);
  return 0;
}

DWErr GetRasterMatrix(DWArtHandle art, DWRealMatrix* matrix) {
  if (DWErr e = host().enter("GetRasterMatrix")) return e;
  *matrix = host().raster(art).matrix;
  return 0;
}

DWErr SetRasterMatrix(DWArtHandle art, const DWRealMatrix* matrix) {
  if (DWErr e = host().enter("SetRasterMatrix")) return e;
  host().raster(art).matrix = *matrix;
  return 0;
}

DWErr WriteRasterTile(DWArtHandle art, const DWSlice* slice, const DWTile* tile, const DWSlice* tileSlice) {
  if (DWErr e = host().enter("WriteRasterTile")) return e;
  FakeRaster& raster = host().raster(art);
  if (!sliceInside(raster, *slice) || !tileMatches(*slice, tile, tileSlice)) return kBadSlice;
  host().writes.push_back(TileCall{art, *slice});
  const uint8_t* from = static_cast<const uint8_t*>(tile->data);
  for (int32_t y = slice->top; y < slice->bottom; ++y)
    for (int32_t x = slice->left; x < slice->right; ++x)
      for (int32_t k = slice->front; k < slice->back; ++k) {
        const size_t at = size_t(y - slice->top + tileSlice->top) * tile->rowBytes +
                          size_t(x - slice->left + tileSlice->left) * tile->colBytes + tile->channelInterleave[k];
        raster.pixels[size_t(y - raster.record.bounds.top) * raster.record.byteWidth +
                      size_t(x - raster.record.bounds.left) * raster.pixelBytes() + k] = from[at];
      }
  return 0;
}

DWErr ReadRasterTile(DWArtHandle art, const DWSlice* slice, DWTile* tile, const DWSlice* tileSlice) {
  if (DWErr e = host().enter("ReadRasterTile")) return e;
  FakeRaster& raster = host().raster(art);
  if (!sliceInside(raster, *slice) || !tileMatches(*slice, tile, tileSlice)) return kBadSlice;
  host().reads.push_back(TileCall{art, *slice});
  uint8_t* to = static_cast<uint8_t*>(tile->data);
  const uint32_t pixelBytes = raster.pixelBytes();
  for (int32_t y = slice->top; y < slice->bottom; ++y) {
    const uint8_t* row = raster.pixels.data() + size_t(y - raster.record.bounds.top) * raster.record.byteWidth;
    uint8_t* out = to + size_t(y - slice->top + tileSlice->top) * tile->rowBytes;
    for (int32_t x = slice->left; x < slice->right; ++x)
      for (int32_t k = slice->front; k < slice->back; ++k)
        out[size_t(x - slice->left + tileSlice->left) * tile->colBytes + tile->channelInterleave[k]] =
            row[size_t(x - raster.record.bounds.left) * pixelBytes + k];
  }
  return 0;
}

DWErr AllocateBlock(size_t size, void** block) {
  *block = nullptr;
  host().blockRequests.push_back(size);
  if (DWErr e = host().enter("AllocateBlock")) return e;
  if (size > host().blockCap) return kNoMemory;
  void* memory = std::malloc(size ? size : 1);
  if (!memory) return kNoMemory;
  host().blocks[memory] = size;
  ++host().liveBlocks;
  host().liveBlockBytes += size;
  host().peakBlockBytes = std::max(host().peakBlockBytes, host().liveBlockBytes);
  *block = memory;
  return 0;
}

DWErr DisposeBlock(void* block) {
  auto found = host().blocks.find(block);
  if (found == host().blocks.end()) return kBadSlice;
  --host().liveBlocks;
  host().liveBlockBytes -= found->second;
  host().blocks.erase(found);
  std::free(block);
  return 0;
}

DWErr NewArt(int16_t kind, int16_t paintOrder, DWArtHandle prep, DWArtHandle* art) {
  if (DWErr e = host().enter("NewArt")) return e;
  if (kind != kDWRasterArt) return kBadSlice;
  Image empty;
  *art = host().addRaster(empty);
  host().raster(*art).paintOrder = paintOrder;
  host().raster(*art).prep = prep;
  return 0;
}

DWErr GetLayerOfArt(DWArtHandle art, DWLayerHandle* layer) {
  if (DWErr e = host().enter("GetLayerOfArt")) return e;
  *layer = host().raster(art).layer;
  return 0;
}

DWErr ArtIsOutsideLayers(DWArtHandle art, DWBool* outside) {
  if (DWErr e = host().enter("ArtIsOutsideLayers")) return e;
  *outside = host().raster(art).outsideLayers;
  return 0;
}

DWErr GetLayerEditable(DWLayerHandle layer, DWBool* editable) {
  if (DWErr e = host().enter("GetLayerEditable")) return e;
  *editable = host().layers.at(layer);
  return 0;
}

DWErr SetArtStyle(DWArtHandle art, DWArtStyleHandle style) {
  if (DWErr e = host().enter("SetArtStyle")) return e;
  host().raster(art).styleCleared = style == nullptr;
  return 0;
}

uint32_t GetMemoryFigure() { return host().memoryFigure; }
DWBool IsInteractive() { return 0; }

DWErr GetIntegerPreference(const char* prefix, const char* key, int32_t* value) {
  if (std::strcmp(prefix, "Rasterize") == 0 && std::strcmp(key, "rasterizeMemory") == 0 && host().hasPreference)
    *value = host().preferenceMiB;
  return 0;
}

double VectorLength(double h, double v) { return std::sqrt(h * h + v * v); }
void SetIdentityMatrix(DWRealMatrix* m) { *m = DWRealMatrix{1, 0, 0, 1, 0, 0}; }
void ConcatScale(DWRealMatrix* m, double h, double v) { *m = multiply(*m, scaleMatrix(h, v)); }
void ConcatMatrix(const DWRealMatrix* m, const DWRealMatrix* n, DWRealMatrix* result) { *result = multiply(*m, *n); }

}  // namespace

Image makeImage(int32_t width, int32_t height, int32_t channels) {
  Image image;
  image.width = width;
  image.height = height;
  image.channels = channels;
  image.data.assign(size_t(width) * size_t(height) * size_t(channels), 0);
  return image;
}

Image randomImage(int32_t width, int32_t height, int32_t channels, uint32_t seed) {
  Image image = makeImage(width, height, channels);
  std::mt19937 random(seed);
  for (uint8_t& value : image.data) value = uint8_t(random() & 0xFF);
  return image;
}

DWRealMatrix scaleMatrix(double h, double v) { return DWRealMatrix{h, 0, 0, v, 0, 0}; }

DWRealMatrix multiply(const DWRealMatrix& m, const DWRealMatrix& n) {
  return DWRealMatrix{m.a * n.a + m.b * n.c, m.a * n.b + m.b * n.d,          m.c * n.a + m.d * n.c,
                      m.c * n.b + m.d * n.d, m.tx * n.a + m.ty * n.c + n.tx, m.tx * n.b + m.ty * n.d + n.ty};
}

DWRealMatrix rotationMatrix(double radians) {
  return DWRealMatrix{std::cos(radians), std::sin(radians), -std::sin(radians), std::cos(radians), 0, 0};
}

StreamFakeHost::StreamFakeHost() {
  gHost = this;
  rasterSuite.GetRasterRecord = GetRasterRecord;
  rasterSuite.SetRasterRecord = SetRasterRecord;
  rasterSuite.GetRasterMatrix = GetRasterMatrix;
  rasterSuite.SetRasterMatrix = SetRasterMatrix;
  rasterSuite.WriteRasterTile = WriteRasterTile;
  rasterSuite.ReadRasterTile = ReadRasterTile;
  blockSuite.AllocateBlock = AllocateBlock;
  blockSuite.DisposeBlock = DisposeBlock;
  artSuite.NewArt = NewArt;
  artSuite.GetLayerOfArt = GetLayerOfArt;
  artSuite.ArtIsOutsideLayers = ArtIsOutsideLayers;
  layerSuite.GetLayerEditable = GetLayerEditable;
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

StreamFakeHost::~StreamFakeHost() {
  dw::gSuites = dw::HostSuites{};
  for (auto& block : blocks) std::free(block.first);
  gHost = nullptr;
}

StreamFakeHost& StreamFakeHost::current() { return *gHost; }

void* StreamFakeHost::newHandle() {
  handleStore.emplace_back(new char(0));
  return handleStore.back().get();
}

DWArtHandle StreamFakeHost::addRaster(const Image& image, double ppi) {
  return addRaster(image, scaleMatrix(72.0 / ppi, 72.0 / ppi));
}

DWArtHandle StreamFakeHost::addRaster(const Image& image, const DWRealMatrix& matrix) {
  auto raster = std::make_unique<FakeRaster>();
  const uint32_t bits = uint32_t(image.channels) * 8;
  const int32_t pitch = int32_t(((uint32_t(image.width) * bits / 8) + 3) & ~3u);
  raster->record.bounds = DWIntRect{0, 0, image.width, image.height};
  raster->record.byteWidth = pitch;
  raster->record.colorSpace = int16_t(image.channels == 1   ? kDWRasterGray
                                      : image.channels == 3 ? kDWRasterRGB
                                                            : kDWRasterCMYK);
  raster->record.bitsPerPixel = int16_t(bits);
  raster->matrix = matrix;
  raster->pixels.assign(size_t(pitch) * size_t(image.height), 0xCD);
  for (int32_t y = 0; y < image.height; ++y)
    std::memcpy(raster->pixels.data() + size_t(y) * pitch, image.data.data() + size_t(y) * image.width * image.channels,
                size_t(image.width) * image.channels);
  DWArtHandle art = static_cast<DWArtHandle>(newHandle());
  rasters[art] = std::move(raster);
  return art;
}

FakeRaster& StreamFakeHost::raster(DWArtHandle art) { return *rasters.at(art); }

Image StreamFakeHost::imageOf(DWArtHandle art) {
  const FakeRaster& r = raster(art);
  Image image = makeImage(r.width(), r.height(), int32_t(r.pixelBytes()));
  for (int32_t y = 0; y < r.height(); ++y)
    std::memcpy(image.data.data() + size_t(y) * image.width * image.channels, r.pixel(0, y),
                size_t(image.width) * image.channels);
  return image;
}

DWLayerHandle StreamFakeHost::addLayer(bool editable) {
  DWLayerHandle layer = static_cast<DWLayerHandle>(newHandle());
  layers[layer] = editable;
  return layer;
}

void StreamFakeHost::failCall(const std::string& operation, int32_t nth, DWErr code) {
  failures[operation].push_back(PlannedFailure{callCounts[operation] + nth, code});
}

int32_t StreamFakeHost::calls(const std::string& operation) const {
  auto found = callCounts.find(operation);
  return found == callCounts.end() ? 0 : found->second;
}

DWErr StreamFakeHost::enter(const char* operation) {
  const int32_t count = ++callCounts[operation];
  for (const PlannedFailure& failure : failures[operation])
    if (failure.nth == count) return failure.code;
  return 0;
}

}  // namespace streams_test
