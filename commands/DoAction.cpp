#include "commands/Actions.h"
#include "commands/RasterizeSelection.h"
#include "settings/ActionKeys.h"
#include "settings/ActionParameters.h"
#include "settings/DocumentRasterSettings.h"
#include "settings/RasterizeDialog.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"
#include "shell/PluginGlobals.h"

namespace dw {

namespace {

// The command keeps what was played back: the next use of the menu item starts from it.
DWErr replayRasterizeCommand(DoActionMessage& message) {
  if (!gGlobals) return OutOfMemoryError;
  RasterizeSettings& record = gGlobals->commandSettings;
  applyActionParameters(message.params, record);
  if (message.showDialog) {
    record.forEffect = 0;
    if (const DWErr e = runRasterizeDialog(record, kDWRasterizeOptionsDialog)) return e;
  }
  return RasterizeSelection(message.d);
}

DWErr replayDocumentSettings(const DoActionMessage& message, RasterizeSettings record) {
  applyActionParameters(message.params, record);
  record.forEffect = 1;
  if (message.showDialog) {
    if (const DWErr e = runRasterizeDialog(record, kDWDocumentRasterSettingsDialog)) return e;
  }
  return writeDocumentRasterSettings(&record);
}

}  // namespace

DWErr DoAction(DoActionMessage& message) {
  if (!gSuites.actionManager) return kDWNoErr;
  if (!message.params) return kDWNoErr;
  if (message.eventValue != actions::DocumentSettingsEventValue) return replayRasterizeCommand(message);
  return replayDocumentSettings(message, documentSettingsEventBase());
}

}  // namespace dw
