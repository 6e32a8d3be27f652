#pragma once
#include "host/messages.h"

namespace dw {

// The Rasterize command on the current selection with PluginGlobals.commandSettings: the selected
// objects are replaced by one raster, clipped by a mask of the selected shapes when the settings
// ask for it. Any failure reverts the command's changes and shows its message; a cancel shows
// nothing. Answers 0 or the failing code. Also run by action playback after it set the settings.
DWErr RasterizeSelection(MessageHeader& message);

// The engine's progress callback: shows current of total + 1 and answers 1 to go on, 0 to stop.
int32_t RasterizeProgress(int32_t current, int32_t total);

}  // namespace dw
