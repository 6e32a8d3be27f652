#include "tests/engine/FakeHost.h"

#include <algorithm>
#include <cstdlib>

#include "engine/Accelerator.h"
#include "engine/Multithreading.h"
#include "engine/PerformanceLog.h"
#include "shell/HostSuites.h"
#include "tests/engine/FakeHostInternal.h"

namespace dw::fake {

namespace {
FakeHost* gHost = nullptr;
}  // namespace

using namespace detail;

DWCustomColorHandle spotColor(uintptr_t n) { return reinterpret_cast<DWCustomColorHandle>(n * 16); }

FakeHost::FakeHost() {
  gHost = this;
  gSuites = HostSuites{};
  gSuites.basic = &kBasic;
  gSuites.artSet = &kArtSet;
  gSuites.art = &kArt;
  gSuites.path = &kPath;
  gSuites.pathStyle = &kPathStyle;
  gSuites.foConversion = &kFoConversion;
  gSuites.colorSpace = &kColorSpace;
  gSuites.raster = &kRaster;
  gSuites.layer = &kLayer;
  gSuites.artStyle = &kArtStyle;
  gSuites.blendStyle = &kBlendStyle;
  gSuites.symbol = &kSymbol;
  gSuites.block = &kBlock;
  gSuites.preference = &kPreference;
  gSuites.dictionary = &kDictionary;
  gSuites.document = &kDocument;
  gSuites.realMath = &kRealMath;
  gSuites.runtime = &kRuntime;
  gSuites.user = &kUser;
  gSuites.unicodeString = &kStrings;
  gSuites.devUtils = &kDevUtils;
  gSuites.graphicsManager = &kGraphics;
  gSuites.drawArt = &kDrawArt;
  // Process-wide answers of the engine belong to one host.
  engine_testing::resetAcceleratorCache();
  engine_testing::resetPerformanceLogCache();
  currentLayer = addLayer();
}

FakeHost::~FakeHost() {
  for (auto& block : blocks) std::free(block.first);
  gSuites = HostSuites{};
  engine_testing::resetAcceleratorCache();
  engine_testing::resetPerformanceLogCache();
  engine_testing::setProcessorCount(0);
  gHost = nullptr;
}

FakeHost& FakeHost::current() { return *gHost; }

DWArtHandle FakeHost::addArt(int16_t kind, DWArtHandle parent) {
  std::lock_guard<std::mutex> lock(mutex);
  arts.emplace_back();
  arts.back().kind = kind;
  arts.back().parent = parent;
  arts.back().layer = currentLayer;
  return reinterpret_cast<DWArtHandle>(&arts.back());
}

Art& FakeHost::art(DWArtHandle handle) { return *reinterpret_cast<Art*>(handle); }

DWArtSetHandle FakeHost::addArtSet(std::vector<DWArtHandle> members) {
  artSets.push_back(std::move(members));
  return reinterpret_cast<DWArtSetHandle>(&artSets.back());
}

DWLayerHandle FakeHost::addLayer(bool editable) {
  layers.emplace_back();
  Layer& l = layers.back();
  l.editable = editable;
  DWLayerHandle handle = reinterpret_cast<DWLayerHandle>(&l);
  arts.emplace_back();
  arts.back().kind = kDWGroupArt;
  arts.back().layer = handle;
  l.group = reinterpret_cast<DWArtHandle>(&arts.back());
  return handle;
}

Layer& FakeHost::layer(DWLayerHandle handle) { return *reinterpret_cast<Layer*>(handle); }

DWArtHandle FakeHost::addPaintedArt(const DWRealRect& rect, std::vector<uint8_t> pixel, DWArtHandle parent) {
  DWArtHandle handle = addArt(kDWPathArt, parent ? parent : layer(currentLayer).group);
  Art& a = art(handle);
  a.paints = true;
  a.paintRect = rect;
  a.paintPixel = std::move(pixel);
  return handle;
}

std::vector<std::string> FakeHost::calls() const {
  std::lock_guard<std::mutex> lock(mutex);
  return _calls;
}

size_t FakeHost::countCalls(const std::string& name) const {
  std::lock_guard<std::mutex> lock(mutex);
  return size_t(std::count(_calls.begin(), _calls.end(), name));
}

long FakeHost::findCall(const std::string& name, size_t from) const {
  std::lock_guard<std::mutex> lock(mutex);
  for (size_t i = from; i < _calls.size(); ++i)
    if (_calls[i] == name) return long(i);
  return -1;
}

std::vector<DWArtHandle> FakeHost::createdRasters() const {
  std::vector<DWArtHandle> result;
  for (const Art& a : arts)
    if (a.kind == kDWRasterArt) result.push_back(reinterpret_cast<DWArtHandle>(const_cast<Art*>(&a)));
  return result;
}

std::vector<DWArtHandle> FakeHost::liveRasters() const {
  std::vector<DWArtHandle> result;
  for (DWArtHandle h : createdRasters())
    if (!reinterpret_cast<Art*>(h)->disposed) result.push_back(h);
  return result;
}

void FakeHost::failCall(const std::string& name, int nth, DWErr code) { _failByName[name] = {nth, code}; }

void FakeHost::failNthCall(size_t nth, DWErr code) {
  _failNth = nth;
  _failNthCode = code;
}

DWErr FakeHost::enter(const char* name) {
  std::lock_guard<std::mutex> lock(mutex);
  _calls.push_back(name);
  const int count = ++_countByName[name];
  if (_failNth && _calls.size() == _failNth) return _failNthCode;
  auto it = _failByName.find(name);
  if (it != _failByName.end() && it->second.first == count) return it->second.second;
  return 0;
}

}  // namespace dw::fake
