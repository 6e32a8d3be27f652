// Random sequences of life-cycle and working messages to the real plug-in in the reference host:
// start-up, unload and reload, shut-down and a fresh start, both menu commands with their dialogs
// confirmed or cancelled, the live effect's five messages, action playback, calls of the exported
// suite, colour-mode changes and a user who stops. Sanitizers catch the faults; between messages
// the host checks that no working memory is left behind.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "fuzz/PluginSession.h"
#include "fuzz/RandomValues.h"
#include "host/all_suites.h"
#include "refhost/loader/ActionPlayback.h"
#include "refhost/suites/LiveEffectMessages.h"

namespace {

using namespace refhost;

enum class Step {
  ApplicationStarted,
  UnloadAndReload,
  ShutDownAndRestart,
  Select,
  AddArt,
  RasterizeCommand,
  SettingsCommand,
  AttachEffect,
  GoLive,
  EditParameters,
  Interpolate,
  ConversionParameters,
  ConvertColorSpace,
  PlayAction,
  Recording,
  SuiteRasterize,
  SuiteResample,
  ColorMode,
  CancelAfter,
  kMaxValue = CancelAfter
};

Art* pick(FuzzedDataProvider& in, const std::vector<Art*>& art) {
  if (art.empty()) return nullptr;
  return art[in.ConsumeIntegralInRange<size_t>(0, art.size() - 1)];
}

void queueDialog(FuzzedDataProvider& in, Host& host) {
  TestControls::DialogAnswer answer;
  answer.result = in.ConsumeBool() ? 0 : 1;
  const RasterizeSettings edited = fuzz::anySettings(in);
  if (in.ConsumeBool()) answer.edit = [edited](RasterizeSettings& record) { record = edited; };
  host.controls().dialogAnswers.push_back(answer);
}

void suiteRasterize(FuzzedDataProvider& in, fuzz::PluginSession& s) {
  const void* tables[2] = {};
  if (s.host.acquireSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion, &tables[0])) return;
  if (s.host.acquireSuite(kDWArtSetSuite, kDWArtSetSuiteVersion, &tables[1])) {
    s.host.releaseSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion);
    return;
  }
  const auto* rasterizer = static_cast<const DWRasterizeSuite*>(tables[0]);
  const auto* sets = static_cast<const DWArtSetSuite*>(tables[1]);
  DWArtSetHandle set = nullptr;
  sets->NewArtSet(&set);
  const std::vector<Art*> art = s.art();
  for (int n = in.ConsumeIntegralInRange(0, 3); n > 0; --n)
    if (Art* a = pick(in, art)) sets->AddArtToArtSet(set, reinterpret_cast<DWArtHandle>(a));
  RasterizeSettings settings = fuzz::anySettings(in);
  DWRealRect bounds{in.ConsumeFloatingPointInRange(-50.0, 100.0), in.ConsumeFloatingPointInRange(-50.0, 100.0),
                    in.ConsumeFloatingPointInRange(-50.0, 100.0), in.ConsumeFloatingPointInRange(-50.0, 100.0)};
  if (in.ConsumeBool()) bounds.left = fuzz::anyReal(in);
  DWArtHandle made = nullptr;
  DWBool canPreserve = 0;
  switch (in.ConsumeIntegralInRange(0, 5)) {
    case 0: rasterizer->GetArtBounds(in.ConsumeBool() ? set : nullptr, &bounds, in.ConsumeBool()); break;
    case 1: rasterizer->RasterizeArt(set, &settings, &bounds, in.ConsumeIntegralInRange(-1, 5), nullptr, &made, nullptr); break;
    case 2:
      rasterizer->RasterizeArtWithPadding(set, &settings, &bounds, in.ConsumeIntegralInRange(-1, 5), nullptr, &made,
                                          nullptr, fuzz::anyReal(in));
      break;
    case 3: rasterizer->RasterizeDocument(&settings, in.ConsumeIntegralInRange(-1, 5), nullptr, &made, nullptr); break;
    case 4: rasterizer->CanPreserveSpotColors(set, &canPreserve); break;
    default: {
      Art* raster = pick(in, art);
      if (raster && made == nullptr) rasterizer->CreateClippingMask(set, in.ConsumeIntegralInRange<int16_t>(-1, 5),
                                                                    reinterpret_cast<DWArtHandle>(raster), &made);
    }
  }
  sets->DisposeArtSet(&set);
  s.host.releaseSuite(kDWArtSetSuite, kDWArtSetSuiteVersion);
  s.host.releaseSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion);
}

void suiteResample(FuzzedDataProvider& in, fuzz::PluginSession& s) {
  const void* table = nullptr;
  if (s.host.acquireSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion, &table)) return;
  const auto* rasterizer = static_cast<const DWRasterizeSuite*>(table);
  Art* source = pick(in, s.art());
  const double resolution = in.ConsumeBool() ? in.ConsumeFloatingPointInRange(1.0, 300.0) : fuzz::anyReal(in);
  DWArtHandle made = nullptr;
  rasterizer->ResampleRasterArt(reinterpret_cast<DWArtHandle>(source), in.ConsumeIntegralInRange(-1, 3), resolution,
                                in.ConsumeIntegralInRange(-1, 5), nullptr, &made);
  s.host.releaseSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion);
}

void checkNothingHeld(Host& host, Step step) {
  const size_t held = host.memory().outstandingWorkingBytes();
  if (held == 0) return;
  std::fprintf(stderr, "step %d left %zu bytes of working memory\n", int(step), held);
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider in(data, size);
  fuzz::PluginSession s;
  if (!s.launch()) return 0;
  for (int steps = 0; steps < 24 && in.remaining_bytes() > 0; ++steps) {
    const Step step = in.ConsumeEnum<Step>();
    const LiveEffectRecord* effect = nullptr;
    switch (step) {
      case Step::ApplicationStarted: s.host.notifyApplicationStarted(); break;
      case Step::UnloadAndReload:
        if (s.plugin && s.host.unloadPlugin(*s.plugin) == 0 && in.ConsumeBool()) s.host.reloadPlugin(*s.plugin);
        break;
      case Step::ShutDownAndRestart:
        if (s.plugin) s.host.shutdownPlugin(*s.plugin);
        if (in.ConsumeBool()) s.launch();
        break;
      case Step::Select: {
        s.doc->deselectAll();
        const std::vector<Art*> art = s.art();
        for (Art* a : art)
          if (in.ConsumeBool()) Document::setSelected(a, true);
        break;
      }
      case Step::AddArt: {
        const double x = in.ConsumeFloatingPointInRange(-100.0, 200.0), y = in.ConsumeFloatingPointInRange(-100.0, 200.0);
        Art* parent = pick(in, s.art());
        if (!parent || parent->kind() != ArtKind::Group) parent = nullptr;
        s.rect(x, y, x + in.ConsumeFloatingPointInRange(0.0, 80.0), y + in.ConsumeFloatingPointInRange(0.0, 80.0), parent);
        break;
      }
      case Step::RasterizeCommand:
        queueDialog(in, s.host);
        s.choose(fuzz::kRasterizeItem);
        break;
      case Step::SettingsCommand:
        queueDialog(in, s.host);
        s.choose(fuzz::kSettingsItem);
        break;
      case Step::AttachEffect:
        if (Art* a = pick(in, s.art())) {
          auto style = std::make_shared<ArtStyle>();
          style->effects.push_back(LiveEffect{kRasterizeEffectName, fuzz::anySettingsDictionary(in), 1, 0});
          a->setArtStyle(std::move(style));
        }
        break;
      case Step::GoLive:
        if ((effect = s.effect())) {
          Art* a = pick(in, s.art());
          Art* result = nullptr;
          if (a) goLive(s.host, *effect, fuzz::anySettingsDictionary(in), *a, &result);
        }
        break;
      case Step::EditParameters:
        if ((effect = s.effect())) {
          queueDialog(in, s.host);
          bool updated = false;
          editLiveEffectParameters(s.host, *effect, fuzz::anySettingsDictionary(in), &updated);
        }
        break;
      case Step::Interpolate:
        if ((effect = s.effect()))
          interpolateLiveEffectParameters(s.host, *effect, fuzz::anySettingsDictionary(in),
                                          fuzz::anySettingsDictionary(in), Dictionary::create(), fuzz::anyReal(in));
        break;
      case Step::ConversionParameters:
        if ((effect = s.effect())) liveEffectConversionParameters(s.host, *effect, fuzz::anySettingsDictionary(in));
        break;
      case Step::ConvertColorSpace:
        if ((effect = s.effect())) {
          int32_t conversion = in.ConsumeBool() ? in.PickValueInArray({kConvertToGray, kConvertToCmyk, kConvertToRgb})
                                                : fuzz::anyInteger(in);
          convertLiveEffectColorSpace(s.host, *effect, fuzz::anySettingsDictionary(in), &conversion);
        }
        break;
      case Step::PlayAction:
        if (s.ready()) {
          const bool showDialog = in.ConsumeBool();
          if (showDialog) queueDialog(in, s.host);
          playAction(s.host, fuzz::anyRecordedAction(in), showDialog);
        }
        break;
      case Step::Recording: s.host.actions().recording = in.ConsumeBool(); break;
      case Step::SuiteRasterize:
        if (s.ready()) suiteRasterize(in, s);
        break;
      case Step::SuiteResample:
        if (s.ready()) suiteResample(in, s);
        break;
      case Step::ColorMode: s.doc->setColorMode(static_cast<ColorMode>(in.ConsumeIntegralInRange(0, 2))); break;
      case Step::CancelAfter: s.host.controls().cancelAfterProgressUpdates = in.ConsumeIntegralInRange(0, 4); break;
    }
    checkNothingHeld(s.host, step);
  }
  return 0;
}
