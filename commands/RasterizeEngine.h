#pragma once
#include "commands/RasterizeSuite.h"
#include "shell/PluginGlobals.h"

namespace dw {

using RasterizeEngineEntry = decltype(DWRasterizeSuite::RasterizeArtWithPadding);

// The engine through the exported table, whose entries keep exceptions inside; directly while the
// table is not filled.
inline RasterizeEngineEntry rasterizeEngine() {
  if (gGlobals && gGlobals->rasterizeSuite.RasterizeArtWithPadding)
    return gGlobals->rasterizeSuite.RasterizeArtWithPadding;
  return RasterizeArtWithPadding;
}

}  // namespace dw
