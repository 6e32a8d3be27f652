#include "fuzz/PluginSession.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "refhost/loader/HostErrors.h"
#include "refhost/suites/LiveEffectMessages.h"

namespace fuzz {

namespace {

using namespace refhost;

// The host unmaps the plug-in at every final unload. A handle of our own keeps the library (and
// libFuzzer's coverage counters inside it) mapped for the whole run; the host still goes through
// every life-cycle message, and the plug-in may not rely on its static data being fresh anyway.
void pinPlugin() {
  static void* const pinned = dlopen(DW_PLUGIN_PATH, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (!pinned) {
    std::fprintf(stderr, "cannot load %s: %s\n", DW_PLUGIN_PATH, dlerror());
    std::abort();
  }
}

}  // namespace

PluginSession::PluginSession() {
  pinPlugin();
  host.controls().interactive = false;
  // Absurd requests must fail on the host's memory caps, not exhaust the machine.
  host.controls().blockSizeCap = size_t(64) << 20;
  host.controls().blockTotalCap = size_t(256) << 20;
  // A raster the plug-in may legitimately ask for (up to 32767 pixels a side) can be far beyond
  // the fuzzer's memory and time limits; the host refuses it as out of memory, and the plug-in
  // must cope.
  host.controls().rasterBytesCap = size_t(16) << 20;
  host.setDocument(std::make_unique<Document>());
  doc = host.document();
  doc->newLayer("Layer 1");
  rect(10, 10, 40, 30);
  Art* group = doc->newArt(ArtKind::Group, PaintOrder::AboveAll, nullptr);
  rect(20, 5, 25, 50, group);
  Art* frame = doc->newArt(ArtKind::TextFrame, PaintOrder::AboveAll, nullptr);
  frame->text()->text = "Aq";
  frame->text()->fontSize = 12.0;
  frame->text()->matrix = Matrix::translation(5, 60);
  frame->pathStyle().fillPaint = true;
  frame->pathStyle().fill = Paint::rgb(0.2, 0.4, 0.6);
  Art* raster = doc->newArt(ArtKind::Raster, PaintOrder::AboveAll, nullptr);
  RasterRecord record;
  record.bounds = IntRect{0, 0, 4, 4};
  record.byteWidth = 12;
  record.colorSpace = 1;
  record.bitsPerPixel = 24;
  raster->raster()->setRecord(record);
  raster->raster()->matrix = Matrix::translation(50, 50);
}

PluginSession::~PluginSession() = default;

bool PluginSession::launch() {
  try {
    plugin = &host.launchPlugin(DW_PLUGIN_PATH);
  } catch (const HostError&) {
    plugin = nullptr;
    return false;
  }
  host.notifyApplicationStarted();
  return true;
}

bool PluginSession::ready() {
  if (plugin && plugin->state() == Plugin::State::Unloaded) host.reloadPlugin(*plugin);
  return started();
}

DWErr PluginSession::choose(const std::string& item) {
  if (!ready()) return kHostNotFound;
  for (const MenuItemRecord* menu : host.registrations().menuItems())
    if (menu->name == item) return host.chooseMenuItem(*menu);
  return kHostNotFound;
}

const LiveEffectRecord* PluginSession::effect() {
  if (!ready()) return nullptr;
  return findLiveEffect(host, kRasterizeEffectName);
}

std::vector<Art*> PluginSession::art() const {
  std::vector<Art*> all;
  doc->forEachArt([&](Art* a) { all.push_back(a); });
  return all;
}

Art* PluginSession::rect(double left, double bottom, double right, double top, Art* parent) {
  Art* path = doc->newArt(ArtKind::Path, parent ? PaintOrder::InsideOnTop : PaintOrder::AboveAll, parent);
  path->path()->segments = {PathSegment::at(left, bottom), PathSegment::at(right, bottom), PathSegment::at(right, top),
                            PathSegment::at(left, top)};
  path->path()->closed = true;
  path->pathStyle().fillPaint = true;
  path->pathStyle().fill = Paint::gray(0.7);
  return path;
}

}  // namespace fuzz
