#include "commands/RecordRasterizeAction.h"

#include "settings/ActionParameters.h"
#include "shell/PluginGlobals.h"

namespace dw {

DWErr RecordRasterizeAction() {
  if (!gGlobals) return kDWNoErr;
  return recordRasterizeEvent(gGlobals->commandSettings);
}

}  // namespace dw
