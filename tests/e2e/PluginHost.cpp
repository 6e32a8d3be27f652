#include "tests/e2e/PluginHost.h"

#include <memory>
#include <stdexcept>

namespace e2e {

namespace {

template <typename Suite>
const Suite* acquire(Host& host, const char* name, int32_t version) {
  const void* table = nullptr;
  if (host.acquireSuite(name, version, &table) != kDWNoErr || !table)
    throw std::runtime_error(std::string("the host gives no ") + name);
  return static_cast<const Suite*>(table);
}

}  // namespace

RasterizeSettings settingsFor(int32_t type, int16_t antialiasing) {
  RasterizeSettings s{};
  s.type = type;
  s.resolution = 72.0;
  s.antialiasing = antialiasing;
  return s;
}

PluginHost::PluginHost() {
  plugin = &host.launchPlugin(kPluginPath);
  host.notifyApplicationStarted();
  host.setDocument(std::make_unique<Document>());
  doc = host.document();
  doc->newLayer("Layer 1");
  rasterize_ = acquire<DWRasterizeSuite>(host, kDWRasterizeSuite, kDWRasterizeSuiteVersion);
  artSets_ = acquire<DWArtSetSuite>(host, kDWArtSetSuite, kDWArtSetSuiteVersion);
}

PluginHost::~PluginHost() {
  for (DWArtSetHandle& set : sets_) artSets_->DisposeArtSet(&set);
  host.releaseSuite(kDWArtSetSuite, kDWArtSetSuiteVersion);
  host.releaseSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion);
  host.shutdownPlugin(*plugin);
}

Art* PluginHost::add(const Box& box, const Paint& paint) {
  Art* path = doc->newArt(ArtKind::Path, PaintOrder::AboveAll, nullptr);
  path->path()->segments = {PathSegment::at(box.left, box.bottom), PathSegment::at(box.right, box.bottom),
                            PathSegment::at(box.right, box.top), PathSegment::at(box.left, box.top)};
  path->path()->closed = true;
  path->pathStyle().fillPaint = true;
  path->pathStyle().fill = paint;
  return path;
}

DWArtSetHandle PluginHost::artSet(const std::vector<Art*>& art) {
  DWArtSetHandle set = nullptr;
  if (artSets_->NewArtSet(&set) != kDWNoErr) throw std::runtime_error("NewArtSet failed");
  sets_.push_back(set);
  for (Art* a : art)
    if (artSets_->AddArtToArtSet(set, reinterpret_cast<DWArtHandle>(a)) != kDWNoErr)
      throw std::runtime_error("AddArtToArtSet failed");
  return set;
}

PluginHost::Result PluginHost::rasterize(DWArtSetHandle set, RasterizeSettings settings, const Rect& bounds,
                                         DWRasterizeProgressProc progress) {
  const DWRealRect area{bounds.left, bounds.top, bounds.right, bounds.bottom};
  DWArtHandle made = nullptr;
  Result result;
  result.code = rasterize_->RasterizeArtWithPadding(set, &settings, &area, int32_t(PaintOrder::AboveAll), nullptr,
                                                    &made, progress, 0.0);
  result.raster = made ? doc->liveArt(made) : nullptr;
  return result;
}

std::vector<Art*> PluginHost::rasters() const {
  std::vector<Art*> found;
  doc->forEachArt([&found](Art* art) {
    if (art->kind() == ArtKind::Raster) found.push_back(art);
  });
  return found;
}

int pixelByte(const RasterData& raster, int32_t x, int32_t y, int32_t channel) {
  const std::uint8_t* row = raster.pixels() + size_t(y) * size_t(raster.record.byteWidth);
  if (raster.record.bitsPerPixel == 1) return (row[x >> 3] >> (7 - (x & 7))) & 1;
  const int32_t bytes = raster.record.bitsPerPixel / 8;
  return row[size_t(x) * size_t(bytes) + size_t(channel)];
}

}  // namespace e2e
