#include "engine/Resolution.h"

#include "settings/RasterizeSettings.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {

constexpr int32_t kDefaultEffectsResolution = 72;
constexpr double kDefaultResolution = 300.0;

class Dictionary {
 public:
  ~Dictionary() {
    if (ref && gSuites.dictionary) gSuites.dictionary->Release(ref);
  }
  DWDictionaryRef ref = nullptr;
};

bool documentEffectsResolution(int32_t& dpi) {
  const HostSuites& s = gSuites;
  if (!s.document || !s.dictionary) return false;
  Dictionary document;
  if (s.document->GetDictionary(&document.ref) != kDWNoErr || !document.ref) return false;
  Dictionary entry;
  if (s.dictionary->GetDictEntry(document.ref, s.dictionary->MakeKey("DW Auto Rasterize"), &entry.ref) != kDWNoErr ||
      !entry.ref)
    return false;
  return s.dictionary->GetInteger(entry.ref, s.dictionary->MakeKey("dpi."), &dpi) == kDWNoErr;
}

int32_t preferredEffectsResolution() {
  int32_t dpi = kDefaultEffectsResolution;
  if (!gSuites.preference || gSuites.preference->GetIntegerPreference("Rasterize/Defaults", "DPI", &dpi) != kDWNoErr)
    dpi = kDefaultEffectsResolution;
  return dpi;
}

}  // namespace

double rasterResolution(uint32_t options, double resolution) {
  if (options & RasterizeOptions::UseEffectsResolution) {
    int32_t dpi = 0;
    if (documentEffectsResolution(dpi)) return dpi;
    return preferredEffectsResolution();
  }
  return resolution == 0.0 ? kDefaultResolution : resolution;
}

}  // namespace dw
