#pragma once
// The host's side of live effects: the five "DW Live Effect" messages, delivered to the plug-in
// that registered the effect. Each message gets its own handles to the parameter dictionaries,
// released when the plug-in returns.
#include <cstdint>
#include <string>

#include "host/types.h"
#include "refhost/document/Dictionary.h"

namespace refhost {

class Art;
class Host;
struct LiveEffectRecord;

// The effect the Rasterize plug-in registers.
constexpr const char kRasterizeEffectName[] = "Corvel Rasterize";

// The conversion codes of "Convert Color Space": the target model, and what the plug-in answers
// once it has converted the parameters.
constexpr int32_t kConvertToGray = 0;
constexpr int32_t kConvertToCmyk = 1;
constexpr int32_t kConvertToRgb = 5;
constexpr int32_t kConversionHandled = 6;

// The registration of the effect named `name`, or null when no plug-in registered it.
const LiveEffectRecord* findLiveEffect(Host& host, const std::string& name);

// "Edit Parameters": the plug-in edits `parameters` in place (its dialog goes to the host's user
// interface). `updated` tells whether it reported a change through the parameter context.
DWErr editLiveEffectParameters(Host& host, const LiveEffectRecord& effect, const DictionaryPtr& parameters,
                               bool* updated);

// "Go Live" on `art`, which the plug-in may replace or delete; `result` receives the art it
// returned (null when it returned none).
DWErr goLive(Host& host, const LiveEffectRecord& effect, const DictionaryPtr& parameters, Art& art, Art** result);

// "Interpolate Parameters": `out` receives the blend of `start` and `end` by `t`.
DWErr interpolateLiveEffectParameters(Host& host, const LiveEffectRecord& effect, const DictionaryPtr& start,
                                      const DictionaryPtr& end, const DictionaryPtr& out, double t);

// "Get Conversion Parameters": the plug-in brings `parameters` in line with the document.
DWErr liveEffectConversionParameters(Host& host, const LiveEffectRecord& effect, const DictionaryPtr& parameters);

// "Convert Color Space" with the target code in `conversion`; the plug-in's answer comes back there.
DWErr convertLiveEffectColorSpace(Host& host, const LiveEffectRecord& effect, const DictionaryPtr& parameters,
                                  int32_t* conversion);

}  // namespace refhost
