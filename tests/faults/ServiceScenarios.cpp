#include <memory>
#include <stdexcept>

#include "refhost/io/NativeFormat.h"
#include "tests/e2e/PluginHost.h"
#include "tests/e2e_effect/EffectHost.h"
#include "tests/faults/Scenarios.h"

namespace faults {

namespace {

using refhost::Art;
using refhost::ArtKind;
using refhost::Host;
using refhost::Paint;

constexpr DWErr kOutOfMemory = refhost::hostCode("!MEM");
constexpr DWErr kSuiteMissing = refhost::hostCode("S!Fd");

std::string content(const refhost::Document& doc) { return refhost::io::documentToJson(doc); }

class GoLiveRun : public ScenarioRun {
 public:
  GoLiveRun() {
    art_ = h_.rect(2, 2, 14, 10, Paint::rgb(0.2, 0.4, 0.6));
    before_ = content(*h_.doc);
  }
  Host& host() override { return h_.host; }
  DWErr act() override {
    Art* result = nullptr;
    return refhost::goLive(h_.host, h_.effect(), e2e_effect::dictionary({0, 72, true, false, 2.0}), *art_, &result);
  }
  // An engine error leaves the source and no raster: the document as before. A raster is only
  // left when the engine succeeded and deleting the source or disposing the set failed; the
  // host drops a failed Go Live's result.
  std::string checkAfterFailure() override {
    if (!h_.live(ArtKind::Raster).empty()) return {};
    return content(*h_.doc) == before_ ? std::string() : "the document differs from before Go Live";
  }

 private:
  e2e_effect::EffectHost h_;
  Art* art_ = nullptr;
  std::string before_;
};

// The exported suite, taken as another plug-in takes it; PluginHost starts the plug-in.
class SuiteRun : public ScenarioRun {
 public:
  SuiteRun() {
    const void* table = nullptr;
    if (p_.host.acquireSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion, &table) != 0 || !table)
      throw std::runtime_error("the plug-in exported no rasterize suite");
    suite_ = static_cast<const DWRasterizeSuite*>(table);
  }
  Host& host() override { return p_.host; }
  void finish() override { p_.host.releaseSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion); }

 protected:
  e2e::PluginHost p_;
  const DWRasterizeSuite* suite_ = nullptr;
};

class DocumentRun : public SuiteRun {
 public:
  DocumentRun() {
    p_.add({2, 2, 10, 12}, Paint::rgb(1, 0, 0));
    p_.add({6, 4, 16, 8}, Paint::gray(0.5));
    before_ = content(*p_.doc);
  }
  DWErr act() override {
    RasterizeSettings settings = e2e::settingsFor(kRasterTypeRgbTransparent, 0);
    DWArtHandle raster = nullptr;
    return suite_->RasterizeDocument(&settings, int32_t(refhost::PaintOrder::AboveAll), nullptr, &raster, nullptr);
  }
  std::string checkAfterFailure() override {
    return content(*p_.doc) == before_ ? std::string() : "the document differs from before the call";
  }

 private:
  std::string before_;
};

// A 32 x 32 RGB raster at 72 ppi with a gradient, resampled to 24 ppi.
class ResampleRun : public SuiteRun {
 public:
  explicit ResampleRun(int32_t method) : method_(method) {
    source_ = p_.doc->newArt(ArtKind::Raster, refhost::PaintOrder::AboveAll, nullptr);
    refhost::RasterRecord record;
    record.bounds = refhost::IntRect{0, 0, 32, 32};
    record.byteWidth = 96;
    record.colorSpace = 1;
    record.bitsPerPixel = 24;
    refhost::RasterData& raster = *source_->raster();
    raster.setRecord(record);
    raster.matrix = refhost::Matrix::translation(0, 32);
    std::uint8_t* pixels = raster.mutablePixels();
    for (size_t i = 0; i < raster.storageSize(); ++i) pixels[i] = std::uint8_t(i * 7);
    original_ = raster;
  }
  DWErr act() override {
    DWArtHandle result = nullptr;
    return suite_->ResampleRasterArt(reinterpret_cast<DWArtHandle>(source_), method_, 24.0,
                                     int32_t(refhost::PaintOrder::AboveAll), nullptr, &result);
  }
  // A raster made before the failure may stay (the caller decides); the source never changes.
  std::string checkAfterFailure() override {
    if (!source_->isAlive() || !source_->raster()) return "the source raster is gone";
    const refhost::RasterData& now = *source_->raster();
    if (!(now.record == original_.record) || !now.samePixels(original_)) return "the source raster changed";
    if (p_.rasters().size() > 2) return "more than one new raster was left";
    return {};
  }

 private:
  int32_t method_;
  Art* source_ = nullptr;
  refhost::RasterData original_;
};

// The whole life of the plug-in: load, start-up, the application-started notification, shut-down.
class LifecycleRun : public ScenarioRun {
 public:
  Host& host() override { return host_; }
  DWErr act() override {
    refhost::Plugin* loaded = nullptr;
    try {
      loaded = &host_.loadPlugin(e2e::kPluginPath);
    } catch (const refhost::HostError& error) {
      return error.code();  // the first "Reload" failed: the host unmapped the library
    }
    refhost::Plugin& plugin = *loaded;
    if (const DWErr code = host_.startPlugin(plugin)) return code;
    const DWErr notified = host_.notifyApplicationStarted();
    const DWErr shutdown = host_.shutdownPlugin(plugin);
    return notified ? notified : shutdown;
  }

 private:
  Host host_;
};

const char* const kMethodNames[] = {"nearest", "area average", "bicubic"};

}  // namespace

std::vector<Scenario> serviceScenarios() {
  std::vector<Scenario> list;
  list.push_back({"live effect Go Live", "the injected code; the source art kept, no raster left",
                  [] { return std::make_unique<GoLiveRun>(); }, {kOutOfMemory}, {}});
  list.push_back({"RasterizeDocument", "the injected code; no raster left",
                  [] { return std::make_unique<DocumentRun>(); }, {kOutOfMemory}, {}});
  for (int32_t method = 0; method < 3; ++method)
    list.push_back({std::string("resample, ") + kMethodNames[method],
                    "the injected code; the source unchanged, at most the new raster left",
                    [method] { return std::make_unique<ResampleRun>(method); }, {kOutOfMemory}, {}});
  // Without its global block the plug-in answers '!MEM' at the steps that need it.
  list.push_back({"start-up and shut-down", "the injected code or 'S!Fd'; nothing held after shut-down",
                  [] { return std::make_unique<LifecycleRun>(); }, {kSuiteMissing, kOutOfMemory}, {}});
  return list;
}

std::vector<Scenario> allScenarios() {
  std::vector<Scenario> list = commandScenarios();
  for (Scenario& s : serviceScenarios()) list.push_back(std::move(s));
  return list;
}

}  // namespace faults
