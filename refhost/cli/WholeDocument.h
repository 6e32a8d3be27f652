#pragma once
// `export --whole-document`: every shown, printable layer in one raster, through the exported
// suite's RasterizeDocument, which finds the layers and their common bounds itself.
#include "host/rasterize_settings.h"
#include "host/types.h"

namespace refhost {
class Art;
class Host;

namespace cli {

// Returns the plug-in's code; on success `raster` is the new raster art. The padding of
// `settings` does not apply (the plug-in rasterizes the layers' bounds as they are).
DWErr rasterizeWholeDocument(Host& host, RasterizeSettings settings, Art** raster);

}  // namespace cli
}  // namespace refhost
