#include "tests/e2e_effect/EffectHost.h"

#include <memory>
#include <stdexcept>

#include "host/all_suites.h"

namespace e2e_effect {

DictionaryPtr dictionary(const Parameters& p) {
  DictionaryPtr d = Dictionary::create();
  d->setInteger("colr", p.colr);
  d->setInteger("dpi.", p.dpi);
  d->setBoolean("alis", p.alis);
  d->setBoolean("mask", p.mask);
  d->setReal("padd", p.padd);
  return d;
}

EffectHost::EffectHost(ColorMode mode, const std::string& withheld) {
  if (!withheld.empty()) host.controls().withholdSuite(withheld);
  host.setDocument(std::make_unique<Document>());
  doc = host.document();
  doc->setColorMode(mode);
  doc->newLayer("Layer 1");
  plugin = &host.launchPlugin(kPluginPath);
  host.notifyApplicationStarted();
}

EffectHost::~EffectHost() { host.shutdownPlugin(*plugin); }

Art* EffectHost::rect(double left, double bottom, double right, double top, const Paint& fill) {
  Art* path = doc->newArt(ArtKind::Path, PaintOrder::AboveAll, nullptr);
  path->path()->segments = {PathSegment::at(left, bottom), PathSegment::at(right, bottom), PathSegment::at(right, top),
                            PathSegment::at(left, top)};
  path->path()->closed = true;
  path->pathStyle().fillPaint = true;
  path->pathStyle().fill = fill;
  return path;
}

void EffectHost::attach(Art* art, const DictionaryPtr& parameters) {
  auto style = std::make_shared<ArtStyle>();
  style->effects.push_back(LiveEffect{kRasterizeEffectName, parameters, 1, 0});
  art->setArtStyle(std::move(style));
}

const LiveEffectRecord& EffectHost::effect() {
  const LiveEffectRecord* record = findLiveEffect(host, kRasterizeEffectName);
  if (!record) throw std::runtime_error("the plug-in registered no Rasterize effect");
  return *record;
}

Art* EffectHost::rasterize(Art* art, const RasterizeSettings& settings, const Rect& bounds) {
  const void* tables[2] = {};
  host.acquireSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion, &tables[0]);
  host.acquireSuite(kDWArtSetSuite, kDWArtSetSuiteVersion, &tables[1]);
  const auto* rasterizer = static_cast<const DWRasterizeSuite*>(tables[0]);
  const auto* sets = static_cast<const DWArtSetSuite*>(tables[1]);
  if (!rasterizer || !sets) throw std::runtime_error("the rasterize or art set suite is missing");
  DWArtSetHandle set = nullptr;
  sets->NewArtSet(&set);
  sets->AddArtToArtSet(set, reinterpret_cast<DWArtHandle>(art));
  RasterizeSettings request = settings;
  const DWRealRect area{bounds.left, bounds.top, bounds.right, bounds.bottom};
  DWArtHandle made = nullptr;
  const DWErr code = rasterizer->RasterizeArtWithPadding(set, &request, &area, int32_t(PaintOrder::AboveAll), nullptr,
                                                         &made, nullptr, 0.0);
  sets->DisposeArtSet(&set);
  host.releaseSuite(kDWArtSetSuite, kDWArtSetSuiteVersion);
  host.releaseSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion);
  return code == kDWNoErr && made ? doc->liveArt(made) : nullptr;
}

DWErr EffectHost::choose(const std::string& item, const std::function<int32_t(RasterizeSettings&)>& answer) {
  host.ui().dialogResponder = [answer](RasterizeSettings& record, int32_t) { return answer(record); };
  for (const MenuItemRecord* menu : host.registrations().menuItems())
    if (menu->name == item) return host.chooseMenuItem(*menu);
  throw std::runtime_error("the plug-in installed no menu item " + item);
}

void EffectHost::select(const std::vector<Art*>& art) {
  doc->deselectAll();
  for (Art* a : art) Document::setSelected(a, true);
}

std::vector<Art*> EffectHost::live(ArtKind kind) const {
  std::vector<Art*> found;
  doc->forEachArt([&](Art* art) {
    if (art->kind() == kind) found.push_back(art);
  });
  return found;
}

int pixel(const RasterData& raster, int32_t x, int32_t y, int32_t channel) {
  const int channels = raster.record.bitsPerPixel / 8;
  return raster.pixels()[size_t(y) * size_t(raster.record.byteWidth) + size_t(x * channels + channel)];
}

}  // namespace e2e_effect
