#include "commands/LiveEffect.h"
#include "settings/EffectParameters.h"
#include "settings/RasterizeDialog.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"
#include "shell/PluginGlobals.h"

namespace dw {

DWErr EditParameters(LiveEffectEditParamMessage& message) {
  if (!gGlobals) return OutOfMemoryError;
  RasterizeSettings record = effectEditRecord(message.parameters, gGlobals->effectDefaults);
  if (const DWErr e = runRasterizeDialog(record, kDWRasterizeOptionsDialog)) return e;
  if (const DWErr e = writeEffectEditParameters(message.parameters, record)) return e;
  // The next effect the user adds starts from what was chosen here.
  gGlobals->effectDefaults = record;
  return gSuites.liveEffect->UpdateParameters(message.context);
}

}  // namespace dw
