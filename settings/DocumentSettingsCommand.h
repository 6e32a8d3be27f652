#pragma once
#include "host/types.h"

namespace dw {

// The "Document Raster Effects Settings" command: shows the document-settings dialog on the
// document's current settings and writes what the user confirmed. A cancelled dialog changes
// nothing and answers 0. Afterwards the live effect's defaults take the chosen spot-colour
// setting and the undo texts are set, whatever the write answered; its code is the result.
DWErr DocumentRasterSettingsCommand();

}  // namespace dw
