#include "settings/DocumentSettingsCommand.h"

#include "settings/DocumentRasterSettings.h"
#include "settings/RasterizeDialog.h"
#include "shell/HostString.h"
#include "shell/HostSuites.h"
#include "shell/PluginGlobals.h"
#include "shell/Strings.h"

namespace dw {

DWErr DocumentRasterSettingsCommand() {
  RasterizeSettings record = makeDocumentSettingsBase();
  if (const DWErr error = readDocumentRasterSettings(record)) return error;

  record.forEffect = 1;
  if (runRasterizeDialog(record, kDWDocumentRasterSettingsDialog) != kDWNoErr) return kDWNoErr;

  const DWErr result = writeDocumentRasterSettings(&record);
  if (gGlobals) gGlobals->effectDefaults.preserveSpotColors = record.preserveSpotColors;
  if (gSuites.undo) gSuites.undo->SetUndoText(HostString(strings::Undo).handle(), HostString(strings::Redo).handle());
  return result;
}

}  // namespace dw
