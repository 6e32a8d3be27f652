#include "commands/MenuCommand.h"
#include "commands/RasterizeSelection.h"
#include "settings/DocumentSettingsCommand.h"
#include "settings/RasterizeDialog.h"
#include "shell/ErrorCodes.h"
#include "shell/PluginGlobals.h"

namespace dw {

DWErr GoMenuItem(MenuMessage& message) {
  if (!gGlobals) return OutOfMemoryError;
  // Only the Rasterize item is told apart; every other item is the settings command's.
  if (message.menuItem != gGlobals->rasterizeMenuItem) return DocumentRasterSettingsCommand();

  gGlobals->commandSettings.forEffect = 0;
  if (runRasterizeDialog(gGlobals->commandSettings, kDWRasterizeOptionsDialog) != kDWNoErr) return kDWNoErr;
  return RasterizeSelection(message.d);
}

}  // namespace dw
