// The places the settings are kept, filled with random typed values and read by the real plug-in:
// the "Rasterize/Defaults" preferences (read at start-up and by the settings command), the
// document's "DW Auto Rasterize" entry (any type, or a dictionary of any keys and types), the live
// effect's parameter dictionary through its five messages, and the parameter blocks of both
// recorded actions. Wrong types and absurd numbers must be read as "missing" or refused.
#include <fuzzer/FuzzedDataProvider.h>

#include <vector>

#include "fuzz/PluginSession.h"
#include "fuzz/RandomValues.h"
#include "refhost/loader/ActionPlayback.h"
#include "refhost/suites/LiveEffectMessages.h"
#include "settings/StoredKeys.h"

namespace {

using namespace refhost;

void fillPreferences(FuzzedDataProvider& in, Preferences& preferences) {
  const char* const keys[] = {dw::keys::PrefType, dw::keys::PrefResolution, dw::keys::PrefAntiAlias,
                              dw::keys::PrefSpot, dw::keys::PrefMask,       dw::keys::PrefPadding};
  for (const char* key : keys) {
    switch (in.ConsumeIntegralInRange(0, 4)) {
      case 0: break;
      case 1: preferences.setInteger(dw::keys::PreferencePrefix, key, fuzz::anyInteger(in)); break;
      case 2: preferences.setBoolean(dw::keys::PreferencePrefix, key, in.ConsumeBool()); break;
      case 3: preferences.setReal(dw::keys::PreferencePrefix, key, fuzz::anyReal(in)); break;
      default: preferences.setString(dw::keys::PreferencePrefix, key, in.ConsumeRandomLengthString(8)); break;
    }
  }
}

void answerDialog(FuzzedDataProvider& in, Host& host) {
  TestControls::DialogAnswer answer;
  answer.result = in.ConsumeBool() ? 0 : 1;
  host.controls().dialogAnswers.push_back(answer);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider in(data, size);
  fuzz::PluginSession s;
  fillPreferences(in, s.host.preferences());
  s.doc->setColorMode(static_cast<ColorMode>(in.ConsumeIntegralInRange(0, 2)));
  s.doc->setLevelNumber(in.ConsumeBool() ? in.ConsumeIntegralInRange(0, 20) : fuzz::anyInteger(in));
  if (in.ConsumeBool()) {
    s.doc->dictionary()->set(dw::keys::DocumentSettingsEntry,
                             in.ConsumeBool() ? fuzz::anySettingsDictionary(in) : fuzz::anyDictionaryValue(in, 0));
  }
  if (!s.launch()) return 0;
  for (Art* art : s.art()) Document::setSelected(art, in.ConsumeBool());

  for (int steps = 0; steps < 8 && in.remaining_bytes() > 0; ++steps) {
    const LiveEffectRecord* effect = s.effect();
    if (!effect) return 0;
    const DictionaryPtr parameters = fuzz::anySettingsDictionary(in);
    switch (in.ConsumeIntegralInRange(0, 8)) {
      case 0: {
        answerDialog(in, s.host);
        bool updated = false;
        editLiveEffectParameters(s.host, *effect, parameters, &updated);
        break;
      }
      case 1:
        if (const std::vector<Art*> art = s.art(); !art.empty()) {
          Art* result = nullptr;
          goLive(s.host, *effect, parameters, *art.front(), &result);
        }
        break;
      case 2:
        interpolateLiveEffectParameters(s.host, *effect, parameters, fuzz::anySettingsDictionary(in), Dictionary::create(),
                                        fuzz::anyReal(in));
        break;
      case 3: liveEffectConversionParameters(s.host, *effect, parameters); break;
      case 4: {
        int32_t conversion = fuzz::anyInteger(in);
        convertLiveEffectColorSpace(s.host, *effect, parameters, &conversion);
        break;
      }
      case 5:
        answerDialog(in, s.host);
        s.choose(fuzz::kSettingsItem);
        break;
      case 6:
        answerDialog(in, s.host);
        s.choose(fuzz::kRasterizeItem);
        break;
      case 7: {
        const bool showDialog = in.ConsumeBool();
        if (showDialog) answerDialog(in, s.host);
        playAction(s.host, fuzz::anyRecordedAction(in), showDialog);
        break;
      }
      default: s.doc->dictionary()->set(dw::keys::DocumentSettingsEntry, fuzz::anyDictionaryValue(in, 0)); break;
    }
  }
  return 0;
}
