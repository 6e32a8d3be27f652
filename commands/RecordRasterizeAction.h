#pragma once
#include "host/types.h"

namespace dw {

// Records the Rasterize command with PluginGlobals.commandSettings while the host records actions.
// Answers the recording's code (0 when nothing is recorded).
DWErr RecordRasterizeAction();

}  // namespace dw
