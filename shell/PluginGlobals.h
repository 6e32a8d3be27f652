#pragma once
#include "host/suites/rasterize_suite.h"
#include "host/types.h"

namespace dw {

// The plug-in's global block. The host allocates it ("Rasterize plugin globals") and keeps it
// across unload and reload, so everything here outlives the library's code.
struct PluginGlobals {
  DWPluginRef pluginRef;
  DWRasterizeSuite rasterizeSuite;
  RasterizeSettings commandSettings;
  RasterizeSettings effectDefaults;
  DWLiveEffectHandle effectHandle;
  DWMenuItemHandle rasterizeMenuItem;
  DWMenuItemHandle settingsMenuItem;
};

// Null until the first load obtained the block, and again after shut-down freed it.
extern PluginGlobals* gGlobals;

}  // namespace dw
