#include "commands/LiveEffect.h"
#include "settings/EffectParameters.h"
#include "shell/HostSuites.h"

namespace dw {

DWErr GoLive(LiveEffectGoMessage& message) {
  if (!gSuites.dictionary->IsValid(message.parameters)) return kDWNoErr;
  const RasterizeSettings settings = effectRunSettings(message.parameters);
  DWArtHandle result = nullptr;
  const DWErr error = RasterizeLiveArt(settings, message.art, &result);
  gSuites.user->CloseProgress();
  if (!error) message.art = result;
  return error;
}

}  // namespace dw
